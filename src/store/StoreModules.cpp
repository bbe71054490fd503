// What is shown and what is kept: switching modules, the per-module cache, a new language.
#include "StoreState.h"
#include "texts/ByteCount.h"
#include "texts/L.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>

namespace vellmoor {

void CleanerStore::show(CleanerModule module) {
    state_->requireOwnThread();
    const State::Update update(*state_);
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

void CleanerStore::keepShowing(CleanerModule module) {
    state_->requireOwnThread();
    const State::Update update(*state_);
    state_->set(state_->activeModule, module, State::ActiveModule);
    state_->showOwnResults();
}

void CleanerStore::listFurtherLargeFiles() {
    state_->requireOwnThread();
    CachedModuleState& shown = *state_->shown;
    if (shown.furtherLargeFiles.empty()) {
        return;
    }
    const State::Update update(*state_);
    const CleanerModule module = state_->activeModule;
    const auto found = [&] { return state_->scanCompletionMessage(byteCountText(cleanableBytes(module)), module); };
    const bool tellsFound = state_->statusMessage == found();
    std::vector<CleanupItem> items = std::move(shown.cleanupItems);
    std::ranges::move(shown.furtherLargeFiles, std::back_inserter(items));
    shown.furtherLargeFiles = {};
    state_->noteNewItems();
    state_->set(shown.cleanupItems, std::move(items), State::CleanupItems);
    if (tellsFound) {
        state_->set(state_->statusMessage, found(), State::Status);
    }
}

void CleanerStore::resetForLanguageChange() {
    state_->requireOwnThread();
    const State::Update update(*state_);
    if (state_->isScanning) {
        state_->invalidateCurrentScan();
    }
    state_->applyNotScannedState(state_->activeModule);
    state_->cachedStates.clear();
    state_->set(state_->latestReport, {}, State::Report);
    state_->set(state_->actionFailure, {}, State::ActionFailure);
    state_->set(state_->scanProgress, 0.0, State::Progress);
    state_->set(state_->scanStage, {}, State::Stage);
}

void CleanerStore::refreshPermissionHints() {
    state_->requireOwnThread();
    state_->set(state_->shown->permissionHints, state_->service->permissionHints(), State::PermissionHints);
}

void CleanerStore::clearReport() {
    state_->requireOwnThread();
    state_->set(state_->latestReport, {}, State::Report);
}

void CleanerStore::clearActionFailure() {
    state_->requireOwnThread();
    state_->set(state_->actionFailure, {}, State::ActionFailure);
}

/// Shows `results` as those of the active module.
void CleanerStore::State::publish(CachedModuleState& results) {
    shown = &results;
    shownModule = activeModule;
    ++itemsRevision;
    for (const Field field : {CleanupItems, FileCandidates, StorageSegments, DiskSummary, Counts, Memory, MemoryApps,
                              StartupItems, PermissionHints}) {
        pending.set(field);
    }
}

void CleanerStore::State::noteNewItems() {
    shown->ledger.forget();
    ++itemsRevision;
}

void CleanerStore::State::apply(CachedModuleState& state) {
    const Update update(*this);
    publish(state);
    set(lastScanLabel, relativeScanLabel(state.scannedAt), LastScan);
    set(statusMessage, L::tr("显示来自%@的缓存结果，上次扫描：%@。", state.source, lastScanLabel), Status);
}

void CleanerStore::State::applyNotScannedState(CleanerModule module) {
    const Update update(*this);
    notScanned = {};
    notScanned.diskSummary = L::tr("点击扫描读取磁盘容量");
    notScanned.permissionHints = service->permissionHints();
    publish(notScanned);
    const bool isSmartScan = module == CleanerModule::smartScan;
    set(statusMessage,
        isSmartScan ? L::tr("将检查系统垃圾、大文件、废纸篓、应用残留、性能项目和内存状态。")
                    : L::tr("尚未扫描，点击扫描此模块。"),
        Status);
    set(lastScanLabel, L::tr("未扫描"), LastScan);
}

void CleanerStore::State::showOwnResults() {
    if (shownModule == activeModule) {
        return;
    }
    if (const auto cached = cachedStates.find(activeModule); cached != cachedStates.end()) {
        apply(cached->second);
    } else {
        applyNotScannedState(activeModule);
    }
}

/// What a clean of `module` took must not be offered by Smart Scan's result, which may be shown again.
void CleanerStore::State::takeOutOfSmartScan(const ScanSnapshot& fresh, CleanerModule module) {
    const auto smart = cachedStates.find(CleanerModule::smartScan);
    if (smart == cachedStates.end()) {
        return;
    }
    std::unordered_set<std::string_view> left;
    for (const CleanupItem& item : fresh.cleanupItems) {
        for (const CleanupTarget& target : item.targets) {
            left.insert(target.url.native());
        }
    }
    std::vector<CleanupItem>& items = smart->second.cleanupItems;
    smart->second.ledger.forget();
    std::erase_if(items, [&](CleanupItem& item) {
        if (item.module != module) {
            return false;
        }
        const auto isGone = [&](const CleanupTarget& target) {
            if (left.contains(target.url.native())) {
                return false;
            }
            item.bytes -= target.bytes;
            item.files -= target.files;
            return true;
        };
        return std::erase_if(item.targets.edit(), isGone) > 0 && item.targets.empty();
    });
    if (module == CleanerModule::largeFiles) {
        std::erase_if(smart->second.fileCandidates,
                      [&](const FileCandidate& file) { return !left.contains(file.url.native()); });
    }
}

void CleanerStore::State::cache(ScanSnapshot snapshot, CleanerModule scannedModule) {
    const bool isSmartScan = scannedModule == CleanerModule::smartScan;
    CachedModuleState whole{std::move(snapshot), clock(), isSmartScan ? L::tr("智能扫描") : L::tr("单独扫描"), {}};
    if (isSmartScan) {
        cacheByModule(std::move(whole));
        return;
    }
    keepTicks(knownItems(scannedModule), whole.cleanupItems);
    if (scansAfterAction) {
        takeOutOfSmartScan(whole, scannedModule);
    }
    cachedStates.insert_or_assign(scannedModule, std::move(whole));
}

/// A Smart Scan's rows are held twice, once in its own list and once in their module's. Their targets are shared until
/// one of the two lists changes a tick in them.
void CleanerStore::State::cacheByModule(CachedModuleState whole) {
    std::vector<CleanupItem> found = std::exchange(whole.cleanupItems, {});
    std::vector<CleanupItem> further = std::exchange(whole.furtherLargeFiles, {});
    CachedModuleState once = whole;
    once.cleanupItems = countedOnce(found);
    keepTicks(knownItems(CleanerModule::smartScan), once.cleanupItems);
    cachedStates.insert_or_assign(CleanerModule::smartScan, std::move(once));
    for (const CleanerModule module : allCleanerModules) {
        if (module == CleanerModule::smartScan) {
            continue;
        }
        CachedModuleState part = whole;
        for (CleanupItem& item : found) {
            if (item.module == module) {
                part.cleanupItems.push_back(std::move(item));
            }
        }
        keepTicks(knownItems(module), part.cleanupItems);
        part.fileCandidates = fileCandidates(part.cleanupItems);
        if (module == CleanerModule::largeFiles) {
            part.furtherLargeFiles = std::exchange(further, {});
        }
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
    std::vector<const CleanupTarget*> targets;
    for (const CleanupItem& item : items) {
        if (item.module == CleanerModule::largeFiles) {
            std::ranges::transform(item.targets, std::back_inserter(targets),
                                   [](const CleanupTarget& target) { return &target; });
        }
    }
    std::ranges::stable_sort(targets, std::ranges::greater(), &CleanupTarget::bytes);
    std::vector<FileCandidate> candidates;
    std::ranges::transform(targets, std::back_inserter(candidates), [](const CleanupTarget* target) {
        return FileCandidate{.name = target->name,
                             .location = target->location,
                             .size = byteCountText(target->bytes),
                             .modified = target->modified,
                             .symbol = target->symbol,
                             .url = target->url};
    });
    return candidates;
}

} // namespace vellmoor
