#include "service/SystemCleanerService.h"

#include "clean/Cleaning.h"
#include "clean/Recovery.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "history/HistoryList.h"
#include "keep/KeptPaths.h"
#include "login/StartupItems.h"
#include "memory/Memory.h"
#include "permissions/PermissionHints.h"
#include "restore/Restore.h"
#include "scan/PathMeasurement.h"
#include "service/ScanDriver.h"

#include <algorithm>
#include <chrono>

namespace vellmoor {
namespace {

TimePoint now() {
    return std::chrono::system_clock::now();
}

} // namespace

SystemCleanerService::SystemCleanerService(const Platform& platform, const SystemLayout& layout)
    : platform_(platform),
      layout_(layout) {}

ScanSnapshot SystemCleanerService::scan(CleanerModule module, const ProgressCallback& progress,
                                        const CancelToken& token) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, token, now());
    return vellmoor::scan(context, module, progress);
}

CleanupReport SystemCleanerService::clean(const std::vector<CleanupItem>& items, const CleanProgressCallback& progress,
                                          const CancelToken& stop) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, stop, now());
    return vellmoor::clean(context, items, memorySettles, progress);
}

CleanupReport SystemCleanerService::finish(const std::string& clean, const CleanProgressCallback& progress,
                                           const CancelToken& stop) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, stop, now());
    return vellmoor::finishClean(context, clean, progress);
}

CleanupReport SystemCleanerService::removeForGood(const std::string& clean, const CleanProgressCallback& progress,
                                                  const CancelToken& stop) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, stop, now());
    return vellmoor::removeForGood(context, clean, progress);
}

RestoreReport SystemCleanerService::putBack(const std::string& clean, const std::vector<std::size_t>& indices,
                                            const CleanProgressCallback& progress, const CancelToken& stop) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, stop, now());
    return vellmoor::putBack(context, clean, indices, progress);
}

RestoreReport SystemCleanerService::putBackTrashed(const std::vector<Path>& places,
                                                   const CleanProgressCallback& progress, const CancelToken& stop) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, stop, now());
    return vellmoor::putBackTrashed(context, places, progress);
}

void SystemCleanerService::recover() {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    vellmoor::recover(context);
}

History SystemCleanerService::history() {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    return vellmoor::history(context);
}

Outcome SystemCleanerService::forgetHistory() {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    return vellmoor::forgetHistory(context);
}

std::optional<std::string> SystemCleanerService::whyNoWayBack(const std::vector<CleanupItem>& items) {
    const EngineContext context(platform_, layout_, now());
    return vellmoor::whyNoWayBack(context, items);
}

StartupActionResult SystemCleanerService::putBackSwitch(const HistorySwitch& change) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    const std::vector<StartupItem> items = startupItems(context);
    const auto item = std::ranges::find(items, change.file, &StartupItem::plistURL);
    if (item == items.end()) {
        return {.succeeded = false, .message = L::tr("%@ 已不在列表中。", change.name)};
    }
    return change.isEnabled ? disableStartupItem(*item) : enableStartupItem(*item);
}

Outcome SystemCleanerService::keep(const std::vector<Path>& paths) {
    Outcome outcome;
    for (const Path& path : paths) {
        if (const ListChange changed = vellmoor::keep(platform_, layout_, path); !changed) {
            outcome = std::unexpected(displayName(path) + ": " + changed.error());
        }
    }
    return outcome;
}

Outcome SystemCleanerService::offerAgain(const Path& path) {
    const ListChange changed = vellmoor::offerAgain(platform_, layout_, path);
    return changed ? Outcome() : std::unexpected(changed.error());
}

std::expected<std::vector<KeptItem>, std::string> SystemCleanerService::keptItems() {
    const auto kept = KeptPaths::read(platform_, layout_);
    if (!kept) {
        return std::unexpected(kept.error());
    }
    const EngineContext context(platform_, layout_, now());
    std::vector<KeptItem> items;
    for (const Path& path : kept->paths()) {
        items.push_back({.url = path,
                         .name = displayName(path),
                         .location = displayPath(layout_, path.parent_path()),
                         .symbol = symbolFor(context, path),
                         .exists = platform_.exists(path)});
    }
    return items;
}

StartupActionResult SystemCleanerService::disableStartupItem(const StartupItem& item) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    StartupActionResult result = vellmoor::disableStartupItem(context, item);
    if (result.succeeded) {
        rememberSwitch(context, item.name, result.file, false);
    }
    return result;
}

StartupActionResult SystemCleanerService::enableStartupItem(const StartupItem& item) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    StartupActionResult result = vellmoor::enableStartupItem(context, item);
    if (result.succeeded) {
        rememberSwitch(context, item.name, result.file, true);
    }
    return result;
}

std::vector<PermissionHint> SystemCleanerService::permissionHints() {
    platform_.enterWorker();
    const EngineContext context(platform_, layout_, now());
    return vellmoor::permissionHints(context);
}

QuitOutcome SystemCleanerService::requestQuit(const MemoryApp& app) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    const MemoryApp living = withLivingProcesses(context, app);
    return living.pids.empty() ? QuitOutcome::NotRunning : platform_.requestQuit(living);
}

QuitOutcome SystemCleanerService::endApplication(const MemoryApp& app) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    const MemoryApp living = withLivingProcesses(context, app);
    return living.pids.empty() ? QuitOutcome::NotRunning : platform_.endApplication(living);
}

} // namespace vellmoor
