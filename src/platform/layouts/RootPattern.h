#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// Which kinds of entries a pattern's last component may be. A link is neither a file nor a folder.
enum class RootKind : std::uint8_t {
    Any,
    AnyButLinks,
    PlainFile,
    OwnFile, ///< a plain file of the user's, on the disk of their Trash
    Folder,
};

/// Who names a pattern's base. What a variable names may be any folder of the user's, so it has to be fit: see
/// UserPlaces::isFit().
enum class BaseOrigin : std::uint8_t {
    Fixed,
    BaseFolder, ///< the variable of a base folder
    Tool,       ///< the variable of a single tool
};

/// A rule that names paths on the disk. What a system calls caches, logs and the like is a list of these.
struct RootPattern {
    /// Opened through links: users move whole folders to other disks and leave a link.
    std::filesystem::path base;
    /// What lies below, one component per level; no link is followed on the way. A component is a globMatchesAny
    /// pattern, which matches no name that begins with a dot, or a plain name, or "@current", the name that the link
    /// "current" points to. With "{A|B}" behind it, it matches folders only that hold A or B. Empty: `base` itself.
    std::string below;
    RootKind kind = RootKind::Any;
    std::vector<std::string> except; ///< globMatches patterns; names that no wildcard ever matches
    BaseOrigin origin = BaseOrigin::Fixed;
};

/// One level of RootPattern::below.
struct RootComponent {
    std::string names;
    std::vector<std::string> holding; ///< one of these must lie in it; empty: no condition

    [[nodiscard]] bool isWildcard() const { return names.find_first_of("*#|") != std::string::npos; }
};

std::vector<RootComponent> components(const RootPattern& pattern);

/// Whether a wildcard of `pattern` matches `name`.
bool admits(const RootPattern& pattern, const RootComponent& component, std::string_view name);

} // namespace vellmoor
