#pragma once

#include "done/History.h"
#include "history/Whereabouts.h"

#include <cstddef>
#include <vector>

namespace vellmoor {

/// How a clean of the past ended, and what is still to be done of it.
struct PastState {
    HistoryState state = HistoryState::Finished;
    std::vector<std::size_t> open; ///< the targets that finishing it would take: still there, and the same
};
PastState stateOf(Whereabouts& whereabouts, const PastClean& clean);

} // namespace vellmoor
