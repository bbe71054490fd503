#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

struct AppLayout {};

AppLayout macAppLayout(const std::filesystem::path& home, std::uint32_t userId, const std::filesystem::path& root);
AppLayout linuxAppLayout(const LinuxEnvironment& environment, std::uint32_t userId, const std::filesystem::path& root);

} // namespace vellmoor
