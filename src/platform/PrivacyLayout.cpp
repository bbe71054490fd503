#include "PrivacyLayout.h"

#include "LinuxEnvironment.h"

namespace vellmoor {

PrivacyLayout macPrivacyLayout(const std::filesystem::path&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

PrivacyLayout linuxPrivacyLayout(const LinuxEnvironment&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

} // namespace vellmoor
