#pragma once

#include "done/CleanupReport.h"

#include <vector>

namespace vellmoor {

/// What a clean is going to do, as the user confirmed it: nothing found later is added.
struct CleanPlan {
    struct Row {
        CleanupItem item;
        std::vector<CleanupTarget> targets; ///< the selected ones; an application before its leftovers
        bool isFinishing = false;           ///< of a clean that was cut off: the application itself may have gone then
    };
    std::vector<Row> rows;
    std::int64_t attempted = 0; ///< targets of all rows
    std::int64_t estimate = 0;  ///< their bytes
};

/// The plan for the selected targets of the selected, cleanable items, in the given order.
CleanPlan cleanPlan(const std::vector<CleanupItem>& items);

/// Whether `target` is the application itself, on the row of one.
bool isBody(const CleanupItem& item, const CleanupTarget& target);

} // namespace vellmoor
