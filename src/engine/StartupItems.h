#pragma once

#include "ScanContext.h"

#include <vector>

namespace vellmoor {

/// Enabled before disabled, then by name.
std::vector<StartupItem> startupItems(ScanContext& context);
StartupActionResult disableStartupItem(ScanContext& context, const StartupItem& item);
StartupActionResult enableStartupItem(ScanContext& context, const StartupItem& item);
std::vector<CleanupItem> performanceItems(ScanContext& context);

} // namespace vellmoor
