#pragma once

#include "trash/TrashSession.h"

namespace vellmoor {

/// TrashSession::putBack for a system that works by paths: the item is compared before and after it moved, a stranger
/// goes back into the Trash.
Return putBackByPath(const Platform& platform, const ReturnRequest& request);

} // namespace vellmoor
