#pragma once

#include "found/LargeFileFilters.h"

#include <QString>

namespace vellmoor {

/// The symbol of a kind of large files.
QString kindSymbol(LargeFileKindFilter kind);
/// The label of one file of that kind, localised; "File" when no kind applies.
QString kindTitle(LargeFileKindFilter kind);

} // namespace vellmoor
