#include "layouts/StartupLayout.h"

#include "Paths.h"
#include "layouts/LinuxEnvironment.h"

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

SessionState childrenOf(const fs::path& folder) {
    return {.paths = {.base = folder, .below = "*", .except = {}}, .onlyWith = {}};
}

} // namespace

StartupLayout macStartupLayout(const fs::path& homeFolder, std::uint32_t, const fs::path& root) {
    const fs::path library = lexicallyStandardized(homeFolder) / "Library";
    StartupLayout layout;
    layout.folders = {{.kind = StartupKind::LaunchAgent,
                       .enabled = library / "LaunchAgents",
                       .disabled = library / "LaunchAgents.disabled"}};
    layout.loaders = {underRoot(root, "/bin/launchctl")};
    layout.shownFolder = library / "LaunchAgents";
    layout.shownDescription = "~/Library/LaunchAgents 中的登录启动配置";
    layout.sessionStates = {childrenOf(library / "Saved Application State")};
    return layout;
}

StartupLayout linuxStartupLayout(const LinuxEnvironment& environment, std::uint32_t, const fs::path& root) {
    const fs::path& config = environment.config;
    StartupLayout layout;
    layout.folders = {
        {.kind = StartupKind::Autostart, .enabled = config / "autostart", .disabled = config / "autostart.disabled"},
        {.kind = StartupKind::UserService,
         .enabled = config / "systemd/user",
         .disabled = config / "systemd/user.disabled"}};
    layout.loaders = {underRoot(root, "/usr/bin/systemctl"), underRoot(root, "/bin/systemctl")};
    layout.loaderIsOptional = true;
    if (!environment.runtime.empty()) {
        layout.managerSocket = placed(environment.runtime / "systemd/private", environment.home, root);
    }
    for (const fs::path& folder : environment.configDirs) {
        layout.takeoverFolders.push_back(placed(folder / "autostart", environment.home, root));
    }
    layout.desktops = environment.desktops;
    layout.shownFolder = config / "autostart";
    layout.shownDescription = "%@ 中的登录启动配置";
    layout.sessionStates = {
        childrenOf(environment.cache / "sessions"),
        childrenOf(config / "gnome-session/saved-session"),
        childrenOf(config / "mate-session/saved-session"),
        // KDE's session manager: "program_sessionkey", beside files that have nothing to do with sessions.
        {.paths = {.base = config / "session", .below = "*_*", .kind = RootKind::PlainFile, .except = {"*.*"}},
         .onlyWith = config / "ksmserverrc"}};
    return layout;
}

} // namespace vellmoor
