#include "CleanupItem.h"

#include "CheckedMath.h"
#include "L.h"

#include <algorithm>
#include <iterator>

namespace vellmoor {
namespace {

template <class Amount>
std::int64_t sumOverSelection(const CleanupItem& item, Amount amount) {
    if (!item.isCleanable || !item.isSelected) {
        return 0;
    }
    std::int64_t sum = 0;
    for (const CleanupTarget& target : item.targets) {
        if (target.isSelected) {
            sum = checkedAdd(sum, amount(target));
        }
    }
    return sum;
}

} // namespace

std::int64_t CleanupItem::selectedBytes() const {
    return sumOverSelection(*this, [](const CleanupTarget& target) { return target.bytes; });
}

std::int64_t CleanupItem::selectedFiles() const {
    return sumOverSelection(*this, [](const CleanupTarget& target) { return std::max<std::int64_t>(target.files, 1); });
}

int CleanupItem::selectedTargetCount() const {
    return static_cast<int>(std::ranges::count_if(targets, &CleanupTarget::isSelected));
}

std::vector<CleanupTarget> CleanupItem::selectedTargets() const {
    std::vector<CleanupTarget> selected;
    std::ranges::copy_if(targets, std::back_inserter(selected), &CleanupTarget::isSelected);
    return selected;
}

std::string_view rawValue(CleanupFilter filter) {
    switch (filter) {
    case CleanupFilter::recommended:
        return "recommended";
    case CleanupFilter::selected:
        return "selected";
    case CleanupFilter::all:
        break;
    }
    return "all";
}

std::string title(CleanupFilter filter) {
    switch (filter) {
    case CleanupFilter::recommended:
        return L::tr("推荐");
    case CleanupFilter::selected:
        return L::tr("已选择");
    case CleanupFilter::all:
        break;
    }
    return L::tr("全部");
}

bool matches(CleanupFilter filter, const CleanupItem& item) {
    switch (filter) {
    case CleanupFilter::recommended:
        return item.isCleanable && item.risk == CleanupRisk::safe;
    case CleanupFilter::selected:
        return item.isSelected && item.selectedBytes() > 0;
    case CleanupFilter::all:
        break;
    }
    return true;
}

bool belongs(const CleanupItem& item, CleanerModule module) {
    return module == CleanerModule::smartScan || item.module == module;
}

} // namespace vellmoor
