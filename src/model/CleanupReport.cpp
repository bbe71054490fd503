#include "CleanupReport.h"

#include "ByteCount.h"
#include "L.h"

namespace vellmoor {

std::string CleanupReport::message() const {
    if (failedCount == 0) {
        return L::tr("已处理 %d 项，预计释放 %@。", removedCount, byteCountText(processedBytes));
    }
    return L::tr("已处理 %d 项，%d 项失败，预计释放 %@。", removedCount, failedCount, byteCountText(processedBytes));
}

} // namespace vellmoor
