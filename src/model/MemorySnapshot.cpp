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

MemoryPressure MemorySnapshot::pressure() const {
    if (totalBytes < 1 || usageRatio(*this) < highPressure) {
        return MemoryPressure::good;
    }
    return usageRatio(*this) < criticalPressure ? MemoryPressure::high : MemoryPressure::critical;
}

std::string MemorySnapshot::pressureTitle() const {
    switch (pressure()) {
    case MemoryPressure::good:
        break;
    case MemoryPressure::high:
        return L::tr("偏高");
    case MemoryPressure::critical:
        return L::tr("紧张");
    }
    return L::tr("良好");
}

} // namespace vellmoor
