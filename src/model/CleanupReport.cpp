#include "CleanupReport.h"

#include "ByteCount.h"
#include "L.h"

#include <algorithm>

namespace vellmoor {

std::string_view rawValue(CleanupFate fate) {
    return std::ranges::find(cleanupFates, fate, &std::pair<CleanupFate, const char*>::first)->second;
}

std::string CleanupReport::message() const {
    if (failedCount == 0) {
        return L::tr("已处理 %d 项，预计释放 %@。", removedCount, byteCountText(processedBytes));
    }
    return L::tr("已处理 %d 项，%d 项失败，预计释放 %@。", removedCount, failedCount, byteCountText(processedBytes));
}

} // namespace vellmoor
