#include "done/RestoreReport.h"

#include "done/CleanupReport.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <utility>

namespace vellmoor {

std::string_view rawValue(RestoreFate fate) {
    switch (fate) {
    case RestoreFate::Restored:
        return "restored";
    case RestoreFate::NameTaken:
        return "nameTaken";
    case RestoreFate::Changed:
        return "changed";
    case RestoreFate::Vanished:
        return "vanished";
    case RestoreFate::Failed:
        return "failed";
    case RestoreFate::Untried:
        break;
    }
    return "untried";
}

std::string RestoreReport::message() const {
    std::string text = failedCount == 0 ? L::tr("已放回 %d 项（%@）。", restoredCount, byteCountText(restoredBytes))
                                        : L::tr("已放回 %d 项（%@），%d 项仍在废纸篓中。", restoredCount,
                                                byteCountText(restoredBytes), failedCount);
    return wasStopped ? withStopped(std::move(text), untriedCount) : text;
}

} // namespace vellmoor
