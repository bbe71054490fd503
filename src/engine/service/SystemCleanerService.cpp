#include "service/SystemCleanerService.h"

#include "ScanSnapshot.h"
#include "clean/Cleaning.h"
#include "login/StartupItems.h"
#include "memory/Memory.h"
#include "permissions/PermissionHints.h"
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
