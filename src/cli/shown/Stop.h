#pragma once

#include "CancelToken.h"

namespace vellmoor::cli {

/// The token that SIGINT, SIGTERM and SIGHUP set from the first call on: a scan ends, a clean finishes the path at
/// hand. A reader that went away ends nothing in the middle of a path.
CancelToken& stopOnSignals();

} // namespace vellmoor::cli
