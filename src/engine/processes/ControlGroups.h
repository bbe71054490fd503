// What the systemd unit names in a control group path tell about the application of a process (systemd: "Desktop
// Environment Integration"; snapd and Flatpak name their scopes alike).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// The path in the line "0::PATH" of a /proc/PID/cgroup text; empty without one (cgroup v1).
std::string_view unifiedGroup(std::string_view cgroupText);

/// "\xHH" undone, as unit names escape what may not stand in them; anything else stays.
std::string unescapedUnit(std::string_view name);

/// The desktop ID that one unit name carries; nothing when it carries none.
std::optional<std::string> unitApplication(std::string_view unit);

/// What a control group tells.
struct GroupApplication {
    std::optional<std::string> id; ///< desktop ID of the innermost unit that carries one
    bool isInnermost = false;      ///< that unit is the innermost of all
    bool isBusName = false;        ///< the ID is the name of a service on the bus, which need not be an application's
    bool isInScope = false;        ///< the innermost unit is a scope: whoever started the process chose it
    bool isTerminalChild = false;  ///< started in a terminal: what it inherited says nothing about it
};
/// Only units of the user's own manager count, those below "user@UID.service".
GroupApplication groupApplication(std::string_view group, std::uint32_t userId);

/// Whether one of the components of the path is one of `names`.
bool groupIsBelow(std::string_view group, const std::vector<std::string>& names);

/// The Flatpak or snap whose scope the path names; empty: none.
std::string groupFlatpak(std::string_view group);
std::string groupSnap(std::string_view group);

} // namespace vellmoor
