// Looking up the rows of a scan.
#pragma once

#include "found/CleanupItem.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::test {

inline const CleanupItem* row(const std::vector<CleanupItem>& items, std::string_view title) {
    const auto found = std::ranges::find(items, title, &CleanupItem::title);
    return found == items.end() ? nullptr : &*found;
}

inline std::vector<std::string> names(const CleanupItem* item) {
    std::vector<std::string> out;
    if (item != nullptr) {
        std::ranges::transform(item->targets, std::back_inserter(out), &CleanupTarget::name);
    }
    return out;
}

} // namespace vellmoor::test
