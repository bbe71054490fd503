#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

struct StartupLayout {};

StartupLayout macStartupLayout(const std::filesystem::path& home, std::uint32_t userId,
                               const std::filesystem::path& root);
StartupLayout linuxStartupLayout(const LinuxEnvironment& environment, std::uint32_t userId,
                                 const std::filesystem::path& root);

} // namespace vellmoor
