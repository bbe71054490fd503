#include "found/CleanupItem.h"

#include "CheckedMath.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <algorithm>
#include <iterator>
#include <utility>

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

std::string sizeText(std::int64_t bytes, bool isAtLeast) {
    return isAtLeast ? L::tr("至少 %@", byteCountText(bytes)) : byteCountText(bytes);
}

/// Takes `bytes` and `files` of `target` out of the row's figures.
void subtract(CleanupItem& item, const CleanupTarget& target, std::int64_t bytes, std::int64_t files) {
    item.bytes = checkedSub(item.bytes, bytes);
    item.files = checkedSub(item.files, files);
    if (item.appInfo && target.url.path() != item.appInfo->appPath) {
        item.appInfo->residualBytes = checkedSub(item.appInfo->residualBytes, bytes);
        item.appInfo->residualCount -= target.isCovered ? 1 : 0;
    }
}

/// Some or all of it.
bool isCountedElsewhere(const CleanupTarget& target) {
    return target.isCovered || target.coveredBytes != 0 || target.coveredFiles != 0;
}

} // namespace

std::string CleanupTarget::sizeText() const {
    return vellmoor::sizeText(bytes, isAtLeast);
}

std::string CleanupItem::sizeText() const {
    return vellmoor::sizeText(bytes, isAtLeast);
}

std::int64_t CleanupItem::selectedBytes() const {
    return sumOverSelection(*this, [](const CleanupTarget& target) { return target.bytes; });
}

std::int64_t CleanupItem::selectedFiles() const {
    return sumOverSelection(*this, [](const CleanupTarget& target) { return std::max<std::int64_t>(target.files, 1); });
}

void CleanupItem::selectAll(bool selected) {
    for (CleanupTarget& target : targets.edit()) {
        target.isSelected = selected && target.mayGo();
    }
    isSelected = selected;
}

std::int64_t CleanupItem::cleanableBytes() const {
    if (!isCleanable) {
        return 0;
    }
    std::int64_t sum = bytes;
    for (const CleanupTarget& target : targets) {
        sum = target.mayGo() ? sum : checkedSub(sum, target.bytes);
    }
    return sum;
}

int CleanupItem::selectedTargetCount() const {
    return static_cast<int>(std::ranges::count_if(targets, &CleanupTarget::isSelected));
}

std::vector<CleanupTarget> CleanupItem::selectedTargets() const {
    std::vector<CleanupTarget> selected;
    std::ranges::copy_if(targets, std::back_inserter(selected), &CleanupTarget::isSelected);
    return selected;
}

std::string rowKey(CleanerModule module, std::string_view category) {
    return std::string(rawValue(module)) + "/" + std::string(category);
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

std::vector<CleanupItem> countedOnce(std::vector<CleanupItem> items) {
    for (CleanupItem& item : items) {
        if (std::ranges::none_of(item.targets, isCountedElsewhere)) {
            continue; // stays shared
        }
        for (CleanupTarget& target : item.targets.edit()) {
            if (target.isCovered) {
                subtract(item, target, target.bytes, target.files);
            } else if (isCountedElsewhere(target)) {
                subtract(item, target, target.coveredBytes, target.coveredFiles);
                target.bytes = checkedSub(target.bytes, std::exchange(target.coveredBytes, 0));
                target.files = checkedSub(target.files, std::exchange(target.coveredFiles, 0));
            }
        }
    }
    std::erase_if(items, [](CleanupItem& item) {
        const bool lost = std::ranges::any_of(item.targets, &CleanupTarget::isCovered);
        if (lost) {
            std::erase_if(item.targets.edit(), [](const CleanupTarget& target) { return target.isCovered; });
            item.isSelected = item.isSelected && std::ranges::any_of(item.targets, &CleanupTarget::isSelected);
        }
        return lost && item.targets.empty();
    });
    return items;
}

bool belongs(const CleanupItem& item, CleanerModule module) {
    return module == CleanerModule::smartScan || item.module == module;
}

} // namespace vellmoor
