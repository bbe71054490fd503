#include "MemoryLayout.h"

#include "LinuxEnvironment.h"

namespace vellmoor {

MemoryLayout macMemoryLayout(const std::filesystem::path&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

MemoryLayout linuxMemoryLayout(const LinuxEnvironment&, std::uint32_t, const std::filesystem::path&) {
    return {};
}

} // namespace vellmoor
