#include "layouts/StartupLayout.h"

#include "disk/Paths.h"
#include "layouts/linux/LinuxEnvironment.h"

#include <algorithm>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

SessionState childrenOf(const fs::path& folder) {
    return {.paths = {.base = folder, .below = "*", .except = {}}, .onlyWith = {}};
}

/// Where the user's service manager finds units besides the user's own folder (systemd.unit(5), "User Unit Search
/// Path").
std::vector<fs::path> unitFolders(const LinuxEnvironment& environment, const fs::path& root) {
    std::vector<fs::path> folders;
    const auto add = [&](const fs::path& base) {
        folders.push_back(placed(base / "systemd/user", environment.home, root));
    };
    std::ranges::for_each(environment.configDirs, add);
    add("/etc");
    if (!environment.runtime.empty()) {
        add(environment.runtime);
    }
    add("/run");
    add(environment.data);
    std::ranges::for_each(environment.dataDirs, add);
    for (const char* base : {"/usr/local/lib", "/usr/lib", "/lib"}) {
        add(base);
    }
    return folders;
}

} // namespace

StartupLayout macStartupLayout(const fs::path& homeFolder, std::uint32_t, const fs::path& root) {
    const fs::path library = lexicallyStandardized(homeFolder) / "Library";
    StartupLayout layout;
    layout.folders = {{.kind = StartupKind::LaunchAgent,
                       .enabled = library / "LaunchAgents",
                       .disabled = library / "LaunchAgents.disabled",
                       .takeoverFolders = {}}};
    layout.loaders = {underRoot(root, "/bin/launchctl")};
    layout.shownFolder = library / "LaunchAgents";
    layout.shownDescription = "~/Library/LaunchAgents 中的登录启动配置";
    layout.sessionStates = {childrenOf(library / "Saved Application State")};
    return layout;
}

StartupLayout linuxStartupLayout(const LinuxEnvironment& environment, std::uint32_t, const fs::path& root) {
    const fs::path& config = environment.config;
    StartupLayout layout;
    layout.folders = {{.kind = StartupKind::Autostart,
                       .enabled = config / "autostart",
                       .disabled = config / "autostart.disabled",
                       .takeoverFolders = {}},
                      {.kind = StartupKind::UserService,
                       .enabled = config / "systemd/user",
                       .disabled = config / "systemd/user.disabled",
                       .takeoverFolders = unitFolders(environment, root)}};
    layout.filesNameItems = true;
    layout.loaders = {underRoot(root, "/usr/bin/systemctl"), underRoot(root, "/bin/systemctl")};
    layout.loaderIsOptional = true;
    if (!environment.runtime.empty()) {
        layout.managerSocket = placed(environment.runtime / "systemd/private", environment.home, root);
    }
    for (const fs::path& folder : environment.configDirs) {
        layout.folders.front().takeoverFolders.push_back(placed(folder / "autostart", environment.home, root));
    }
    layout.desktops = environment.desktops;
    layout.shownFolder = config / "autostart";
    layout.shownDescription = "%@ 中的登录启动配置";
    layout.sessionStates = {
        {.paths = {.base = environment.cache, .below = "sessions/*", .except = {}, .origin = BaseOrigin::BaseFolder},
         .onlyWith = {}},
        childrenOf(config / "gnome-session/saved-session"),
        childrenOf(config / "mate-session/saved-session"),
        // KDE's session manager: "program_sessionkey", beside files that have nothing to do with sessions.
        {.paths = {.base = config / "session", .below = "*_*", .kind = RootKind::PlainFile, .except = {"*.*"}},
         .onlyWith = config / "ksmserverrc"}};
    return layout;
}

} // namespace vellmoor
