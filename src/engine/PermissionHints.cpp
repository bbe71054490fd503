#include "PermissionHints.h"

namespace vellmoor {

std::vector<PermissionHint> permissionHints(const ScanContext&) {
    return {};
}

} // namespace vellmoor
