#pragma once

#include "CleanupReport.h"
#include "scan/EngineContext.h"

#include <chrono>
#include <vector>

namespace vellmoor {

/// Removes the selected targets of the selected, cleanable items: ordinary paths into the Trash, what lies in a
/// Trash for good, the memory row by a memory optimisation. `settle` is the wait before the second memory reading.
CleanupReport clean(EngineContext& context, const std::vector<CleanupItem>& items,
                    std::chrono::milliseconds settle = std::chrono::milliseconds(800));

} // namespace vellmoor
