// What the user never wants to be offered again: a list of paths that the window and the command line share.
#pragma once

#include "Platform.h"
#include "layouts/SystemLayout.h"

#include <expected>
#include <string>
#include <vector>

namespace vellmoor {

/// One state of the list. A path that no longer exists stays on it.
class KeptPaths {
public:
    KeptPaths() = default;

    /// The list as it is on the disk; empty without one. A list that cannot be read is an error with the system's
    /// reason: who cannot know what is kept must not remove anything.
    static std::expected<KeptPaths, std::string> read(const Platform& platform, const SystemLayout& layout);

    /// In the order in which they were added.
    [[nodiscard]] const std::vector<Path>& paths() const { return paths_; }

    /// Whether `path` is kept, or lies below a kept one; links on the way are seen through.
    [[nodiscard]] bool covers(const Platform& platform, const Path& path) const;
    /// Whether a kept path that exists lies strictly below `path`: removing `path` would take it along.
    [[nodiscard]] bool liesBelow(const Platform& platform, const Path& path) const;
    /// The kept places strictly below `folder`, spelled as a walk from it meets them.
    [[nodiscard]] std::vector<Path> placesBelow(const Platform& platform, const Path& folder) const;

private:
    KeptPaths(const Platform& platform, std::vector<Path> paths);

    std::vector<Path> paths_;
    std::vector<Path> places_; ///< every form under which a kept path may be met
};

/// What keep() and offerAgain() did: whether the list changed, or why it could not.
using ListChange = std::expected<bool, std::string>;

/// Adds a path; one that is on the list already stays where it is. Refused, with the reason, for a path that no clean
/// would touch anyway: the home, base and user folders and what holds them.
ListChange keep(const Platform& platform, const SystemLayout& layout, const Path& path);
/// Takes a path off the list; one that is not on it is no failure.
ListChange offerAgain(const Platform& platform, const SystemLayout& layout, const Path& path);

} // namespace vellmoor
