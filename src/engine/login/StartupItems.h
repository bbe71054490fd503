#pragma once

#include "found/ScanSnapshot.h"
#include "scan/EngineContext.h"

#include <vector>

namespace vellmoor {

/// Enabled before disabled, then by name.
std::vector<StartupItem> startupItems(EngineContext& context);
StartupActionResult disableStartupItem(EngineContext& context, const StartupItem& item);
StartupActionResult enableStartupItem(EngineContext& context, const StartupItem& item);
std::vector<CleanupItem> performanceItems(EngineContext& context);

} // namespace vellmoor
