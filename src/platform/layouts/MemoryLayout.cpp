#include "layouts/MemoryLayout.h"

#include "disk/Paths.h"
#include "layouts/linux/LinuxEnvironment.h"

#include <array>
#include <unistd.h>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

constexpr std::int64_t bytesPerKilobyte = 1024;

/// Labels with their colon: "Active:" is not "Active(anon):" (proc_meminfo(5)).
MemoryLabels linuxLabels() {
    // Before Linux 3.14 nothing told what is available.
    return {.free = {"MemAvailable:|MemFree:"},
            .unused = {"MemFree:"},
            .active = {"Active:"},
            .inactive = {"Inactive:"},
            .wired = {"Unevictable:", "SUnreclaim:", "KernelStack:", "PageTables:", "SecPageTables:", "Percpu:",
                      "Hugetlb:"},
            .compressed = {"Zswap:"},
            .purgeable = {"KReclaimable:|SReclaimable:"},
            .fileBacked = {"Active(file):", "Inactive(file):"}};
}

constexpr std::array sharedSystemFolders{"/",
                                         "/bin",
                                         "/sbin",
                                         "/lib",
                                         "/lib64",
                                         "/opt",
                                         "/srv",
                                         "/tmp",
                                         "/snap",
                                         "/snap/bin",
                                         "/usr",
                                         "/usr/bin",
                                         "/usr/sbin",
                                         "/usr/games",
                                         "/usr/lib",
                                         "/usr/lib64",
                                         "/usr/libexec",
                                         "/usr/share",
                                         "/usr/local",
                                         "/usr/local/bin",
                                         "/usr/local/sbin",
                                         "/usr/local/games",
                                         "/usr/local/lib",
                                         "/usr/local/libexec",
                                         "/usr/lib/x86_64-linux-gnu",
                                         "/usr/lib/aarch64-linux-gnu",
                                         "/var/lib/flatpak/exports/bin",
                                         "/var/lib/snapd/snap/bin"};

constexpr std::array sharedHomeFolders{
    ".local",       ".local/bin", "bin",     ".cargo/bin", "go/bin",
    "Applications", "AppImages",  "Desktop", "Downloads",  ".local/share/flatpak/exports/bin"};

std::vector<fs::path> sharedFolders(const LinuxEnvironment& environment, const fs::path& root) {
    std::vector<fs::path> folders;
    for (const char* folder : sharedSystemFolders) {
        folders.push_back(underRoot(root, folder));
    }
    for (const char* folder : sharedHomeFolders) {
        folders.push_back(environment.home / folder);
    }
    return folders;
}

ProcessGrouping linuxGrouping(const LinuxEnvironment& environment, const fs::path& root) {
    return {.systemPrograms = {"gnome-shell", "plasmashell", "kwin*",      "mutter*",        "Xorg",      "Xwayland",
                               "xfwm4",       "xfce4-panel", "xfdesktop",  "xfce4-session",  "cinnamon*", "marco",
                               "mate-panel",  "lxqt-*",      "budgie-*",   "gnome-session*", "systemd*",  "dbus-*",
                               "pipewire*",   "wireplumber", "pulseaudio", "ibus*",          "fcitx*",    "gvfs*",
                               "xdg-*",       "at-spi*",     "*polkit*"},
            .systemSlices = {"session.slice", "background.slice"},
            .launchers = {"sh",        "bash",        "dash",   "zsh",       "fish",  "ksh*",       "busybox",
                          "env",       "python*",     "perl*",  "ruby*",     "node",  "nodejs",     "java",
                          "mono*",     "wine*",       "gjs*",   "lua*",      "php*",  "flatpak",    "snap",
                          "pkexec",    "sudo",        "su",     "electron*", "xdg-*", "gtk-launch", "gio",
                          "systemctl", "systemd-run", "dbus-*", "exo-open"},
            .terminalServers = {"tmux*", "screen", "zellij*", "dtach", "abduco", "mosh-server"},
            .sharedFolders = sharedFolders(environment, root)};
}

std::vector<PurgeTool> linuxPurgeTools(const fs::path& root) {
    const auto helper = [&](const char* path) {
        return PurgeTool{.tool = underRoot(root, path), .arguments = {}, .needsSync = false};
    };
    const auto sysctl = [&](const char* path) {
        return PurgeTool{
            .tool = underRoot(root, path), .arguments = {"-q", "-w", "vm.drop_caches=3"}, .needsSync = true};
    };
    return {helper("/usr/libexec/vellmoor/vellmoor-purge"), helper("/usr/lib/vellmoor/vellmoor-purge"),
            helper("/usr/local/libexec/vellmoor/vellmoor-purge"), sysctl("/usr/sbin/sysctl"), sysctl("/sbin/sysctl")};
}

} // namespace

MemoryLayout macMemoryLayout(const fs::path&, std::uint32_t, const fs::path& root) {
    MemoryLayout layout;
    layout.total = {.tool = underRoot(root, "/usr/sbin/sysctl"), .arguments = {"-n", "hw.memsize"}};
    layout.statistics = {.tool = underRoot(root, "/usr/bin/vm_stat"), .arguments = {}};
    layout.labels = {.free = {"Pages free", "Pages speculative"},
                     .unused = {"Pages free", "Pages speculative"},
                     .active = {"Pages active"},
                     .inactive = {"Pages inactive"},
                     .wired = {"Pages wired down"},
                     .compressed = {"Pages occupied by compressor"},
                     .purgeable = {"Pages purgeable"},
                     .fileBacked = {"File-backed pages"}};
    const fs::path ps = underRoot(root, "/bin/ps");
    layout.processes.memory = {.tool = ps, .arguments = {"-axo", "pid=,rss=,comm="}};
    layout.processes.names = {.tool = ps, .arguments = {"-axo", "comm="}};
    for (const char* tool : {"/usr/sbin/purge", "/usr/bin/purge", "/sbin/purge", "/bin/purge"}) {
        layout.purgeTools.push_back({.tool = underRoot(root, tool), .arguments = {}});
    }
    layout.elevation = {.tool = underRoot(root, "/usr/bin/osascript"),
                        .arguments = {"-e", "do shell script \"%@\" with administrator privileges"},
                        .refusals = {"Operation not permitted"},
                        // The number is AppleScript's userCanceledErr and stands there in every language.
                        .cancelPhrases = {"(-128)", "User canceled"},
                        .cancelStatus = std::nullopt};
    return layout;
}

MemoryLayout linuxMemoryLayout(const LinuxEnvironment& environment, std::uint32_t, const fs::path& root) {
    MemoryLayout layout;
    layout.totalLabel = "MemTotal:";
    layout.statisticsFile = underRoot(root, "/proc/meminfo");
    layout.unit = bytesPerKilobyte;
    layout.labels = linuxLabels();
    layout.blockDevices = underRoot(root, "/sys/block");
    layout.processes.folder = underRoot(root, "/proc");
    layout.processes.pageBytes = sysconf(_SC_PAGESIZE);
    layout.grouping = linuxGrouping(environment, root);
    layout.purgeTools = linuxPurgeTools(root);
    // pkexec(1): 126 when the dialog was closed. The option keeps it from asking on a terminal.
    layout.elevation = {.tool = underRoot(root, "/usr/bin/pkexec"),
                        .arguments = {"--disable-internal-agent", "%@"},
                        .mustExist = true,
                        .refusals = {"Operation not permitted", "permission denied"},
                        .cancelPhrases = {},
                        .cancelStatus = 126};
    return layout;
}

} // namespace vellmoor
