// The way back out of a Trash.
#pragma once

#include "done/CleanProgress.h"
#include "done/RestoreReport.h"
#include "scan/EngineContext.h"

#include <cstddef>
#include <string>
#include <vector>

namespace vellmoor {

/// Puts items of the clean of that name in the history back to where they were: those at `indices`, or all that lie in
/// a Trash when there are none. Nothing is replaced; what cannot go back stays in the Trash.
RestoreReport putBack(EngineContext& context, const std::string& clean, const std::vector<std::size_t>& indices,
                      const CleanProgressCallback& progress);

/// The same for what lies at these places in a Trash, whoever put it there: by its own restore note.
RestoreReport putBackTrashed(EngineContext& context, const std::vector<Path>& places,
                             const CleanProgressCallback& progress);

} // namespace vellmoor
