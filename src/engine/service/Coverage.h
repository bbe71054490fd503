#pragma once

#include "Platform.h"
#include "found/CleanupItem.h"

#include <vector>

namespace vellmoor {

/// Marks what a Smart Scan would count twice, by real path: a target that equals or lies below a target of an earlier
/// row is covered, one that holds some has their part noted. The body of an application is never covered; it covers the
/// others, earlier ones too. Rows that are not cleanable, targets that are held back, and the memory, take no part.
void markCovered(const Platform& platform, std::vector<CleanupItem>& items);

} // namespace vellmoor
