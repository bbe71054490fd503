// The few desktop services that GIO gives: opening addresses, starting applications, the wish for less movement.
// None of its types appear here, since its headers and Qt's do not go together.
#pragma once

#include <array>
#include <filesystem>
#include <string>

namespace vellmoor {

/// The file: address of a path; bytes that are no plain ASCII are percent-encoded.
std::string fileUri(const std::filesystem::path& path);

/// Where a program that is started finds its startup identifier: on X11, and on Wayland.
inline constexpr std::array startupVariables{"DESKTOP_STARTUP_ID", "XDG_ACTIVATION_TOKEN"};

/// Opens an address with the user's default application; whether one was started. `startupId` lets its window come to
/// the front; empty: none.
bool launchUri(const std::string& uri, const std::string& startupId);

/// Starts an application by its desktop-entry name without ".desktop"; whether it is installed and was started.
bool launchDesktopEntry(const std::string& identifier, const std::string& startupId);

/// False when the desktop's settings say that interfaces should not animate; true when they say nothing.
bool desktopAnimates();

} // namespace vellmoor
