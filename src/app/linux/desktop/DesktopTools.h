// Which program of a desktop does what: data, so that it can be tested without any desktop.
#pragma once

#include <string>
#include <vector>

namespace vellmoor {

/// A program and its arguments.
struct DesktopCommand {
    std::string program;
    std::vector<std::string> arguments;

    bool operator==(const DesktopCommand&) const = default;
};

enum class Confinement { None, Flatpak, Snap };

/// Desktop entries of system monitors, that of the running desktop first. `desktops` are the names in
/// XDG_CURRENT_DESKTOP.
std::vector<std::string> systemMonitors(const std::vector<std::string>& desktops);

/// The running desktop's settings of what starts at login; the first that is installed is meant.
std::vector<DesktopCommand> loginItemsSettings(const std::vector<std::string>& desktops);

/// Where a confined program is given access to folders; empty when it is not confined.
std::vector<DesktopCommand> confinementSettings(Confinement confinement);

} // namespace vellmoor
