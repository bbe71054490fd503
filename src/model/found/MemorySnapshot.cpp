#include "found/MemorySnapshot.h"

#include "CheckedMath.h"
#include "texts/L.h"

#include <algorithm>
#include <cmath>

namespace vellmoor {
namespace {

constexpr double highPressure = 0.7;
constexpr double criticalPressure = 0.86;

/// When the process at `index` began; 0: not told.
std::uint64_t startOf(const MemoryApp& app, std::size_t index) {
    return index < app.starts.size() ? app.starts[index] : 0;
}

bool hasProcess(const MemoryApp& app, std::int32_t pid, std::uint64_t start) {
    for (std::size_t i = 0; i < app.pids.size(); ++i) {
        if (app.pids[i] == pid && startOf(app, i) == start) {
            return true;
        }
    }
    return false;
}

double usageRatio(const MemorySnapshot& snapshot) {
    return static_cast<double>(snapshot.usedBytes()) / static_cast<double>(snapshot.totalBytes);
}

} // namespace

std::int64_t MemorySnapshot::usedBytes() const {
    return std::max<std::int64_t>(checkedSub(totalBytes, freeBytes), 0);
}

std::int64_t MemorySnapshot::fileCacheBytes() const {
    return std::max<std::int64_t>(checkedSub(freeBytes, unusedBytes), 0);
}

int MemorySnapshot::usagePercent() const {
    if (totalBytes < 1) {
        return 0;
    }
    return static_cast<int>(std::lround(std::min(usageRatio(*this), 1.0) * 100));
}

bool MemoryApp::isStill(const MemoryApp& now) const {
    const bool isNamedAlike = id == now.id && bundleIdentifier == now.bundleIdentifier;
    return isNamedAlike && (pids.empty() ? now.pids.empty() : !withProcessesOf(now).pids.empty());
}

MemoryApp MemoryApp::withProcessesOf(const MemoryApp& now) const {
    MemoryApp both = *this;
    both.pids.clear();
    both.starts.clear();
    for (std::size_t i = 0; i < pids.size(); ++i) {
        if (hasProcess(now, pids[i], startOf(*this, i))) {
            both.pids.push_back(pids[i]);
            both.starts.push_back(startOf(*this, i));
        }
    }
    return both;
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
