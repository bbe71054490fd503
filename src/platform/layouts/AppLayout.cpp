#include "layouts/AppLayout.h"

#include "disk/Paths.h"
#include "layouts/linux/LinuxEnvironment.h"

#include <algorithm>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

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

/// Beginnings of paths, as such and below the stand-in root.
std::vector<std::string> prefixes(std::initializer_list<const char*> paths, const fs::path& root) {
    std::vector<std::string> out;
    const std::string above = root == "/" || root.empty() ? std::string() : lexicallyStandardized(root).native();
    for (const char* path : paths) {
        out.emplace_back(path);
        if (!above.empty()) {
            out.push_back(above + path);
        }
    }
    return out;
}

void addRemovableApplications(AppLayout& layout, const LinuxEnvironment& environment, const fs::path& root) {
    const fs::path& home = environment.home;
    for (const fs::path& flatpak : environment.toolFolder("FLATPAK_USER_DIR", environment.data / "flatpak")) {
        addOnce(layout.flatpakFolders, flatpak / "app");
    }
    layout.flatpakTools = {underRoot(root, "/usr/bin/flatpak"), underRoot(root, "/bin/flatpak")};
    for (const char* name : {"Applications", "AppImages", ".local/bin", "bin"}) {
        layout.appImageFolders.push_back(home / name);
    }
    layout.appImagesOnDesktop = true;
    for (const char* name : {"Applications", ".local/opt", "opt"}) {
        layout.programFolders.push_back(home / name);
    }
    layout.entryProgramFolders = {environment.data / "JetBrains/Toolbox/apps"};
    layout.sharedFolderNames = {"bin", "sbin",  "lib", "lib64", "libexec", "include",
                                "etc", "share", "src", "man",   "games"};
}

/// $PATH, else where programs usually lie.
void addProgramPath(AppLayout& layout, const LinuxEnvironment& environment, const fs::path& root) {
    for (const fs::path& folder : environment.programPath) {
        addOnce(layout.programPath, placed(folder, environment.home, root));
    }
    if (!layout.programPath.empty()) {
        return;
    }
    layout.programPath = {environment.home / ".local/bin", environment.home / "bin"};
    for (const char* folder : {"/usr/local/bin", "/usr/bin", "/bin", "/usr/games", "/snap/bin", "/usr/sbin", "/sbin"}) {
        layout.programPath.push_back(underRoot(root, folder));
    }
}

void addProtectedApplications(AppLayout& layout, const LinuxEnvironment& environment, const fs::path& root) {
    layout.protectedPrefixes = prefixes({"/usr/", "/bin/", "/sbin/", "/lib", "/etc/", "/opt/", "/snap/",
                                         "/var/lib/flatpak/", "/var/lib/snapd/", "/nix/", "/gnu/", "/run/"},
                                        root);
    for (const char* name : {"vellmoor.desktop", "org.vellmoor.Vellmoor.desktop"}) {
        layout.protectedPaths.push_back(environment.data / "applications" / name);
    }
    if (!environment.ownAppImage.empty()) {
        layout.protectedPaths.emplace_back(environment.ownAppImage);
    }
}

void addLeftoverRules(AppLayout& layout, const LinuxEnvironment& environment) {
    const auto add = [&](const fs::path& folder, bool ofFlatpaks = false) {
        layout.leftoverFolders.push_back({.folder = folder, .ofFlatpaks = ofFlatpaks});
    };
    add(environment.config);
    add(environment.cache);
    add(environment.data);
    add(environment.state);
    add(environment.home / ".var/app", true);
    add(environment.config / "autostart");
    add(environment.config / "autostart.disabled");
    add(environment.config / "systemd/user");
    add(environment.data / "applications");
    add(environment.data / "flatpak/overrides", true);
    layout.leftoverLinkFolders = {environment.home / ".local/bin"};
    layout.dottedHomeNames = true;
    layout.leftoverNames = LeftoverNames::Whole;
    layout.leftoverTails = {"-flags.conf", "-updater"};
    layout.neverLeftovers = {"applications", "autostart", "systemd", "dconf", "fontconfig", "fonts", "icons", "themes",
                             "gtk-2.0", "gtk-3.0", "gtk-4.0", "mime", "keyrings", "kwalletd", "trash", "flatpak",
                             "containers", "pulse", "pipewire", "wireplumber", "ibus", "fcitx*", "gvfs-metadata",
                             "user-dirs.*", "mimeapps.list", "kdeglobals", "recently-used.xbel", "jetbrains", "google",
                             "mozilla", "bravesoftware", "*vellmoor*",
                             // data of desktops and of their mail, contacts and passwords
                             "evolution", "gnome-*", "kde.org", "kdeconnect", "plasma-*", "plasmarc", "xfce4", "lxqt",
                             "lxsession", "cinnamon", "cinnamon-session", "mate", "mate-*", "secrets",
                             // names that hold keys or start the session, should an application be called so
                             "config", "cache", "local", "var", "ssh", "gnupg", "pki", "password-store", "netrc",
                             "profile", "bash_profile", "bash_login", "bashrc", "zshrc", "zprofile", "xprofile",
                             "xinitrc", "xsession", "xsessionrc", "inputrc", "gitconfig"};
}

} // namespace

AppLayout macAppLayout(const fs::path& homeFolder, std::uint32_t, const fs::path& root) {
    const fs::path home = lexicallyStandardized(homeFolder);
    AppLayout layout;
    layout.bundleFolders = {underRoot(root, "/Applications"), home / "Applications"};
    layout.bundleExtension = "app";
    layout.protectedPrefixes = prefixes({"/System/", "/usr/"}, root);
    layout.protectedFragments = {"/CoreServices/"};
    for (const char* name : {"Application Support", "Caches", "HTTPStorages", "Logs", "Preferences",
                             "Saved Application State", "WebKit", "Containers", "Group Containers", "LaunchAgents"}) {
        layout.leftoverFolders.push_back({.folder = home / "Library" / name});
    }
    layout.neverLeftovers = {"*vellmoor*"};
    return layout;
}

AppLayout linuxAppLayout(const LinuxEnvironment& environment, std::uint32_t, const fs::path& root) {
    AppLayout layout;
    addRemovableApplications(layout, environment, root);
    addEntryFolders(layout, environment, root);
    addProgramPath(layout, environment, root);
    addProtectedApplications(layout, environment, root);
    addLeftoverRules(layout, environment);
    return layout;
}

} // namespace vellmoor
