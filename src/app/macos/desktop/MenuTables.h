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

/// Whether a click on the status item opens its menu (the right button's) or the window. The number is AppKit's of the
/// event that the button was told of.
bool opensStatusMenu(unsigned long eventType);
constexpr unsigned long rightMouseUp = 4; ///< NSEventTypeRightMouseUp

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
