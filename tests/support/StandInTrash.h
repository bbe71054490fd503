#pragma once

#include "Platform.h"
#include "StandInPlatform.h"

namespace vellmoor::test {

/// Moves `path` into a Trash that is a folder, which is made when it is missing. A name that is taken gets a suffix:
/// on macOS the time of day, on Linux a number. On Linux a restore note is written first, as the Trash specification
/// asks.
Outcome moveIntoTrash(System system, const Path& path, const TrashFolder& trash);

} // namespace vellmoor::test
