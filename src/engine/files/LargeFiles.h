#pragma once

#include "found/ScanSnapshot.h"
#include "scan/EngineContext.h"

#include <vector>

namespace vellmoor {

/// Begins to search on another thread, beside what else the call does; largeFiles() waits for what it finds.
void searchLargeFilesAhead(EngineContext& context);

/// The biggest files of the user's everyday folders, largest first. Throws ScanCancelled.
std::vector<ScannedPath> largeFiles(EngineContext& context, std::size_t limit);

/// A row per large file, never preselected, largest first: those that the module lists, and all others.
struct LargeFileRows {
    std::vector<CleanupItem> listed;
    std::vector<CleanupItem> further;
};

/// Throws ScanCancelled.
LargeFileRows largeFileRows(EngineContext& context);

/// The listed ones only. Throws ScanCancelled.
std::vector<CleanupItem> largeFileItems(EngineContext& context, bool selectedByDefault);

/// The largest lines among the items' large files, dates read afresh.
std::vector<FileCandidate> makeFileCandidates(const EngineContext& context, const std::vector<CleanupItem>& items);

} // namespace vellmoor
