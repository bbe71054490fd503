#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

struct MemoryLayout {};

MemoryLayout macMemoryLayout(const std::filesystem::path& home, std::uint32_t userId,
                             const std::filesystem::path& root);
MemoryLayout linuxMemoryLayout(const LinuxEnvironment& environment, std::uint32_t userId,
                               const std::filesystem::path& root);

} // namespace vellmoor
