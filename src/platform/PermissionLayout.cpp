#include "PermissionLayout.h"

#include "LinuxEnvironment.h"

namespace vellmoor {

PermissionLayout macPermissionLayout(const std::filesystem::path&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

PermissionLayout linuxPermissionLayout(const LinuxEnvironment&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

} // namespace vellmoor
