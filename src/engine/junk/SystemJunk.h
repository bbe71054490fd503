#pragma once

#include "scan/EngineContext.h"

#include <vector>

namespace vellmoor {

/// The rows of System Junk. Throws ScanCancelled when the token is seen set between categories.
std::vector<CleanupItem> systemJunkItems(EngineContext& context);

/// Old installers and archives directly in the Downloads folder, in listing order.
std::vector<Path> downloadResidualFiles(EngineContext& context);

} // namespace vellmoor
