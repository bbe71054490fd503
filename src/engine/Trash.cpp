#include "Trash.h"

namespace vellmoor {

std::vector<TrashSource> trashSources(const ScanContext&) {
    return {};
}
std::vector<CleanupItem> trashItems(ScanContext&) {
    return {};
}

} // namespace vellmoor
