#include "service/Coverage.h"

#include "CheckedMath.h"
#include "disk/Paths.h"
#include "scan/DeepScanFilter.h"
#include "scan/UserPlaces.h"

#include <algorithm>
#include <map>

namespace vellmoor {
namespace {

bool isOnDisk(const CleanupItem& item) {
    return item.isCleanable && item.module != CleanerModule::memoryOptimization;
}

bool isBody(const CleanupItem& item, const CleanupTarget& target) {
    return item.appInfo && target.url.path() == item.appInfo->appPath;
}

/// The places that rows have counted so far; none lies below another.
class Counted {
public:
    explicit Counted(const Platform& platform) : platform_(platform) {}

    /// Counts the target, unless it is covered, which is marked.
    void count(CleanupTarget& target, const CleanupItem* row) {
        const Path place = platform_.realPlace(target.url).value_or(target.url);
        if (isCovered(place, row)) {
            target.isCovered = true;
            return;
        }
        takeOver(place, target, row);
        counted_.insert_or_assign(place, Share{target.bytes, target.files, row});
    }

private:
    struct Share {
        std::int64_t bytes = 0;
        std::int64_t files = 0;
        const CleanupItem* row = nullptr;
    };

    /// Targets of one row are as its scanner lists them.
    [[nodiscard]] bool isCovered(const Path& place, const CleanupItem* row) const {
        for (Path above = place;; above = above.parent_path()) {
            if (const auto known = counted_.find(above); known != counted_.end() && known->second.row != row) {
                return true;
            }
            if (!above.has_relative_path()) {
                return false;
            }
        }
    }

    /// What `target` holds of others is theirs; from now on it stands for them.
    void takeOver(const Path& place, CleanupTarget& target, const CleanupItem* row) {
        const Path first = place.native() + "/";
        for (auto inner = counted_.lower_bound(first);
             inner != counted_.end() && isStrictlyBelow(inner->first, place);) {
            if (inner->second.row != row &&
                isReachedFrom(platform_, inner->first, place)) { // else the target's figures do not hold it
                target.coveredBytes = checkedAdd(target.coveredBytes, inner->second.bytes);
                target.coveredFiles = checkedAdd(target.coveredFiles, inner->second.files);
            }
            inner = counted_.erase(inner);
        }
        target.coveredBytes = std::min(target.coveredBytes, target.bytes);
        target.coveredFiles = std::min(target.coveredFiles, target.files);
    }

    struct ByBytes {
        bool operator()(const Path& a, const Path& b) const { return a.native() < b.native(); }
    };
    const Platform& platform_;
    std::map<Path, Share, ByBytes> counted_;
};

} // namespace

void markCovered(const Platform& platform, std::vector<CleanupItem>& items) {
    Counted counted(platform);
    for (const bool bodies : {true, false}) {
        for (CleanupItem& item : items) {
            for (CleanupTarget& target : item.targets.edit()) {
                if (isOnDisk(item) && target.mayGo() && isBody(item, target) == bodies) {
                    counted.count(target, &item);
                }
            }
        }
    }
}

} // namespace vellmoor
