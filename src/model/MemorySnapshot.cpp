#include "MemorySnapshot.h"

#include "CheckedMath.h"
#include "L.h"

#include <algorithm>
#include <cmath>

namespace vellmoor {
namespace {

constexpr double highPressure = 0.7;
constexpr double criticalPressure = 0.86;

double usageRatio(const MemorySnapshot& snapshot) {
    return static_cast<double>(snapshot.usedBytes()) / static_cast<double>(snapshot.totalBytes);
}

} // namespace

std::int64_t MemorySnapshot::usedBytes() const {
    return std::max<std::int64_t>(checkedSub(totalBytes, freeBytes), 0);
}

int MemorySnapshot::usagePercent() const {
    if (totalBytes < 1) {
        return 0;
    }
    return static_cast<int>(std::lround(std::min(usageRatio(*this), 1.0) * 100));
}

std::string MemorySnapshot::pressureTitle() const {
    if (totalBytes < 1 || usageRatio(*this) < highPressure) {
        return L::tr("良好");
    }
    return usageRatio(*this) < criticalPressure ? L::tr("偏高") : L::tr("紧张");
}

} // namespace vellmoor
