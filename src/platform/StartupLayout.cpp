#include "StartupLayout.h"

#include "LinuxEnvironment.h"

namespace vellmoor {

StartupLayout macStartupLayout(const std::filesystem::path&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

StartupLayout linuxStartupLayout(const LinuxEnvironment&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

} // namespace vellmoor
