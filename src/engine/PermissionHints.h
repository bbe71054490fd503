#pragma once

#include "ScanContext.h"

#include <vector>

namespace vellmoor {

std::vector<PermissionHint> permissionHints(const ScanContext& context);

} // namespace vellmoor
