// Queries over the shown rows, and their ticks.
#include "CheckedMath.h"
#include "StoreState.h"

#include <algorithm>
#include <iterator>

namespace vellmoor {
namespace {

bool isToBeCleaned(const CleanupItem& item) {
    return item.selectedBytes() > 0;
}

bool hasSelectedTarget(const CleanupItem& item) {
    return std::ranges::any_of(item.targets, &CleanupTarget::isSelected);
}

/// A row that has paths is selected exactly when one of them is.
void syncItemSelection(CleanupItem& item) {
    item.isSelected = hasSelectedTarget(item);
}

} // namespace

std::vector<CleanupItem> CleanerStore::items(CleanerModule module) const {
    state_->requireOwnThread();
    std::vector<CleanupItem> found;
    std::ranges::copy_if(cleanupItems(), std::back_inserter(found),
                         [module](const CleanupItem& item) { return belongs(item, module); });
    return found;
}

std::vector<int> CleanerStore::itemIndices(CleanerModule module, CleanupFilter filter) const {
    state_->requireOwnThread();
    std::vector<int> indices;
    int index = 0;
    for (const CleanupItem& item : cleanupItems()) {
        if (belongs(item, module) && matches(filter, item)) {
            indices.push_back(index);
        }
        ++index;
    }
    return indices;
}

std::vector<CleanupItem> CleanerStore::selectedItems(CleanerModule module) const {
    state_->requireOwnThread();
    std::vector<CleanupItem> selected;
    std::ranges::copy_if(cleanupItems(), std::back_inserter(selected),
                         [module](const CleanupItem& item) { return belongs(item, module) && isToBeCleaned(item); });
    return selected;
}

std::int64_t CleanerStore::selectedBytes(CleanerModule module) const {
    state_->requireOwnThread();
    std::int64_t sum = 0;
    for (const CleanupItem& item : cleanupItems()) {
        if (belongs(item, module) && isToBeCleaned(item)) {
            sum = checkedAdd(sum, item.selectedBytes());
        }
    }
    return sum;
}

std::int64_t CleanerStore::cleanableBytes(CleanerModule module) const {
    state_->requireOwnThread();
    std::int64_t sum = 0;
    for (const CleanupItem& item : cleanupItems()) {
        if (belongs(item, module)) {
            sum = checkedAdd(sum, item.cleanableBytes());
        }
    }
    return sum;
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
    item->selectAll(selected);
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
    CleanupTarget& target = item->targets.at(static_cast<std::size_t>(targetIndex));
    target.isSelected = selected && target.mayGo();
    syncItemSelection(*item);
    Q_EMIT selectionChanged(itemIndex);
}

void CleanerStore::setAllSelected(CleanerModule module, bool selected) {
    setItemsSelected(itemIndices(module, CleanupFilter::all), selected);
}

/// The row at `index` if its ticks may be changed.
CleanupItem* CleanerStore::State::editableItem(int index) {
    if (index < 0 || static_cast<std::size_t>(index) >= shown.cleanupItems.size()) {
        return nullptr;
    }
    CleanupItem& item = shown.cleanupItems.at(static_cast<std::size_t>(index));
    return item.isCleanable ? &item : nullptr;
}

} // namespace vellmoor
