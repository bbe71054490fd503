#include "service/ScanDriver.h"

#include "CheckedMath.h"
#include "applications/AppUninstaller.h"
#include "desktop/DesktopEntries.h"
#include "files/LargeFiles.h"
#include "found/ScanSnapshot.h"
#include "history/HistoryList.h"
#include "junk/SystemJunk.h"
#include "login/StartupItems.h"
#include "memory/Memory.h"
#include "permissions/PermissionHints.h"
#include "privacy/Privacy.h"
#include "processes/LinuxProcesses.h"
#include "service/Coverage.h"
#include "texts/ByteCount.h"
#include "trash/Trash.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace vellmoor {
namespace {

constexpr double highestFraction = 0.96;
constexpr double thinnestSegment = 0.015;

struct Stage {
    CleanerModule module;
    const char* startText;
    const char* endText;
};

/// In running order.
constexpr std::array<Stage, 7> stages{{
    {CleanerModule::systemJunk, "正在扫描系统垃圾...", "系统垃圾扫描完成"},
    {CleanerModule::largeFiles, "正在查找大文件...", "大文件扫描完成"},
    {CleanerModule::privacy, "正在检查隐私痕迹...", "隐私扫描完成"},
    {CleanerModule::appUninstaller, "正在分析应用残留...", "应用残留扫描完成"},
    {CleanerModule::performance, "正在检查性能项目...", "性能项目扫描完成"},
    {CleanerModule::memoryOptimization, "正在读取内存状态...", "内存状态读取完成"},
    {CleanerModule::trash, "正在读取废纸篓...", "废纸篓扫描完成"},
}};

/// What a stage found; what is not listed at first goes to `snapshot` apart.
std::vector<CleanupItem> stageItems(EngineContext& context, CleanerModule module, ScanSnapshot& snapshot) {
    switch (module) {
    case CleanerModule::systemJunk:
        return systemJunkItems(context);
    case CleanerModule::largeFiles: {
        LargeFileRows rows = largeFileRows(context);
        snapshot.furtherLargeFiles = std::move(rows.further);
        return std::move(rows.listed);
    }
    case CleanerModule::privacy:
        return privacyItems(context);
    case CleanerModule::appUninstaller:
        return applicationItems(context);
    case CleanerModule::performance:
        return performanceItems(context);
    case CleanerModule::memoryOptimization:
        return memoryItems(snapshot.memorySnapshot);
    case CleanerModule::trash:
        return trashItems(context);
    case CleanerModule::smartScan:
        break;
    }
    return {};
}

/// Counts finished steps and words the fractions.
class Progress {
public:
    Progress(const ProgressCallback& report, std::size_t steps) : report_(report), steps_(steps) {}

    void say(const char* key, double fraction) const { report_({.stage = L::tr(key), .fraction = fraction}); }
    void start(const char* key) const { say(key, fractionAt(done_)); }
    void end(const char* key) const { say(key, fractionAt(done_ + 1)); }
    void advance() { ++done_; }

private:
    [[nodiscard]] double fractionAt(std::size_t step) const {
        return std::min(static_cast<double>(step) / static_cast<double>(steps_), highestFraction);
    }
    const ProgressCallback& report_;
    std::size_t steps_;
    std::size_t done_ = 0;
};

std::int64_t entryCount(const EngineContext& context, const Path& folder) {
    const auto entries = context.platform().entries(folder);
    return entries ? static_cast<std::int64_t>(entries->size()) : 0;
}

/// What cleaning could free; on a system that counts so, on disks only.
std::int64_t cleanableBytes(const std::vector<CleanupItem>& items, bool onDisksOnly) {
    std::int64_t sum = 0;
    for (const CleanupItem& item : items) {
        if (!onDisksOnly || item.module != CleanerModule::memoryOptimization) {
            sum = checkedAdd(sum, item.cleanableBytes());
        }
    }
    return sum;
}

std::int64_t privacyFiles(const std::vector<CleanupItem>& items) {
    std::int64_t sum = 0;
    for (const CleanupItem& item : items) {
        if (item.module == CleanerModule::privacy) {
            sum = checkedAdd(sum, item.files);
        }
    }
    return sum;
}

} // namespace

