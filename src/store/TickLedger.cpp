#include "TickLedger.h"

#include "CheckedMath.h"

namespace vellmoor {
namespace {

RowTicks ticksOf(const CleanupItem& item) {
    RowTicks row{.module = item.module, .risk = item.risk, .isRecommended = matches(CleanupFilter::recommended, item)};
    const bool counts = item.isCleanable && item.isSelected;
    std::int64_t heldBack = 0;
    for (const CleanupTarget& target : item.targets) {
        if (target.isSelected) {
            ++row.selectedPaths;
            row.selectedBytes = counts ? checkedAdd(row.selectedBytes, target.bytes) : 0;
        }
        if (!target.mayGo()) {
            heldBack = checkedAdd(heldBack, target.bytes);
        }
    }
    row.cleanableBytes = item.isCleanable ? checkedSub(item.bytes, heldBack) : 0;
    return row;
}

template <class Sum>
void addTo(Sum& sum, Sum part, int sign) {
    sum = sign > 0 ? checkedAdd(sum, part) : checkedSub(sum, part);
}

void addTo(ModuleTicks& sum, const RowTicks& row, int sign) {
    addTo(sum.cleanableBytes, row.cleanableBytes, sign);
    sum.rows += sign;
    sum.recommendedRows += row.isRecommended ? sign : 0;
    if (row.isToBeCleaned()) {
        addTo(sum.selectedBytes, row.selectedBytes, sign);
        addTo(sum.selectedPaths, row.selectedPaths, sign);
        sum.selectedRows += sign;
        sum.selectedRowsByRisk.at(static_cast<std::size_t>(row.risk)) += sign;
    }
}

} // namespace

void TickLedger::count(const std::vector<CleanupItem>& items) {
    forget();
    rows_.reserve(items.size());
    for (const CleanupItem& item : items) {
        rows_.push_back(ticksOf(item));
        add(rows_.back(), 1);
    }
    isCurrent_ = true;
}

void TickLedger::forget() {
    rows_.clear();
    modules_ = {};
    isCurrent_ = false;
}

void TickLedger::tickAll(std::size_t row, CleanupItem& item, bool selected) {
    item.selectAll(selected);
    replace(row, ticksOf(item));
}

void TickLedger::tick(std::size_t row, CleanupItem& item, CleanupTarget& target, bool selected) {
    RowTicks now = rows_.at(row);
    const bool followed = item.isSelected == (now.selectedPaths > 0);
    const int change = static_cast<int>(selected) - static_cast<int>(target.isSelected);
    now.selectedPaths += change;
    target.isSelected = selected;
    item.isSelected = now.selectedPaths > 0;
    if (!followed) {
        now = ticksOf(item); // nothing of it was in the sums, whatever its paths said
    } else if (item.isCleanable && change != 0) {
        addTo(now.selectedBytes, target.bytes, change);
    }
    replace(row, now);
}

const ModuleTicks& TickLedger::of(CleanerModule module) const {
    return modules_.at(static_cast<std::size_t>(module));
}

void TickLedger::replace(std::size_t row, const RowTicks& now) {
    add(rows_.at(row), -1);
    rows_.at(row) = now;
    add(now, 1);
}

/// Smart Scan's list has every row; no row is of that module.
void TickLedger::add(const RowTicks& row, int sign) {
    addTo(modules_.at(static_cast<std::size_t>(CleanerModule::smartScan)), row, sign);
    if (row.module != CleanerModule::smartScan) {
        addTo(modules_.at(static_cast<std::size_t>(row.module)), row, sign);
    }
}

} // namespace vellmoor
