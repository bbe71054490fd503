#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxBrowser;
struct LinuxEnvironment;

/// Data that the system or the user may have closed to Vellmoor.
struct ProtectedLocation {
    std::string title; ///< text key
    std::vector<std::filesystem::path> folders;
    std::string symbol;
};

struct PermissionLayout {
    std::vector<ProtectedLocation> dataFolders;
    std::filesystem::path home;
    std::filesystem::path sandboxMarker; ///< exists in a sandbox that hides parts of the home; empty: none
    bool insideSandbox = false;          ///< known to run in one anyway
};

PermissionLayout macPermissionLayout(const std::filesystem::path& home, std::uint32_t userId,
                                     const std::filesystem::path& root);
PermissionLayout linuxPermissionLayout(const LinuxEnvironment& environment, const std::vector<LinuxBrowser>& browsers,
                                       const std::filesystem::path& root);

} // namespace vellmoor
