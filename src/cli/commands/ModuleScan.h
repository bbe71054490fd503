#pragma once

#include "OwnSystem.h"
#include "found/ScanSnapshot.h"

namespace vellmoor::cli {

/// A scan as it is shown: each path counted once. Throws ScanCancelled when the user stops it.
ScanSnapshot scanned(const terminal::OwnSystem& own, CleanerModule module, bool isQuiet);

} // namespace vellmoor::cli
