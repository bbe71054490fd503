#pragma once

#include "ScanContext.h"

#include <vector>

namespace vellmoor {

/// The rows of the Privacy module: browser by browser, category by category; never preselected.
std::vector<CleanupItem> privacyItems(ScanContext& context);

} // namespace vellmoor
