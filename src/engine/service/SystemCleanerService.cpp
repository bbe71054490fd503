#include "service/SystemCleanerService.h"

#include "Paths.h"
#include "ScanSnapshot.h"
#include "clean/Cleaning.h"
#include "keep/KeptPaths.h"
#include "login/StartupItems.h"
#include "memory/Memory.h"
#include "permissions/PermissionHints.h"
#include "scan/PathMeasurement.h"
#include "service/ScanDriver.h"

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

CleanupReport SystemCleanerService::clean(const std::vector<CleanupItem>& items, const CancelToken& stop) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, stop, now());
    return vellmoor::clean(context, items);
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
    return vellmoor::disableStartupItem(context, item);
}

StartupActionResult SystemCleanerService::enableStartupItem(const StartupItem& item) {
    platform_.enterWorker();
    EngineContext context(platform_, layout_, now());
    return vellmoor::enableStartupItem(context, item);
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
