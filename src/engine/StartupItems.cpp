#include "StartupItems.h"

namespace vellmoor {

std::vector<StartupItem> startupItems(ScanContext&) {
    return {};
}
StartupActionResult disableStartupItem(ScanContext&, const StartupItem&) {
    return {};
}
StartupActionResult enableStartupItem(ScanContext&, const StartupItem&) {
    return {};
}
std::vector<CleanupItem> performanceItems(ScanContext&) {
    return {};
}

} // namespace vellmoor
