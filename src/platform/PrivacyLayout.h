#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

struct PrivacyLayout {};

PrivacyLayout macPrivacyLayout(const std::filesystem::path& home, std::uint32_t userId,
                               const std::filesystem::path& root);
PrivacyLayout linuxPrivacyLayout(const LinuxEnvironment& environment, std::uint32_t userId,
                                 const std::filesystem::path& root);

} // namespace vellmoor
