// Life and fields of the store. Its other files: StoreModules (showing and caching results), StoreSelection (queries
// and ticks), StoreScan (one scan at a time), StoreActions (cleaning, login items, quitting an application),
// StoreHistory (taking back), StoreKeep (what is never offered again).
#include "StoreState.h"
#include "texts/L.h"

#include <QThread>

#include <array>

namespace vellmoor {
namespace {

constexpr std::chrono::milliseconds destructionPatience{2000};

} // namespace

CleanerStore::State::State(CleanerStore& owner, std::shared_ptr<CleanerService> engine, Clock now)
    : store(owner),
      service(std::move(engine)),
      clock(std::move(now)),
      workers(std::make_shared<Workers>(owner)) {
    shown->diskSummary = L::tr("点击扫描读取磁盘容量");
    statusMessage = L::tr("将检查系统垃圾、大文件、废纸篓、应用残留、性能项目和内存状态。");
    lastScanLabel = L::tr("未扫描");
    memoryRefresh.setSingleShot(true);
    connect(&memoryRefresh, &QTimer::timeout, &store, [this] { refreshMemoryAfterAppChange(); });
}

CleanerStore::State::Update::~Update() {
    if (--state_.openUpdates == 0) {
        state_.announce();
    }
}

void CleanerStore::State::announce() {
    using Signal = void (CleanerStore::*)();
    static constexpr std::array<Signal, FieldCount> signalOf{
        &CleanerStore::activeModuleChanged,    &CleanerStore::cleanupItemsChanged, &CleanerStore::fileCandidatesChanged,
        &CleanerStore::storageSegmentsChanged, &CleanerStore::diskSummaryChanged,  &CleanerStore::countsChanged,
        &CleanerStore::memorySnapshotChanged,  &CleanerStore::memoryAppsChanged,   &CleanerStore::startupItemsChanged,
        &CleanerStore::permissionHintsChanged, &CleanerStore::scanProgressChanged, &CleanerStore::scanStageChanged,
        &CleanerStore::isScanningChanged,      &CleanerStore::isCleaningChanged,   &CleanerStore::statusMessageChanged,
        &CleanerStore::lastScanLabelChanged,   &CleanerStore::latestReportChanged, &CleanerStore::actionFailureChanged,
        &CleanerStore::cleanProgressChanged,   &CleanerStore::historyChanged,      &CleanerStore::latestRestoreChanged,
        &CleanerStore::keptItemsChanged,
    };
    const std::bitset<FieldCount> changed = std::exchange(pending, {});
    for (std::size_t field = 0; field < FieldCount; ++field) {
        if (changed.test(field)) {
            (store.*signalOf.at(field))();
        }
    }
}

void CleanerStore::State::requireOwnThread() const {
    if (QThread::currentThread() != store.thread()) {
        qFatal("CleanerStore used on a foreign thread");
    }
}

CleanerStore::CleanerStore(std::shared_ptr<CleanerService> service, Clock clock,
                           std::chrono::milliseconds memoryRefreshDelay)
    : state_(std::make_unique<State>(*this, std::move(service), std::move(clock))) {
    state_->memoryRefresh.setInterval(memoryRefreshDelay);
}

CleanerStore::~CleanerStore() {
    if (!state_->isShutDown) {
        blockSignals(true);
        shutDown(destructionPatience);
    }
}

bool CleanerStore::shutDown(std::chrono::milliseconds patience) {
    state_->isShutDown = true;
    state_->memoryRefresh.stop();
    state_->workers->cut();
    if (state_->isScanning) {
        state_->invalidateCurrentScan();
    }
    return state_->workers->waitUntilIdle(patience);
}

CleanerModule CleanerStore::activeModule() const {
    return state_->activeModule;
}
const std::vector<CleanupItem>& CleanerStore::cleanupItems() const {
    return state_->shown->cleanupItems;
}
std::uint64_t CleanerStore::itemsRevision() const {
    return state_->itemsRevision;
}
const std::vector<CleanupItem>& CleanerStore::furtherLargeFiles() const {
    return state_->shown->furtherLargeFiles;
}
const std::vector<FileCandidate>& CleanerStore::fileCandidates() const {
    return state_->shown->fileCandidates;
}
const std::vector<StorageSegment>& CleanerStore::storageSegments() const {
    return state_->shown->storageSegments;
}
const std::string& CleanerStore::diskSummary() const {
    return state_->shown->diskSummary;
}
std::int64_t CleanerStore::startupCount() const {
    return state_->shown->startupCount;
}
std::int64_t CleanerStore::backgroundCount() const {
    return state_->shown->backgroundCount;
}
std::int64_t CleanerStore::privacyCount() const {
    return state_->shown->privacyCount;
}
const MemorySnapshot& CleanerStore::memorySnapshot() const {
    return state_->shown->memorySnapshot;
}
const std::vector<MemoryApp>& CleanerStore::memoryApps() const {
    return state_->shown->memoryApps;
}
const std::vector<StartupItem>& CleanerStore::startupItems() const {
    return state_->shown->startupItems;
}
const std::vector<PermissionHint>& CleanerStore::permissionHints() const {
    return state_->shown->permissionHints;
}
double CleanerStore::scanProgress() const {
    return state_->scanProgress;
}
const std::string& CleanerStore::scanStage() const {
    return state_->scanStage;
}
bool CleanerStore::isScanning() const {
    return state_->isScanning;
}
CleanerModule CleanerStore::scannedModule() const {
    return state_->lastScanned;
}
bool CleanerStore::isCleaning() const {
    return state_->isCleaning;
}
const std::string& CleanerStore::statusMessage() const {
    return state_->statusMessage;
}
const std::string& CleanerStore::lastScanLabel() const {
    return state_->lastScanLabel;
}
const std::optional<CleanupReport>& CleanerStore::latestReport() const {
    return state_->latestReport;
}

const std::string& CleanerStore::actionFailure() const {
    return state_->actionFailure;
}
const std::optional<CleanProgress>& CleanerStore::cleanProgress() const {
    return state_->cleanProgress;
}
const History& CleanerStore::history() const {
    return state_->history;
}
const std::optional<RestoreReport>& CleanerStore::latestRestore() const {
    return state_->latestRestore;
}
bool CleanerStore::hasResult(CleanerModule module) const {
    return state_->cachedStates.contains(module);
}

} // namespace vellmoor
