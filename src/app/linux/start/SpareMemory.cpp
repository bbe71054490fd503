#include "start/SpareMemory.h"

#include "CleanerStore.h"

#include <chrono>
#include <malloc.h>

namespace vellmoor {
namespace {

/// The page is drawn anew first, and a clean is followed by a scan.
constexpr std::chrono::seconds untilQuiet{1};
constexpr int largeBlock = 256 * 1024; // bytes; has pages of its own, which go back when it is freed
constexpr int freeAtAnEnd = 1024 * 1024;

} // namespace

SpareMemory::SpareMemory(CleanerStore& store) {
    // Left alone, glibc raises both with the first large block that is freed, and a thread's last free part, of which
    // malloc_trim() gives nothing back, is kept then.
    ::mallopt(M_MMAP_THRESHOLD, largeBlock);
    ::mallopt(M_TRIM_THRESHOLD, freeAtAnEnd);
    // Small parts that are freed join their neighbours at once: else what a long list was made with stays until the
    // next malloc_trim().
    ::mallopt(M_MXFAST, 0);
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
