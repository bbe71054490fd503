#include "AppLayout.h"

#include "LinuxEnvironment.h"
#include "Paths.h"

#include <algorithm>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

/// `path` as it is when it belongs to the home folder, else below the stand-in root.
fs::path placed(const fs::path& path, const fs::path& home, const fs::path& root) {
    return path == home || isStrictlyBelow(path, home) ? path : underRoot(root, path.native());
}

void addOnce(std::vector<fs::path>& folders, const fs::path& folder) {
    if (std::ranges::find(folders, folder) == folders.end()) {
        folders.push_back(folder);
    }
}

/// The folders of desktop entries: the user's own, those of the base folders, those of Flatpak and snapd.
void addEntryFolders(AppLayout& layout, const LinuxEnvironment& environment, const fs::path& root) {
    const fs::path own = environment.data / "applications";
    layout.ownEntryFolders = {own};
    layout.systemEntryFolders = {underRoot(root, "/usr/share/applications"),
                                 underRoot(root, "/var/lib/flatpak/exports/share/applications"),
                                 underRoot(root, "/var/lib/snapd/desktop/applications")};
    addOnce(layout.entryFolders, own);
    for (const fs::path& flatpak : environment.toolFolder("FLATPAK_USER_DIR", environment.data / "flatpak")) {
        addOnce(layout.entryFolders, flatpak / "exports/share/applications");
    }
    for (const fs::path& folder : environment.dataDirs) {
        addOnce(layout.entryFolders, placed(folder / "applications", environment.home, root));
    }
    addOnce(layout.entryFolders, layout.systemEntryFolders[1]);
    addOnce(layout.entryFolders, layout.systemEntryFolders[2]);
}

} // namespace

AppLayout macAppLayout(const fs::path&, std::uint32_t, const fs::path&) {
    return {};
}

AppLayout linuxAppLayout(const LinuxEnvironment& environment, std::uint32_t, const fs::path& root) {
    AppLayout layout;
    addEntryFolders(layout, environment, root);
    for (const char* name : {".local/bin", "bin"}) {
        layout.programPath.push_back(environment.home / name);
    }
    for (const char* folder : {"/usr/local/bin", "/usr/bin", "/bin", "/usr/games", "/snap/bin", "/usr/sbin", "/sbin"}) {
        layout.programPath.push_back(underRoot(root, folder));
    }
    return layout;
}

} // namespace vellmoor
