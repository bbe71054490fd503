// The longest names, the largest sizes and the longest lists that a home can bring forth.
#include "SampleData.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vellmoor::sample {
namespace {

constexpr std::int64_t terabyte = 1'000'000'000'000;
constexpr std::size_t rowCount = 10'000;

const std::string longName = "Backup of the complete photo and video archive of the family, 1998 to 2026, second copy, "
                             "do not delete before the new disk has arrived (final, really final).tar.zst";

void stretch(CleanupTarget& target) {
    target.name = longName;
    target.location = "~/Documents/Projects/2026/a-customer-with-a-very-long-name/deliverables/" + target.location;
    target.bytes = 3 * terabyte + 217'000'000'000;
    target.files = 12'345'678;
}

void stretch(CleanupItem& item) {
    item.title += " · " + longName;
    item.description += " · " + longName;
    item.bytes = 0;
    item.files = 0;
    for (CleanupTarget& target : item.targets.edit()) {
        stretch(target);
        item.bytes += target.bytes;
        item.files += target.files;
    }
    if (item.appInfo) {
        item.appInfo->bundleIdentifier = "org.example.a.rather.long.identifier.of.an.application.that.nobody.shortened";
        item.appInfo->residualCount = 12'345;
        item.appInfo->residualBytes = 2 * terabyte;
        item.appInfo->appBytes = terabyte;
    }
}

bool canBeMany(const CleanupItem& item) {
    return item.module != CleanerModule::performance && item.module != CleanerModule::memoryOptimization;
}

/// The rows as they are, then copies of those that a home can have many of, until there are ten thousand.
void repeat(std::vector<CleanupItem>& items) {
    std::vector<CleanupItem> many;
    std::ranges::copy_if(items, std::back_inserter(many), canBeMany);
    while (!many.empty() && items.size() < rowCount) {
        CleanupItem copy = many[items.size() % many.size()];
        copy.id = CleanupItem().id;
        items.push_back(std::move(copy));
    }
}

} // namespace

ScanSnapshot extremes(CleanerModule module) {
    ScanSnapshot scan = snapshot(module);
    for (CleanupItem& item : scan.cleanupItems) {
        stretch(item);
    }
    repeat(scan.cleanupItems);
    for (FileCandidate& file : scan.fileCandidates) {
        file.name = longName;
        file.size = byteCountText(3 * terabyte);
    }
    for (StorageSegment& segment : scan.storageSegments) {
        segment.value = byteCountText(123 * terabyte);
    }
    scan.diskSummary = L::tr("%@ / %@ 已使用", byteCountText(999 * terabyte), byteCountText(1024 * terabyte));
    scan.startupCount = 12'345;
    scan.memorySnapshot.totalBytes = 6 * terabyte;
    scan.memorySnapshot.freeBytes = 1'234'000'000'000;
    for (MemoryApp& app : scan.memoryApps) {
        app.name = longName;
        app.bytes = terabyte + 234'000'000'000;
        app.processCount = 12'345;
    }
    for (StartupItem& item : scan.startupItems) {
        item.name = longName;
        item.program = "/home/anna/" + longName;
    }
    return scan;
}

} // namespace vellmoor::sample