std::vector<CleanerModule> scanStages(CleanerModule module) {
    if (module != CleanerModule::smartScan) {
        return {module};
    }
    std::vector<CleanerModule> all;
    std::ranges::transform(stages, std::back_inserter(all), &Stage::module);
    return all;
}

ScanSnapshot scan(EngineContext& context, CleanerModule module, const ProgressCallback& report) {
    const std::vector<CleanerModule> wanted = scanStages(module);
    Progress progress(report, wanted.size() + 2);
    progress.say("正在读取系统状态...", 0.01);

    // Done aside while the first stages look at the disk.
    if (module == CleanerModule::smartScan) {
        searchLargeFilesAhead(context);
    }
    LinuxProcesses::lookAhead(context);
    readEntriesAhead(context);
    ScanSnapshot snapshot;
    snapshot.memorySnapshot = memorySnapshot(context);
    snapshot.startupItems = startupItems(context);

    for (const Stage& stage : stages) {
        if (std::ranges::find(wanted, stage.module) == wanted.end()) {
            continue;
        }
        context.throwIfCancelled();
        progress.start(stage.startText);
        std::ranges::move(stageItems(context, stage.module, snapshot), std::back_inserter(snapshot.cleanupItems));
        progress.end(stage.endText);
        progress.advance();
    }

    context.throwIfCancelled();
    progress.start("正在整理扫描结果...");
    snapshot.memoryApps = memoryApps(context);
    markFromCleans(context, snapshot.cleanupItems);
    snapshot.fileCandidates = makeFileCandidates(context, snapshot.cleanupItems);
    const bool countsOnce = context.layout().countsOnce;
    if (countsOnce && module == CleanerModule::smartScan) {
        markCovered(context.platform(), snapshot.cleanupItems);
    }
    DiskSnapshot disk = diskSnapshot(context, cleanableBytes(countedOnce(snapshot.cleanupItems), countsOnce));
    snapshot.storageSegments = std::move(disk.segments);
    snapshot.diskSummary = std::move(disk.summary);
    progress.end("扫描结果已整理");
    progress.advance();

    context.throwIfCancelled();
    progress.start("正在检测权限状态...");
    snapshot.startupCount = entryCount(context, context.layout().startupCountFolder);
    snapshot.backgroundCount = entryCount(context, context.layout().backgroundCountFolder);
    snapshot.privacyCount = privacyFiles(snapshot.cleanupItems);
    snapshot.permissionHints = permissionHints(context);
    return snapshot;
}

DiskSnapshot diskSnapshot(const EngineContext& context, std::int64_t cleanable) {
    const std::optional<Capacity> capacity = context.platform().capacity(context.layout().home);
    if (!capacity) {
        return {.segments = {}, .summary = L::tr("无法读取磁盘容量")};
    }
    const std::int64_t total = capacity->totalBytes;
    const std::int64_t used = std::max<std::int64_t>(checkedSub(total, capacity->availableBytes), 0);
    const std::int64_t cleanablePart = std::min(used, cleanable);
    const std::int64_t otherUsed = std::max<std::int64_t>(checkedSub(used, cleanablePart), 0);
    const auto segment = [total](const char* label, std::int64_t value, Tint color) {
        const double share = total >= 1 ? static_cast<double>(value) / static_cast<double>(total) : 0;
        return StorageSegment{.label = L::tr(label),
                              .value = byteCountText(value),
                              .fraction = total >= 1 ? std::max(share, thinnestSegment) : 0,
                              .color = color};
    };
    return {.segments = {segment("已使用", otherUsed, Tint::cyan), segment("可清理", cleanablePart, Tint::green),
                         segment("可用", capacity->availableBytes, Tint::gray)},
            .summary = L::tr("%@ / %@ 已使用", byteCountText(used), byteCountText(total))};
}

} // namespace vellmoor
