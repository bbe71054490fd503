#pragma once

#include "ScanContext.h"

#include <vector>

namespace vellmoor {

MemorySnapshot memorySnapshot(const ScanContext& context);
/// At most 8, largest first.
std::vector<MemoryApp> memoryApps(ScanContext& context);
/// Always exactly one row.
std::vector<CleanupItem> memoryItems(const MemorySnapshot& snapshot);

struct MemoryOptimization {
    bool succeeded = false;
    std::string message; ///< localised
};
/// Asks the system to drop its file caches; may block on the user's password prompt.
MemoryOptimization optimizeMemory(const ScanContext& context);

} // namespace vellmoor
