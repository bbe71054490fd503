// What is shown and what is kept: switching modules, the per-module cache, a new language.
#include "ByteCount.h"
#include "L.h"
#include "StoreState.h"

#include <algorithm>
#include <iterator>

namespace vellmoor {

void CleanerStore::show(CleanerModule module) {
    state_->requireOwnThread();
    const State::Update update(*state_);
    state_->persistShownResults();
    state_->set(state_->activeModule, module, State::ActiveModule);
    state_->set(state_->latestReport, {}, State::Report);
    state_->set(state_->actionFailure, {}, State::ActionFailure);
    state_->set(state_->scanProgress, 0.0, State::Progress);
    state_->set(state_->scanStage, {}, State::Stage);
    if (const auto cached = state_->cachedStates.find(module); cached != state_->cachedStates.end()) {
        state_->apply(cached->second);
    } else {
        state_->applyNotScannedState(module);
    }
}

void CleanerStore::resetForLanguageChange() {
    state_->requireOwnThread();
    const State::Update update(*state_);
    if (state_->isScanning) {
        state_->invalidateCurrentScan();
    }
    state_->cachedStates.clear();
    state_->set(state_->latestReport, {}, State::Report);
    state_->set(state_->actionFailure, {}, State::ActionFailure);
    state_->set(state_->scanProgress, 0.0, State::Progress);
    state_->set(state_->scanStage, {}, State::Stage);
    state_->applyNotScannedState(state_->activeModule);
}

void CleanerStore::persistActiveState() {
    state_->requireOwnThread();
    state_->persistShownResults();
}

void CleanerStore::refreshPermissionHints() {
    state_->requireOwnThread();
    state_->set(state_->shown.permissionHints, state_->service->permissionHints(), State::PermissionHints);
}

void CleanerStore::clearReport() {
    state_->requireOwnThread();
    state_->set(state_->latestReport, {}, State::Report);
}

/// Shows `results` as those of the active module.
void CleanerStore::State::publish(ScanSnapshot results) {
    shown = std::move(results);
    shownModule = activeModule;
    for (const Field field : {CleanupItems, FileCandidates, StorageSegments, DiskSummary, Counts, Memory, MemoryApps,
                              StartupItems, PermissionHints}) {
        pending.set(field);
    }
}

void CleanerStore::State::apply(const CachedModuleState& state) {
    const Update update(*this);
    publish(static_cast<const ScanSnapshot&>(state));
    set(lastScanLabel, relativeScanLabel(state.scannedAt), LastScan);
    set(statusMessage, L::tr("显示来自%@的缓存结果，上次扫描：%@。", state.source, lastScanLabel), Status);
}

void CleanerStore::State::applyNotScannedState(CleanerModule module) {
    const Update update(*this);
    ScanSnapshot nothing;
    nothing.diskSummary = L::tr("点击扫描读取磁盘容量");
    nothing.permissionHints = service->permissionHints();
    publish(std::move(nothing));
    persistShownResults();
    const bool isSmartScan = module == CleanerModule::smartScan;
    set(statusMessage,
        isSmartScan ? L::tr("将检查系统垃圾、大文件、废纸篓、应用残留、性能项目和内存状态。")
                    : L::tr("尚未扫描，点击扫描此模块。"),
        Status);
    set(lastScanLabel, L::tr("未扫描"), LastScan);
}

void CleanerStore::State::persistShownResults() {
    const auto existing = cachedStates.find(shownModule);
    if (existing != cachedStates.end()) {
        static_cast<ScanSnapshot&>(existing->second) = shown;
        return;
    }
    if (!shown.cleanupItems.empty()) {
        cachedStates.emplace(shownModule, CachedModuleState{shown, clock(), L::tr("当前模块")});
    }
}

void CleanerStore::State::showOwnResults() {
    if (shownModule == activeModule) {
        return;
    }
    persistShownResults();
    if (const auto cached = cachedStates.find(activeModule); cached != cachedStates.end()) {
        apply(cached->second);
    } else {
        applyNotScannedState(activeModule);
    }
}

/// What was found anew in a module is no longer what Smart Scan found there: cleaned rows must not be offered again.
void CleanerStore::State::renewInSmartScan(const CachedModuleState& fresh, CleanerModule module) {
    const auto smart = cachedStates.find(CleanerModule::smartScan);
    if (smart == cachedStates.end()) {
        return;
    }
    std::vector<CleanupItem>& items = smart->second.cleanupItems;
    const auto ofModule = [module](const CleanupItem& item) { return item.module == module; };
    const auto place = std::ranges::find_if(items, ofModule) - items.begin();
    std::vector<CleanupItem> found = fresh.cleanupItems;
    keepTicks(items, found);
    std::erase_if(items, ofModule);
    items.insert(items.begin() + place, found.begin(), found.end());
    if (module == CleanerModule::largeFiles) {
        smart->second.fileCandidates = fresh.fileCandidates;
    }
}

void CleanerStore::State::cache(const ScanSnapshot& snapshot, CleanerModule scannedModule) {
    const bool isSmartScan = scannedModule == CleanerModule::smartScan;
    CachedModuleState whole{snapshot, clock(), isSmartScan ? L::tr("智能扫描") : L::tr("单独扫描")};
    if (!isSmartScan) {
        keepTicks(knownItems(scannedModule), whole.cleanupItems);
        renewInSmartScan(whole, scannedModule);
        cachedStates.insert_or_assign(scannedModule, std::move(whole));
        return;
    }
    CachedModuleState once = whole;
    once.cleanupItems = countedOnce(std::move(once.cleanupItems));
    keepTicks(knownItems(scannedModule), once.cleanupItems);
    cachedStates.insert_or_assign(scannedModule, std::move(once));
    for (const CleanerModule module : allCleanerModules) {
        if (module == CleanerModule::smartScan) {
            continue;
        }
        CachedModuleState part = whole;
        std::erase_if(part.cleanupItems, [module](const CleanupItem& item) { return item.module != module; });
        keepTicks(knownItems(module), part.cleanupItems);
        part.fileCandidates = fileCandidates(part.cleanupItems);
        cachedStates.insert_or_assign(module, std::move(part));
    }
}

std::string CleanerStore::State::relativeScanLabel(TimePoint date) const {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    constexpr std::int64_t day = 24 * hour;
    const std::int64_t elapsed = std::chrono::duration_cast<std::chrono::seconds>(clock() - date).count();
    if (elapsed < minute) {
        return L::tr("刚刚");
    }
    if (elapsed < hour) {
        return L::tr("%d 分钟前", elapsed / minute);
    }
    if (elapsed < day) {
        return L::tr("%d 小时前", elapsed / hour);
    }
    return L::tr("%d 天前", elapsed / day);
}

/// The lines of the large files among `items`, largest first; only that module's page shows them.
std::vector<FileCandidate> CleanerStore::State::fileCandidates(const std::vector<CleanupItem>& items) {
    std::vector<CleanupTarget> targets;
    for (const CleanupItem& item : items) {
        if (item.module == CleanerModule::largeFiles) {
            targets.insert(targets.end(), item.targets.begin(), item.targets.end());
        }
    }
    std::ranges::stable_sort(targets, std::ranges::greater(), &CleanupTarget::bytes);
    std::vector<FileCandidate> candidates;
    std::ranges::transform(targets, std::back_inserter(candidates), [](const CleanupTarget& target) {
        return FileCandidate{.name = target.name,
                             .location = target.location,
                             .size = byteCountText(target.bytes),
                             .modified = target.modified,
                             .symbol = target.symbol,
                             .url = target.url};
    });
    return candidates;
}

} // namespace vellmoor
