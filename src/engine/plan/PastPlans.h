#pragma once

#include "history/PastState.h"
#include "history/Whereabouts.h"
#include "plan/CleanPlan.h"

#include <cstddef>
#include <vector>

namespace vellmoor {

/// What is still to be done of a clean of the past.
CleanPlan openPlan(Whereabouts& whereabouts, const PastClean& clean, const std::vector<std::size_t>& open);

/// What a clean of the past put into a Trash and still lies there, to go for good.
struct TrashedPlan {
    CleanPlan plan;
    std::vector<std::size_t> indices; ///< of the plan's targets in that clean
};
TrashedPlan trashedPlan(Whereabouts& whereabouts, const PastClean& clean);

} // namespace vellmoor
