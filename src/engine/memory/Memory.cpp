#include "memory/Memory.h"

#include "CheckedMath.h"
#include "disk/Glob.h"
#include "processes/MemoryText.h"

#include <algorithm>

namespace vellmoor {
namespace {

constexpr std::int64_t mebibyte = std::int64_t{1024} * 1024;
constexpr std::int64_t gibibyte = 1024 * mebibyte;
constexpr double reserveShare = 0.16;
constexpr std::int64_t smallestReserve = 2 * gibibyte;
constexpr std::int64_t largestReserve = 6 * gibibyte;
constexpr std::int64_t smallestEstimate = 512 * mebibyte;
constexpr std::size_t largestText = std::size_t{1024} * 1024;

/// What vm_stat prints, or /proc/meminfo holds.
std::optional<std::string> statistics(const EngineContext& context) {
    const MemoryLayout& layout = context.layout().memory;
    if (!layout.statisticsFile.empty()) {
        return context.platform().fileContents(layout.statisticsFile, largestText);
    }
    return context.platform().commandOutput(layout.statistics.tool, layout.statistics.arguments);
}

/// The count of one label, or of the first present one of "A|B".
std::int64_t countOf(std::string_view label, std::string_view text) {
    while (!label.empty()) {
        const std::size_t end = std::min(label.find('|'), label.size());
        if (const auto count = labelledCount(label.substr(0, end), text)) {
            return *count;
        }
        label.remove_prefix(std::min(end + 1, label.size()));
    }
    return 0;
}

std::int64_t sumOf(const std::vector<std::string>& labels, std::string_view text) {
    std::int64_t sum = 0;
    for (const std::string& label : labels) {
        sum = checkedAdd(sum, countOf(label, text));
    }
    return sum;
}

/// What the zram devices hold in main memory.
std::int64_t compressedDeviceBytes(const EngineContext& context) {
    const Path& folder = context.layout().memory.blockDevices;
    std::int64_t sum = 0;
    if (folder.empty()) {
        return sum;
    }
    const auto devices = context.platform().entries(folder);
    for (const FolderEntry& device : devices.value_or(std::vector<FolderEntry>())) {
        if (globMatches("zram#", device.name)) {
            const Path file = folder / device.name / "mm_stat";
            sum = checkedAdd(sum, zramBytes(context.platform().fileContents(file, largestText).value_or("")));
        }
    }
    return sum;
}

std::int64_t unitOf(const MemoryLayout& layout, std::string_view text) {
    return layout.unit > 0 ? layout.unit : vmPageSize(text);
}

} // namespace

std::int64_t systemMemorySize(const EngineContext& context) {
    const MemoryLayout& layout = context.layout().memory;
    if (!layout.total.tool.empty()) {
        const auto output = context.platform().commandOutput(layout.total.tool, layout.total.arguments);
        if (const auto bytes = decimal<std::int64_t>(trimmed(output.value_or("")))) {
            return *bytes;
        }
    } else if (const auto text = statistics(context)) {
        if (const std::int64_t count = vmPageCount(layout.totalLabel, *text); count > 0) {
            return checkedMul(count, unitOf(layout, *text));
        }
    }
    return context.platform().physicalMemory();
}

std::int64_t estimatedReleasableMemory(std::int64_t rawReclaimable, std::int64_t totalMemory) {
    if (rawReclaimable < 1 || totalMemory < 1) {
        return 0;
    }
    const auto share = static_cast<std::int64_t>(static_cast<double>(totalMemory) * reserveShare);
    const std::int64_t estimate = rawReclaimable - std::clamp(share, smallestReserve, largestReserve);
    return estimate < smallestEstimate ? 0 : estimate;
}

MemorySnapshot memorySnapshot(const EngineContext& context) {
    MemorySnapshot snapshot;
    snapshot.totalBytes = systemMemorySize(context);
    const std::optional<std::string> text = snapshot.totalBytes < 1 ? std::nullopt : statistics(context);
    if (!text) {
        return snapshot;
    }
    const MemoryLayout& layout = context.layout().memory;
    const std::int64_t unit = unitOf(layout, *text);
    const std::int64_t purgeable = sumOf(layout.labels.purgeable, *text);
    const std::int64_t fileBacked = sumOf(layout.labels.fileBacked, *text);
    const std::int64_t releasable = checkedAdd(fileBacked, purgeable);
    const std::int64_t devices = compressedDeviceBytes(context) / unit;
    const auto bytes = [unit](std::int64_t count) { return checkedMul(count, unit); };

    snapshot.freeBytes = bytes(sumOf(layout.labels.free, *text));
    snapshot.unusedBytes = bytes(sumOf(layout.labels.unused, *text));
    snapshot.activeBytes = bytes(sumOf(layout.labels.active, *text));
    snapshot.wiredBytes = bytes(sumOf(layout.labels.wired, *text));
    snapshot.compressedBytes = bytes(checkedAdd(sumOf(layout.labels.compressed, *text), devices));
    snapshot.cachedBytes =
        std::max<std::int64_t>(0, bytes(checkedAdd(sumOf(layout.labels.inactive, *text), releasable)));

    const std::int64_t raw = checkedAdd(bytes(releasable), snapshot.compressedBytes / 2);
    const std::int64_t filled = std::max<std::int64_t>(checkedSub(snapshot.totalBytes, snapshot.unusedBytes), 0);
    snapshot.reclaimableBytes =
        estimatedReleasableMemory(std::min(std::max<std::int64_t>(raw, 0), filled), snapshot.totalBytes);
    return snapshot;
}

std::vector<CleanupItem> memoryItems(const MemorySnapshot& snapshot) {
    const bool isWorthIt = snapshot.reclaimableBytes > 0;
    CleanupTarget target;
    target.url = "/dev/null"; // stands for the memory; a clean never touches it
    target.name = L::tr("预计可释放内存");
    target.location = L::tr("内存压力整理");
    target.bytes = std::max<std::int64_t>(snapshot.reclaimableBytes, 0);
    target.files = 1;
    target.modified = L::tr("实时");
    target.symbol = "memorychip";
    target.isSelected = isWorthIt;

    CleanupItem item;
    item.module = CleanerModule::memoryOptimization;
    item.key = rowKey(CleanerModule::memoryOptimization, "fileCaches");
    item.title = target.name;
    item.description = L::tr("释放文件缓存并请求 macOS 整理内存压力");
    item.bytes = target.bytes;
    item.files = target.files;
    item.symbol = target.symbol;
    item.tint = Tint::mint;
    item.risk = CleanupRisk::safe;
    item.isCleanable = isWorthIt;
    item.isSelected = isWorthIt;
    item.targets = {std::move(target)};
    return {std::move(item)};
}

} // namespace vellmoor
