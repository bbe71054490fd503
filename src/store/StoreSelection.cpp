// Queries over the shown rows, and their ticks.
#include "StoreState.h"

#include <algorithm>
#include <iterator>

namespace vellmoor {

std::vector<CleanupItem> CleanerStore::items(CleanerModule module) const {
    state_->requireOwnThread();
    std::vector<CleanupItem> found;
    std::ranges::copy_if(cleanupItems(), std::back_inserter(found),
                         [module](const CleanupItem& item) { return belongs(item, module); });
    return found;
}

std::vector<int> CleanerStore::itemIndices(CleanerModule module, CleanupFilter filter) const {
    state_->requireOwnThread();
    const auto isListed = [&](const RowTicks& row) {
        const bool belongs = module == CleanerModule::smartScan || row.module == module;
        return belongs &&
               (filter == CleanupFilter::all || (filter == CleanupFilter::recommended && row.isRecommended) ||
                (filter == CleanupFilter::selected && row.isToBeCleaned()));
    };
    std::vector<int> indices;
    int index = 0;
    for (const RowTicks& row : state_->ledger().rows()) {
        if (isListed(row)) {
            indices.push_back(index);
        }
        ++index;
    }
    return indices;
}

std::vector<CleanupItem> CleanerStore::selectedItems(CleanerModule module) const {
    state_->requireOwnThread();
    std::vector<CleanupItem> selected;
    for (const int index : itemIndices(module, CleanupFilter::selected)) {
        selected.push_back(cleanupItems().at(static_cast<std::size_t>(index)));
    }
    return selected;
}

const ModuleTicks& CleanerStore::ticks(CleanerModule module) const {
    state_->requireOwnThread();
    return state_->ledger().of(module);
}

const RowTicks& CleanerStore::rowTicks(int itemIndex) const {
    state_->requireOwnThread();
    return state_->ledger().row(static_cast<std::size_t>(itemIndex));
}

std::int64_t CleanerStore::selectedBytes(CleanerModule module) const {
    return ticks(module).selectedBytes;
}

std::int64_t CleanerStore::cleanableBytes(CleanerModule module) const {
    return ticks(module).cleanableBytes;
}

std::vector<PermissionHint> CleanerStore::permissionLimitations(CleanerModule module) const {
    state_->requireOwnThread();
    std::vector<PermissionHint> limitations;
    std::ranges::copy_if(permissionHints(), std::back_inserter(limitations), [module](const PermissionHint& hint) {
        const bool affects = module == CleanerModule::smartScan ||
                             std::ranges::find(hint.affectedModules, module) != hint.affectedModules.end();
        return !hint.isGranted && affects;
    });
    return limitations;
}

void CleanerStore::setItemSelected(int itemIndex, bool selected) {
    state_->requireOwnThread();
    CleanupItem* item = state_->editableItem(itemIndex);
    if (item == nullptr) {
        return;
    }
    state_->ledger().tickAll(static_cast<std::size_t>(itemIndex), *item, selected);
    Q_EMIT selectionChanged(itemIndex);
}

void CleanerStore::setItemsSelected(const std::vector<int>& itemIndices, bool selected) {
    for (const int index : itemIndices) {
        setItemSelected(index, selected);
    }
}

void CleanerStore::setTargetSelected(int itemIndex, int targetIndex, bool selected) {
    state_->requireOwnThread();
    CleanupItem* item = state_->editableItem(itemIndex);
    if (item == nullptr || targetIndex < 0 || static_cast<std::size_t>(targetIndex) >= item->targets.size()) {
        return;
    }
    CleanupTarget& target = item->targets.edit().at(static_cast<std::size_t>(targetIndex));
    state_->ledger().tick(static_cast<std::size_t>(itemIndex), *item, target, selected && target.mayGo());
    Q_EMIT selectionChanged(itemIndex);
}

void CleanerStore::setAllSelected(CleanerModule module, bool selected) {
    setItemsSelected(itemIndices(module, CleanupFilter::all), selected);
}

/// The row at `index` if its ticks may be changed.
CleanupItem* CleanerStore::State::editableItem(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= shown->cleanupItems.size()) {
        return nullptr;
    }
    CleanupItem& item = shown->cleanupItems.at(static_cast<std::size_t>(index));
    return item.isCleanable ? &item : nullptr;
}

TickLedger& CleanerStore::State::ledger() {
    if (!shown->ledger.isCurrent()) {
        shown->ledger.count(shown->cleanupItems);
    }
    return shown->ledger;
}

} // namespace vellmoor
