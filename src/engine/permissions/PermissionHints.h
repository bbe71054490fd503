#pragma once

#include "found/ScanSnapshot.h"
#include "scan/EngineContext.h"

#include <optional>
#include <vector>

namespace vellmoor {

/// Four lines: whether three kinds of data and the home folder can be read. Nothing is opened, nobody is asked.
std::vector<PermissionHint> permissionHints(const EngineContext& context);

/// The first probed folder that exists but cannot be read: the one whose permissions the user should look at.
std::optional<Path> firstUnreadableFolder(const EngineContext& context);

} // namespace vellmoor
