#include "disk/Paths.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxBrowsers.h"
#include "layouts/linux/LinuxEnvironment.h"
#include "layouts/linux/LinuxJunkLayout.h"

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

DeepScanRules deepScanRules(const LinuxEnvironment& environment) {
    return {.names = {"node_modules", ".git"},
            .nameEndings = {".nextcloud", ".owncloud"},
            .fragments = {"/.gvfs/"},
            .trashFragments = {"/.local/share/Trash/", "/.Trash/", "/.Trashes/"},
            .trashFolders = {environment.data / "Trash"},
            .numberedTrash = true,
            .homeNames = {"Dropbox",        "Dropbox (*",   "OneDrive",     "OneDrive - *", "Nextcloud*",
                          "ownCloud*",      "pCloudDrive",  "pCloud Drive", "Google Drive", "GoogleDrive",
                          "MEGA",           "MEGAsync",     "Insync",       "Seafile",      "SeaDrive",
                          "SynologyDrive",  "Proton Drive", "ProtonDrive",  "Yandex.Disk",  "Nutstore",
                          "Nutstore Files", "我的坚果云"},
            .markers = {".dropbox", ".stfolder", ".seafile-data", ".SynologyWorkingDirectory", ".sync_*.db",
                        "._sync_*.db"}};
}

std::vector<std::pair<std::vector<std::string>, std::string>> symbols() {
    return {
        {{"app"}, "app.dashed"},
        {{"zip", "xip", "7z", "rar"}, "doc.zipper"},
        {{"dmg", "iso", "img"}, "opticaldiscdrive"},
        {{"pkg", "deb", "rpm", "appimage", "flatpak", "flatpakref", "snap", "run", "bundle"}, "shippingbox"},
        {{"mov", "mp4", "m4v"}, "film"},
        {{"jpg", "jpeg", "png", "heic", "psd"}, "photo"},
    };
}

std::vector<fs::path> protectedPaths(const LinuxEnvironment& environment) {
    std::vector<fs::path> paths{environment.config, environment.cache, environment.data, environment.state};
    if (!environment.runtime.empty()) {
        paths.push_back(environment.runtime);
    }
    if (!environment.ownAppImage.empty()) {
        paths.emplace_back(environment.ownAppImage);
    }
    paths.push_back(environment.data / "applications/org.vellmoor.Vellmoor.desktop");
    for (const char* folder : {"Trash", "Trash/files", "Trash/info", "applications", "keyrings", "flatpak"}) {
        paths.push_back(environment.data / folder);
    }
    for (const char* folder : {"autostart", "systemd", "systemd/user", "dconf"}) {
        paths.push_back(environment.config / folder);
    }
    return paths;
}

} // namespace

SystemLayout linuxLayout(const LinuxEnvironment& environment, std::uint32_t userId, const fs::path& root) {
    const fs::path& home = environment.home;
    const std::vector<LinuxBrowser> browsers = linuxBrowsers(environment);
    SystemLayout layout;
    layout.texts = TextSet::Linux;
    layout.home = home;
    layout.stateFolder = environment.state / "vellmoor";
    layout.root = root;
    layout.protectedPaths = protectedPaths(environment);
    layout.deepScan = deepScanRules(environment);
    layout.fileKinds = &FileKinds::linuxDesktop();
    layout.symbols = symbols();
    layout.junk = linuxJunkCategories(environment, browsers, root);
    layout.wholeFolders = linuxWholeFolders(environment);
    layout.installerExtensions = {"dmg",  "pkg", "zip",      "xip",     "ipsw",       "iso",
                                  "deb",  "rpm", "appimage", "flatpak", "flatpakref", "flatpakrepo",
                                  "snap", "run", "bundle",   "img",     "msi",        "exe"};
    for (const char* folder : {"Downloads", "Desktop", "Documents", "Videos", "Pictures"}) {
        layout.largeFileRoots.push_back(home / folder);
    }
    for (const char* folder : {"Music", "Public", "Templates"}) {
        layout.furtherUserFolders.push_back(home / folder);
    }
    layout.bases = {
        .config = environment.config, .data = environment.data, .cache = environment.cache, .state = environment.state};
    layout.owned = linuxOwnedFolders(environment, browsers);
    layout.countsOnce = true;
    const std::string user = std::to_string(userId);
    layout.trash = {
        .homeFolder = environment.data / "Trash",
        .homeDescription = "%@ 中的文件",
        .contents = "files",
        .notes = "info",
        .volumePrefix = "",
        .volumeForms = {{.folder = fs::path(".Trash") / user, .needsStickyParent = true, .needsRealFolder = true},
                        {.folder = ".Trash-" + user, .needsStickyParent = false, .needsRealFolder = true}},
        .checksOwner = true,
        .isKnownByName = false,
        .permanentFragments = {}};
    layout.startupCountFolder = environment.config / "autostart";
    layout.backgroundCountFolder = environment.config / "systemd/user";
    layout.volumeLabel = "系统磁盘";
    layout.privacy = linuxPrivacyLayout(browsers);
    layout.apps = linuxAppLayout(environment, userId, root);
    layout.startup = linuxStartupLayout(environment, userId, root);
    layout.memory = linuxMemoryLayout(environment, userId, root);
    layout.permissions = linuxPermissionLayout(environment, browsers, root);
    return layout;
}

} // namespace vellmoor
