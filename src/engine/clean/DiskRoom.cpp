#include "clean/DiskRoom.h"

#include "CheckedMath.h"

#include <algorithm>

namespace vellmoor {

DiskRoom::DiskRoom(const EngineContext& context, const CleanPlan& plan) : platform_(context.platform()) {
    for (const CleanPlan::Row& row : plan.rows) {
        for (const CleanupTarget& target : row.targets) {
            if (target.identity && !folders_.contains(target.identity->device)) {
                folders_.emplace(target.identity->device, target.url.path().parent_path());
            }
        }
    }
    before_ = available();
}

void DiskRoom::measure(CleanupReport& report) const {
    const std::optional<std::int64_t> after = available();
    if (folders_.empty() || !before_ || !after) {
        return;
    }
    // Others write meanwhile: less room than before says nothing about the clean.
    report.freedNow = std::max<std::int64_t>(checkedSub(*after, *before_), 0);
    report.freedNowMayGrow = std::ranges::any_of(folders_, [&](const auto& folder) {
        const std::optional<Disk> disk = platform_.disk(folder.second);
        return disk && disk->isCopyOnWrite;
    });
}

std::optional<std::int64_t> DiskRoom::available() const {
    std::int64_t sum = 0;
    for (const auto& [device, folder] : folders_) {
        const std::optional<Capacity> capacity = platform_.capacity(folder);
        if (!capacity) {
            return std::nullopt;
        }
        sum = checkedAdd(sum, capacity->availableBytes);
    }
    return sum;
}

} // namespace vellmoor
