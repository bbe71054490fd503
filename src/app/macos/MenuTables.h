// The native menus as data: what stands in them, and which action it is.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace vellmoor {

enum class StatusAction : std::uint8_t { Open, Separator, Quit };

struct StatusEntry {
    StatusAction action = StatusAction::Separator;
    std::string title; ///< empty for a separator
};

/// The context menu of the status item, in the current language.
std::vector<StatusEntry> statusMenu();

/// One entry of the menu bar: its title in English, which is not translated, AppKit's action, and the letter that is
/// pressed with the command key.
struct BarEntry {
    const char* title;
    const char* action;
    const char* key;
};

/// Cut, copy, paste and select all; they go to whatever has the keyboard.
std::span<const BarEntry> editMenu();
std::span<const BarEntry> windowMenu();

} // namespace vellmoor
