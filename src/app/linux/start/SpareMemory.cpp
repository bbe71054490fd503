#include "start/SpareMemory.h"

#include "CleanerStore.h"

#include <chrono>
#include <malloc.h>

namespace vellmoor {
namespace {

/// The page is drawn anew first, and a clean is followed by a scan.
constexpr std::chrono::seconds untilQuiet{1};

} // namespace

SpareMemory::SpareMemory(CleanerStore& store) {
    later_.setSingleShot(true);
    later_.setInterval(untilQuiet);
    const auto wait = [this] { later_.start(); };
    connect(&store, &CleanerStore::isScanningChanged, this, wait);
    connect(&store, &CleanerStore::isCleaningChanged, this, wait);
    connect(&store, &CleanerStore::latestReportChanged, this, wait);
    connect(&store, &CleanerStore::historyChanged, this, wait);
    connect(&later_, &QTimer::timeout, this, [&store] {
        if (!store.isScanning() && !store.isCleaning()) {
            ::malloc_trim(0);
        }
    });
}

} // namespace vellmoor
