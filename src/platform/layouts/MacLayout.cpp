#include "disk/Paths.h"
#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxEnvironment.h"

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

RootPattern childrenOf(fs::path folder) {
    return {.base = std::move(folder), .below = "*", .except = {}};
}
RootPattern itself(fs::path path) {
    return {.base = std::move(path), .below = "", .except = {}};
}

std::vector<JunkCategory> junkCategories(const fs::path& home) {
    const fs::path library = home / "Library";
    return {
        {.key = "userCaches",
         .title = "用户缓存",
         .description = "~/Library/Caches 中的可再生缓存",
         .argument = {},
         .symbol = "externaldrive.badge.timemachine",
         .tint = Tint::teal,
         .risk = CleanupRisk::safe,
         .selected = true,
         .changesByItself = true,
         .listed = {library / "Caches"},
         .roots = {childrenOf(library / "Caches")}},
        {.key = "systemLogs",
         .title = "系统日志",
         .description = "诊断报告、崩溃日志和旧日志文件",
         .argument = {},
         .symbol = "doc.text.magnifyingglass",
         .tint = Tint::orange,
         .risk = CleanupRisk::safe,
         .selected = true,
         .changesByItself = true,
         .listed = {library / "Logs", library / "Logs/DiagnosticReports"},
         .roots = {childrenOf(library / "Logs"), childrenOf(library / "Logs/DiagnosticReports")}},
        {.key = "developerCaches",
         .title = "开发缓存",
         .description = "Xcode DerivedData、模拟器缓存和旧归档",
         .argument = {},
         .symbol = "hammer",
         .tint = Tint::indigo,
         .risk = CleanupRisk::cautious,
         .selected = false,
         .roots = {itself(library / "Developer/Xcode/DerivedData"), itself(library / "Developer/CoreSimulator/Caches"),
                   itself(library / "Developer/Xcode/Archives")}},
    };
}

std::vector<std::pair<std::vector<std::string>, std::string>> symbols() {
    return {
        {{"app"}, "app.dashed"},
        {{"zip", "xip", "7z", "rar"}, "doc.zipper"},
        {{"dmg", "iso"}, "opticaldiscdrive"},
        {{"pkg"}, "shippingbox"},
        {{"mov", "mp4", "m4v"}, "film"},
        {{"jpg", "jpeg", "png", "heic", "psd"}, "photo"},
    };
}

} // namespace

SystemLayout macosLayout(const fs::path& homeFolder, std::uint32_t userId, const fs::path& root) {
    const fs::path home = lexicallyStandardized(homeFolder);
    SystemLayout layout;
    layout.texts = TextSet::Mac;
    layout.home = home;
    layout.stateFolder = home / "Library/Application Support/Vellmoor";
    layout.root = root;
    layout.deepScan = {.names = {"node_modules", ".git"},
                       .nameEndings = {},
                       .fragments = {"/Library/Mobile Documents/", "/Library/CloudStorage/"},
                       .trashFragments = {"/.Trash/", "/.Trashes/"},
                       .trashFolders = {},
                       .numberedTrash = false,
                       .homeNames = {},
                       .markers = {}};
    layout.fileKinds = &FileKinds::common();
    layout.symbols = symbols();
    layout.junk = junkCategories(home);
    layout.installerExtensions = {"dmg", "pkg", "zip", "xip", "ipsw", "iso"};
    for (const char* folder : {"Downloads", "Desktop", "Documents", "Movies", "Pictures"}) {
        layout.largeFileRoots.push_back(home / folder);
    }
    layout.trash = {.homeFolder = home / ".Trash",
                    .homeDescription = "~/.Trash 中的文件",
                    .contents = "",
                    .notes = "",
                    .volumePrefix = underRoot(root, "/Volumes/").string(),
                    .volumeForms = {{.folder = fs::path(".Trashes") / std::to_string(userId)}},
                    .checksOwner = false,
                    .isKnownByName = true,
                    .permanentFragments = {"/.Trash/", "/.Trashes/"}};
    if (!layout.trash.volumePrefix.ends_with('/')) {
        layout.trash.volumePrefix += '/';
    }
    layout.startupCountFolder = home / "Library/LaunchAgents";
    layout.backgroundCountFolder = home / "Library/Application Scripts";
    layout.volumeLabel = "Macintosh HD";
    layout.privacy = macPrivacyLayout(home, userId, root);
    layout.apps = macAppLayout(home, userId, root);
    layout.startup = macStartupLayout(home, userId, root);
    layout.memory = macMemoryLayout(home, userId, root);
    layout.permissions = macPermissionLayout(home, userId, root);
    return layout;
}

} // namespace vellmoor
