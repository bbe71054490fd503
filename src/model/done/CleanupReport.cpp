#include "done/CleanupReport.h"

#include "texts/ByteCount.h"
#include "texts/L.h"

#include <algorithm>

namespace vellmoor {

std::string_view rawValue(CleanupFate fate) {
    return std::ranges::find(cleanupFates, fate, &std::pair<CleanupFate, const char*>::first)->second;
}

std::string CleanupReport::message() const {
    std::string text =
        failedCount == 0
            ? L::tr("已处理 %d 项，预计释放 %@。", removedCount, byteCountText(processedBytes))
            : L::tr("已处理 %d 项，%d 项失败，预计释放 %@。", removedCount, failedCount, byteCountText(processedBytes));
    return wasStopped ? withStopped(std::move(text), untriedCount) : text;
}

std::string withStopped(std::string message, std::int64_t untriedCount) {
    return L::tr("%@ 已停止，%d 项未处理。", std::move(message), untriedCount);
}

} // namespace vellmoor
