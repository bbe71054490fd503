#include "Selection.h"

#include <algorithm>

namespace vellmoor {

void setCategorySelected(CleanerStore& store, int itemIndex, bool selected) {
    const CleanupItem& item = store.cleanupItems().at(static_cast<std::size_t>(itemIndex));
    if (!item.isCleanable) {
        return;
    }
    for (std::size_t i = 0; i < item.targets.size(); ++i) {
        if (item.targets[i].isSelected != selected) {
            store.setTargetSelected(itemIndex, static_cast<int>(i), selected);
        }
    }
    store.setItemSelected(itemIndex, selected);
}

int selectedTargetCount(const CleanupItem& item) {
    return static_cast<int>(std::ranges::count_if(item.targets, &CleanupTarget::isSelected));
}

} // namespace vellmoor
