#include "processes/ControlGroups.h"

#include "processes/MemoryText.h"

#include <algorithm>
#include <array>
#include <ranges>

namespace vellmoor {
namespace {

constexpr std::size_t uuidLength = 36;

std::vector<std::string_view> components(std::string_view path) {
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (end > 0) {
            parts.push_back(path.substr(0, end));
        }
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return parts;
}

/// Takes `ending` off `text` when it is there.
bool dropEnding(std::string_view& text, std::string_view ending) {
    const bool found = text.ends_with(ending);
    if (found) {
        text.remove_suffix(ending.size());
    }
    return found;
}

std::optional<int> hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    return c >= 'A' && c <= 'F' ? std::optional(c - 'A' + 10) : std::nullopt;
}

bool isUuid(std::string_view text) {
    if (text.size() != uuidLength) {
        return false;
    }
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        if (dash ? text[i] != '-' : !hexDigit(text[i])) {
            return false;
        }
    }
    return true;
}

std::optional<std::string> nonEmpty(std::string text) {
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

std::string_view lastPart(std::string_view text) {
    return text.substr(text.rfind('-') + 1);
}

/// "app-[LAUNCHER-]ID-RANDOM.scope", "app-[LAUNCHER-]ID[@RANDOM].service", "app-[LAUNCHER-]ID.slice".
std::optional<std::string> appUnit(std::string_view unit) {
    unit.remove_prefix(std::string_view("app-").size());
    if (dropEnding(unit, ".scope")) {
        const std::size_t random = unit.rfind('-');
        if (random == std::string_view::npos) {
            return std::nullopt;
        }
        return nonEmpty(unescapedUnit(lastPart(unit.substr(0, random))));
    }
    if (dropEnding(unit, ".service")) {
        return nonEmpty(unescapedUnit(lastPart(unit.substr(0, unit.rfind('@')))));
    }
    return dropEnding(unit, ".slice") ? nonEmpty(unescapedUnit(lastPart(unit))) : std::nullopt;
}

/// "dbus-:N-BUSNAME@M.service".
std::optional<std::string> busUnit(std::string_view unit) {
    if (!dropEnding(unit, ".service")) {
        return std::nullopt;
    }
    unit.remove_prefix(std::string_view("dbus-:").size());
    const std::size_t name = unit.find('-');
    if (name == std::string_view::npos) {
        return std::nullopt;
    }
    unit.remove_prefix(name + 1);
    return nonEmpty(unescapedUnit(unit.substr(0, unit.rfind('@'))));
}

/// "snap.NAME.APP-UUID.scope" or "snap.NAME.APP.UUID.scope"; snapd calls the entry NAME_APP.
std::optional<std::string> snapUnit(std::string_view unit) {
    if (!dropEnding(unit, ".scope") || unit.size() <= uuidLength + 1) {
        return std::nullopt;
    }
    const std::size_t cut = unit.size() - uuidLength - 1;
    if ((unit[cut] != '-' && unit[cut] != '.') || !isUuid(unit.substr(cut + 1))) {
        return std::nullopt;
    }
    unit = unit.substr(std::string_view("snap.").size(), cut - std::string_view("snap.").size());
    const std::size_t dot = unit.find('.');
    if (dot == 0 || dot == std::string_view::npos || dot + 1 == unit.size()) {
        return std::nullopt;
    }
    return unescapedUnit(unit.substr(0, dot)) + "_" + unescapedUnit(unit.substr(dot + 1));
}

/// A scope that a terminal, or a program like one, makes for what is started in it.
bool isTerminalScope(std::string_view unit) {
    constexpr std::array prefixes{"vte-spawn-", "ptyxis-spawn-", "tmux-spawn-"};
    return unit.ends_with(".scope") &&
           std::ranges::any_of(prefixes, [unit](std::string_view prefix) { return unit.starts_with(prefix); });
}

} // namespace

std::string_view unifiedGroup(std::string_view cgroupText) {
    for (const std::string_view line : lines(cgroupText)) {
        if (line.starts_with("0::")) {
            return line.substr(3);
        }
    }
    return {};
}

std::string unescapedUnit(std::string_view name) {
    std::string out;
    for (std::size_t i = 0; i < name.size(); ++i) {
        if (name.substr(i).starts_with("\\x") && i + 3 < name.size()) {
            const std::optional<int> high = hexDigit(name[i + 2]);
            const std::optional<int> low = hexDigit(name[i + 3]);
            if (high && low) {
                out += static_cast<char>(*high * 16 + *low);
                i += 3;
                continue;
            }
        }
        out += name[i];
    }
    return out;
}

std::optional<std::string> unitApplication(std::string_view unit) {
    if (unit.starts_with("snap.")) {
        return snapUnit(unit);
    }
    if (unit.starts_with("dbus-:")) {
        return busUnit(unit);
    }
    return unit.starts_with("app-") ? appUnit(unit) : std::nullopt;
}

GroupApplication groupApplication(std::string_view group, std::uint32_t userId) {
    const std::vector<std::string_view> parts = components(group);
    const auto manager = std::ranges::find(parts, "user@" + std::to_string(userId) + ".service");
    if (manager == parts.end()) {
        return {};
    }
    GroupApplication found{.id = std::nullopt,
                           .isInScope = parts.back().ends_with(".scope"),
                           .isTerminalChild = isTerminalScope(parts.back())};
    if (found.isTerminalChild) {
        return found;
    }
    for (const std::string_view& unit : std::ranges::subrange(manager + 1, parts.end()) | std::views::reverse) {
        if (auto id = unitApplication(unit)) {
            found.id = std::move(id);
            found.isInnermost = &unit == &parts.back();
            found.isBusName = unit.starts_with("dbus-:");
            return found;
        }
    }
    return found;
}

bool groupIsBelow(std::string_view group, const std::vector<std::string>& names) {
    return std::ranges::any_of(components(group),
                               [&](std::string_view part) { return std::ranges::find(names, part) != names.end(); });
}

std::string groupFlatpak(std::string_view group) {
    constexpr std::string_view prefix = "app-flatpak-";
    for (std::string_view unit : components(group) | std::views::reverse) {
        if (!unit.starts_with(prefix) || !dropEnding(unit, ".scope")) {
            continue;
        }
        unit.remove_prefix(prefix.size());
        if (const std::size_t random = unit.rfind('-'); random != std::string_view::npos) {
            return unescapedUnit(unit.substr(0, random)); // not every Flatpak escapes the dashes of an ID
        }
    }
    return {};
}

std::string groupSnap(std::string_view group) {
    for (std::string_view unit : components(group) | std::views::reverse) {
        if (unit.starts_with("snap.")) {
            unit.remove_prefix(std::string_view("snap.").size());
            const std::size_t dot = unit.find('.');
            return dot == std::string_view::npos ? std::string() : unescapedUnit(unit.substr(0, dot));
        }
    }
    return {};
}

} // namespace vellmoor
