#include "Privacy.h"

namespace vellmoor {

std::vector<CleanupItem> privacyItems(ScanContext&) {
    return {};
}

} // namespace vellmoor
