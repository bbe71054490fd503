#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

/// Which kinds of entries a pattern's last component may be. A link is neither a file nor a folder.
enum class RootKind : std::uint8_t { Any, AnyButLinks, PlainFile, Folder };

/// Names below a wildcard that count as in use while one of `owners` runs.
struct BusyNames {
    std::vector<std::string> names;  ///< patterns as for globMatches
    std::vector<std::string> owners; ///< process tokens
};

/// A rule that names paths on the disk: `base`, then one component after another. What a system calls caches, logs
/// and the like is a list of these.
struct RootPattern {
    std::filesystem::path base;
    /// One globMatches pattern per level, alternatives separated by "|"; "@current" is the name that the link
    /// "current" points to. Empty: `base` itself.
    std::vector<std::string> components;
    RootKind kind = RootKind::Any;
    bool hiddenToo = false;           ///< wildcards also match names that begin with a dot
    std::vector<std::string> except;  ///< patterns; names that no wildcard component ever matches
    std::vector<BusyNames> busy;      ///< left out while in use
    std::vector<std::string> owners;  ///< the whole pattern is left out while one of these tokens runs
    std::string ownerPrefix;          ///< e.g. "flatpak:": left out while this + the first wildcard's match runs
    std::vector<std::string> besides; ///< one of these names must stand beside the last component
    bool ownedByUser = false;
    bool onHomeDevice = false; ///< `base` lies on the file system of the home folder
};

} // namespace vellmoor
