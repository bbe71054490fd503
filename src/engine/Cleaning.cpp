#include "Cleaning.h"

namespace vellmoor {

CleanupReport clean(ScanContext&, const std::vector<CleanupItem>&, std::chrono::milliseconds) {
    return {};
}

} // namespace vellmoor
