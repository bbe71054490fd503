#pragma once

#include "CleanerStore.h"

namespace vellmoor {

/// Ticks a category with every path of it, or none of them, so that an unticked category never holds a ticked path.
/// A category that cannot be cleaned stays as it is.
void setCategorySelected(CleanerStore& store, int itemIndex, bool selected);

/// How many paths of a category are ticked.
int selectedTargetCount(const CleanupItem& item);

} // namespace vellmoor
