#pragma once

#include "found/ScanSnapshot.h"
#include "scan/EngineContext.h"
#include "service/CleanerService.h"

#include <vector>

namespace vellmoor {

/// The modules whose scanners run for `module`, in running order.
std::vector<CleanerModule> scanStages(CleanerModule module);

/// Throws ScanCancelled.
ScanSnapshot scan(EngineContext& context, CleanerModule module, const ProgressCallback& progress);

struct DiskSnapshot {
    std::vector<StorageSegment> segments;
    std::string summary; ///< localised
};
/// The disk bar of the volume that holds the home folder.
DiskSnapshot diskSnapshot(const EngineContext& context, std::int64_t cleanableBytes);

} // namespace vellmoor
