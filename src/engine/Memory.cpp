#include "Memory.h"

namespace vellmoor {

MemorySnapshot memorySnapshot(const ScanContext&) {
    return {};
}
std::vector<MemoryApp> memoryApps(ScanContext&) {
    return {};
}
std::vector<CleanupItem> memoryItems(const MemorySnapshot&) {
    return {};
}
MemoryOptimization optimizeMemory(const ScanContext&) {
    return {};
}

} // namespace vellmoor
