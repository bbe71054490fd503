// Where macOS keeps its own settings and tools: data, so that it can be tested without any Mac.
#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace vellmoor {

/// Addresses of the Full Disk Access settings; that of macOS 13 and newer first.
std::vector<std::string_view> fullDiskAccessAddresses();

/// Addresses of the login item settings; that of macOS 13 and newer first.
std::vector<std::string_view> loginItemsAddresses();

/// Where System Settings and Activity Monitor are looked for, in this order.
std::vector<std::filesystem::path> systemSettingsPlaces();
std::vector<std::filesystem::path> activityMonitorPlaces();

} // namespace vellmoor
