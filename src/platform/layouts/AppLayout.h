#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

/// A folder whose direct children may be leftovers of an application.
struct LeftoverFolder {
    std::filesystem::path folder;
    bool ofFlatpaks = false; ///< only a child named exactly as the ID of a Flatpak counts
};

/// How the name of a file tells whose it is.
enum class LeftoverNames : std::uint8_t {
    Within, ///< an identifier or name anywhere in it, as in folders whose files are called after bundles
    Whole,  ///< an identifier set off on both sides, or a name that is all of it, as in folders that everything shares
};

/// Where applications and what belongs to them are found. Lists that a system has no use for are empty.
struct AppLayout {
    // Application bundles (macOS)
    std::vector<std::filesystem::path> bundleFolders;
    std::string bundleExtension; ///< without dot; empty: the system has no bundles

    // Applications that the user can remove without administrator rights (Linux)
    std::vector<std::filesystem::path> flatpakFolders; ///< the "app" folders of user installations
    std::vector<std::filesystem::path> flatpakTools;   ///< the first executable one is used
    std::vector<std::filesystem::path> appImageFolders;
    bool appImagesOnDesktop = false; ///< also in the user's desktop folder
    /// Children are applications when a desktop entry points into them, or when they hold an executable.
    std::vector<std::filesystem::path> programFolders;
    /// Children are applications only when a desktop entry points into them.
    std::vector<std::filesystem::path> entryProgramFolders;
    /// Children of these names (lower case) hold programs of many applications, and are none.
    std::vector<std::string> sharedFolderNames;

    // Desktop entries (Linux)
    std::vector<std::filesystem::path> entryFolders;       ///< all of them, the user's first
    std::vector<std::filesystem::path> ownEntryFolders;    ///< the user's own, which may name the programs above
    std::vector<std::filesystem::path> systemEntryFolders; ///< of applications that a package manager owns
    std::vector<std::filesystem::path> programPath; ///< $PATH: where a program named without a slash is looked for

    // Applications that are never offered
    std::vector<std::string> protectedPrefixes;        ///< beginnings of paths
    std::vector<std::string> protectedFragments;       ///< anywhere in a path
    std::vector<std::filesystem::path> protectedPaths; ///< beside the running program itself

    // Leftovers
    std::vector<LeftoverFolder> leftoverFolders;            ///< in searching order
    std::vector<std::filesystem::path> leftoverLinkFolders; ///< links in them that lead into the application
    bool dottedHomeNames = false;                           ///< also the home folder's child "." + token
    LeftoverNames leftoverNames = LeftoverNames::Within;
    std::vector<std::string> leftoverTails;  ///< what may follow a name that is the whole one otherwise
    std::vector<std::string> neverLeftovers; ///< globMatches patterns, in lower case
};

AppLayout macAppLayout(const std::filesystem::path& home, std::uint32_t userId, const std::filesystem::path& root);
AppLayout linuxAppLayout(const LinuxEnvironment& environment, std::uint32_t userId, const std::filesystem::path& root);

} // namespace vellmoor
