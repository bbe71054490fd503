// The last guard before anything is moved to a Trash. It knows no table: whatever a rule names by mistake, these
// paths are never touched.
#pragma once

#include "Platform.h"
#include "layouts/SystemLayout.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor {

/// What is never a target of a clean, standardised: the home folder, what the layout protects, the user's folders, and
/// a list that is compiled in. The folders above each of them are none either.
std::vector<Path> protectedFolders(const Platform& platform, const SystemLayout& layout);

/// Refused are: a relative or empty path and one with "..", "/", the protected folders, every folder above one of
/// these, and every mount point; each in the form given, in its standardised form and with the links above it resolved.
class PathGuard {
public:
    /// Both must outlive the guard. Links of protected folders are resolved here, once.
    PathGuard(const Platform& platform, const SystemLayout& layout);

    /// Why `path` must never be removed; nothing when it may be.
    [[nodiscard]] std::optional<std::string> refusalReason(const Path& path) const;
    /// The same for a path of which is known where it lies: `place` has no links above it.
    [[nodiscard]] std::optional<std::string> refusalReason(const Path& path, const Path& place) const;

    /// The protected folders as they are named, standardised; the user may have moved any of them by a link.
    [[nodiscard]] const std::vector<Path>& folders() const { return folders_; }

private:
    [[nodiscard]] bool holdsGuarded(const std::string& path) const;

    const Platform& platform_;
    std::vector<Path> folders_;
    std::set<std::string> guarded_; ///< in every form
};

} // namespace vellmoor
