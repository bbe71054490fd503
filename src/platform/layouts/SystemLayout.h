// The folders, tables and tools of a system, as data. Rules stand in the engine; what differs between systems
// stands here. Both layouts are plain values and work on both systems.
#pragma once

#include "found/LargeFileFilters.h"
#include "layouts/AppLayout.h"
#include "layouts/MemoryLayout.h"
#include "layouts/OwnedFolders.h"
#include "layouts/PermissionLayout.h"
#include "layouts/PrivacyLayout.h"
#include "layouts/RootPattern.h"
#include "layouts/StartupLayout.h"
#include "texts/L.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

/// What a deep walk must not enter.
struct DeepScanRules {
    std::vector<std::string> names;                  ///< last components, exact
    std::vector<std::string> nameEndings;            ///< endings of the last component
    std::vector<std::string> fragments;              ///< anywhere in the path, e.g. "/Library/CloudStorage/"
    std::vector<std::string> trashFragments;         ///< fragments that mark a Trash
    std::vector<std::filesystem::path> trashFolders; ///< everything inside these
    bool numberedTrash = false;                      ///< a component ".Trash-" and digits marks a Trash
    std::vector<std::string> homeNames; ///< globMatches patterns; direct children of the home folder, and below
    std::vector<std::string> markers;   ///< patterns; a folder below the root that directly holds one is left out
};

/// A category of the System Junk module.
struct JunkCategory {
    std::string key;         ///< of its row, behind the module's
    std::string title;       ///< text key
    std::string description; ///< text key; %@ stands for `argument` in display form
    std::filesystem::path argument;
    std::string symbol;
    Tint tint = Tint::gray;
    CleanupRisk risk = CleanupRisk::safe;
    bool selected = false;
    /// Logs grow and caches are replaced at any time: a clean only compares the disk and the kind.
    bool changesByItself = false;
    /// Folders whose names the row lists: when none of those that exist has one, the row is not shown.
    std::vector<std::filesystem::path> listed = {};
    bool countsOnce = false; ///< a root that equals or lies below another is left out; else all are concatenated
    std::vector<RootPattern> roots;
};

/// The folders of the Base Directory rules; empty where the system has none.
struct BaseFolders {
    std::filesystem::path config;
    std::filesystem::path data;
    std::filesystem::path cache;
    std::filesystem::path state;
};

/// One form of a volume's per-user Trash, relative to the volume.
struct VolumeTrashForm {
    std::filesystem::path folder;
    bool needsStickyParent = false; ///< the folder above is a real folder with the sticky bit
    bool needsRealFolder = false;   ///< the folder itself is no link
};

struct TrashLayout {
    std::filesystem::path homeFolder;
    std::string homeDescription; ///< text key; %@ stands for homeFolder in display form
    std::string contents;        ///< name of the folder that holds the items; empty: the Trash folder itself
    std::string notes;           ///< name of the folder that holds their restore notes; empty: they have none
    std::string volumePrefix;    ///< only volumes below it count; empty: as the platform lists them
    std::vector<VolumeTrashForm> volumeForms;
    bool checksOwner = false; ///< a foreign, readable Trash is passed over
    /// A path is in a Trash, and removed for good, when it contains one of permanentFragments; else only what lies
    /// strictly below the contents of a known Trash folder.
    bool isKnownByName = false;
    std::vector<std::string> permanentFragments;
};

struct SystemLayout {
    TextSet texts = TextSet::Mac;
    std::filesystem::path home;
    std::filesystem::path stateFolder; ///< where Vellmoor keeps files of its own
    std::filesystem::path root = "/";  ///< stands for "/" in every absolute path outside the home
    /// Never a target of a clean, whatever a table says: what the user's settings name. The guard knows the others.
    std::vector<std::filesystem::path> protectedPaths;
    DeepScanRules deepScan;
    const FileKinds* fileKinds = nullptr;
    /// Extension (lower case) and symbol; the first match wins.
    std::vector<std::pair<std::vector<std::string>, std::string>> symbols;
    std::vector<JunkCategory> junk; ///< user caches, logs, developer caches, in this order
    /// Folders of which a part is of no use, or cannot be taken out: what holds something that the user keeps stays.
    std::vector<std::filesystem::path> wholeFolders;
    std::vector<std::string> installerExtensions; ///< of what counts as a download leftover; lower case
    /// Downloads, Desktop, Documents, Videos, Pictures: used where the platform names no folder.
    std::vector<std::filesystem::path> largeFileRoots;
    std::vector<std::filesystem::path> furtherUserFolders; ///< Music, Public, Templates: likewise
    BaseFolders bases;
    std::vector<OwnedFolders> owned; ///< beside the traces of `privacy`
    /// A Smart Scan counts each path once, and the disk bar what lies on disks only.
    bool countsOnce = false;
    TrashLayout trash;
    std::filesystem::path startupCountFolder;
    std::filesystem::path backgroundCountFolder;
    std::string volumeLabel; ///< text key or plain name of the home's volume
    PrivacyLayout privacy;
    AppLayout apps;
    StartupLayout startup;
    MemoryLayout memory;
    PermissionLayout permissions;
};

/// The macOS layout for `home`; `root` stands for "/" in its absolute paths. `userId` names the volume Trash folders.
SystemLayout macosLayout(const std::filesystem::path& home, std::uint32_t userId,
                         const std::filesystem::path& root = "/");

/// The Linux layout for a user's base folders.
SystemLayout linuxLayout(const LinuxEnvironment& environment, std::uint32_t userId,
                         const std::filesystem::path& root = "/");

} // namespace vellmoor
