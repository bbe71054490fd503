#pragma once

#include "Platform.h"
#include "keep/KeptPaths.h"
#include "layouts/SystemLayout.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// The deep-scan exclusion for one walk, split so that an entry costs a look at its name and only a folder costs a
/// look at its path. Immutable, so every worker of a walk may ask it.
class DeepScanFilter {
public:
    /// `root` is where the walk starts; a root that lies in a Trash lifts the Trash rule for this walk. What is kept is
    /// excluded like everything else.
    DeepScanFilter(const Platform& platform, const SystemLayout& layout, const Path& root, const KeptPaths& kept = {});

    /// Everything below the root is excluded, because the root lies in an excluded place.
    [[nodiscard]] bool excludesAll() const { return excludesAll_; }
    /// Whether the name alone excludes an entry; `depth` is 1 for a child of the root.
    [[nodiscard]] bool excludesName(std::string_view name, std::uint32_t depth) const;
    /// Whether an entry of that name may be a kept one: only then is isKept() worth its path.
    [[nodiscard]] bool mayBeKept(std::string_view name) const;
    [[nodiscard]] bool isKept(const Path& path) const;
    /// Whether a folder is excluded by where it lies.
    [[nodiscard]] bool excludesFolder(const Path& folder) const;
    /// Whether the names directly inside a folder below the root mark it as synchronised.
    [[nodiscard]] bool marksSyncRoot(std::span<const std::string_view> names) const;
    [[nodiscard]] bool wantsNames() const { return !rules_.markers.empty(); }

private:
    const DeepScanRules& rules_;
    std::array<bool, 256> mayBeExcluded_{}; ///< names by their last byte
    Path home_;
    std::vector<Path> trashFolders_;
    std::vector<Path> kept_; ///< strictly below the root
    bool trashRule_ = true;
    bool rootIsHome_ = false;
    bool excludesAll_ = false;
};

/// Whether a walk of `above` comes to `below`: it passes hidden folders by, and stays on its file system.
bool isReachedFrom(const Platform& platform, const Path& below, const Path& above);

/// Whether `path` lies in a Trash as the deep-scan rules know it.
bool liesInTrash(const DeepScanRules& rules, const Path& path);

} // namespace vellmoor
