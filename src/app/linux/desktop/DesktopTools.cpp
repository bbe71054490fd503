#include "desktop/DesktopTools.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace vellmoor {
namespace {

struct DesktopLook {
    std::string_view desktop; ///< a name in XDG_CURRENT_DESKTOP
    std::string_view monitor; ///< its system monitor's desktop entry
};

constexpr std::array<DesktopLook, 10> ownMonitors{{{"GNOME", "org.gnome.SystemMonitor"},
                                                   {"Unity", "org.gnome.SystemMonitor"},
                                                   {"Budgie", "org.gnome.SystemMonitor"},
                                                   {"Pantheon", "org.gnome.SystemMonitor"},
                                                   {"X-Cinnamon", "org.gnome.SystemMonitor"},
                                                   {"KDE", "org.kde.plasma-systemmonitor"},
                                                   {"XFCE", "xfce4-taskmanager"},
                                                   {"MATE", "mate-system-monitor"},
                                                   {"LXQt", "qps"},
                                                   {"LXDE", "lxtask"}}};

constexpr std::array<std::string_view, 9> allMonitors{"org.gnome.SystemMonitor",
                                                      "gnome-system-monitor",
                                                      "org.kde.plasma-systemmonitor",
                                                      "xfce4-taskmanager",
                                                      "mate-system-monitor",
                                                      "io.missioncenter.MissionCenter",
                                                      "net.nokyan.Resources",
                                                      "qps",
                                                      "lxtask"};

bool names(const std::vector<std::string>& desktops, std::string_view name) {
    return std::ranges::find(desktops, name) != desktops.end();
}

} // namespace

std::vector<std::string> systemMonitors(const std::vector<std::string>& desktops) {
    std::vector<std::string> found;
    for (const std::string& desktop : desktops) {
        const auto* own = std::ranges::find(ownMonitors, desktop, &DesktopLook::desktop);
        if (own != ownMonitors.end()) {
            found.emplace_back(own->monitor);
        }
    }
    for (const std::string_view monitor : allMonitors) {
        if (!names(found, monitor)) {
            found.emplace_back(monitor);
        }
    }
    return found;
}

std::vector<DesktopCommand> loginItemsSettings(const std::vector<std::string>& desktops) {
    if (names(desktops, "KDE")) {
        return {
            {"systemsettings", {"kcm_autostart"}}, {"kcmshell6", {"kcm_autostart"}}, {"kcmshell5", {"kcm_autostart"}}};
    }
    if (names(desktops, "XFCE")) {
        return {{"xfce4-session-settings", {}}};
    }
    if (names(desktops, "MATE")) {
        return {{"mate-session-properties", {}}};
    }
    if (names(desktops, "X-Cinnamon")) {
        return {{"cinnamon-settings", {"startup"}}};
    }
    if (names(desktops, "LXQt")) {
        return {{"lxqt-config-session", {}}};
    }
    if (names(desktops, "GNOME")) {
        return {{"gnome-session-properties", {}}, {"gnome-tweaks", {}}};
    }
    return {};
}

std::vector<DesktopCommand> confinementSettings(Confinement confinement) {
    switch (confinement) {
    case Confinement::Flatpak:
        return {{"com.github.tchx84.Flatseal", {}},
                {"gnome-control-center", {"applications"}},
                {"systemsettings", {"kcm_flatpak"}}};
    case Confinement::Snap:
        return {{"gnome-control-center", {"applications"}}};
    case Confinement::None:
        break;
    }
    return {};
}

} // namespace vellmoor
