#include "clean/Cleaning.h"

#include "clean/CleanPlan.h"
#include "clean/CleanRun.h"

namespace vellmoor {

CleanupReport clean(EngineContext& context, const std::vector<CleanupItem>& items, std::chrono::milliseconds settle) {
    const CleanPlan plan = cleanPlan(items);
    CleanupReport report;
    if (!plan.rows.empty()) {
        report = CleanRun(context, settle).run(plan);
    }
    report.completedAt = std::chrono::system_clock::now();
    return report;
}

} // namespace vellmoor
