#include "AppLayout.h"

#include "LinuxEnvironment.h"

namespace vellmoor {

AppLayout macAppLayout(const std::filesystem::path&, std::uint32_t, const std::filesystem::path&) { return {}; }

AppLayout linuxAppLayout(const LinuxEnvironment&, std::uint32_t, const std::filesystem::path&) { return {}; }

} // namespace vellmoor
