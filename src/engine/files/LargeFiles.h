#pragma once

#include "ScanSnapshot.h"
#include "scan/EngineContext.h"

#include <vector>

namespace vellmoor {

/// The biggest files of the user's everyday folders, largest first. Throws ScanCancelled.
std::vector<ScannedPath> largeFiles(EngineContext& context, std::size_t limit);

/// One row per large file, never preselected. Throws ScanCancelled.
std::vector<CleanupItem> largeFileItems(EngineContext& context, bool selectedByDefault);

/// The largest lines among the items' large files, dates read afresh.
std::vector<FileCandidate> makeFileCandidates(const EngineContext& context, const std::vector<CleanupItem>& items);

} // namespace vellmoor
