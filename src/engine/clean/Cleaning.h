#pragma once

#include "done/CleanProgress.h"
#include "done/CleanupReport.h"
#include "scan/EngineContext.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

inline constexpr std::chrono::milliseconds memorySettles{800};

/// Removes the selected targets of the selected, cleanable items: ordinary paths into the Trash, what lies in a
/// Trash for good, the memory row by a memory optimisation. `settle` is the wait before the second memory reading.
/// Nothing happens while another clean of this user runs.
CleanupReport clean(EngineContext& context, const std::vector<CleanupItem>& items,
                    std::chrono::milliseconds settle = memorySettles, const CleanProgressCallback& progress = {});

/// Why the history could not hold a clean of these; the whole sentence, localised. Nothing: it could, or nothing of
/// them would lie in a Trash.
std::optional<std::string> whyNoWayBack(const EngineContext& context, const std::vector<CleanupItem>& items);

/// Takes what the clean of that name in the history still had to do, where it is the same file, as a clean of its own.
CleanupReport finishClean(EngineContext& context, const std::string& clean, const CleanProgressCallback& progress);

/// Removes for good what the clean of that name put into a Trash, where it still lies there, and nothing else.
CleanupReport removeForGood(EngineContext& context, const std::string& clean, const CleanProgressCallback& progress);

} // namespace vellmoor
