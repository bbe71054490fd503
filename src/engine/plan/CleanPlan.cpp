#include "plan/CleanPlan.h"

#include "CheckedMath.h"

#include <algorithm>

namespace vellmoor {

bool isBody(const CleanupItem& item, const CleanupTarget& target) {
    return item.appInfo && target.url.path() == item.appInfo->appPath;
}

CleanPlan cleanPlan(const std::vector<CleanupItem>& items) {
    CleanPlan plan;
    for (const CleanupItem& item : items) {
        if (!item.isSelected || !item.isCleanable) {
            continue;
        }
        CleanPlan::Row row{.item = item, .targets = item.selectedTargets()};
        std::ranges::stable_partition(row.targets, [&](const CleanupTarget& target) { return isBody(item, target); });
        for (const CleanupTarget& target : row.targets) {
            plan.attempted = checkedAdd<std::int64_t>(plan.attempted, 1);
            plan.estimate = checkedAdd(plan.estimate, target.bytes);
        }
        plan.rows.push_back(std::move(row));
    }
    return plan;
}

} // namespace vellmoor
