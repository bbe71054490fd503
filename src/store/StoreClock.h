#pragma once

#include "CleanupItem.h"

#include <functional>

namespace vellmoor {

/// The store's notion of now; passed in so that ages can be tested.
using Clock = std::function<TimePoint()>;

} // namespace vellmoor
