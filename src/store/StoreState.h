// The inside of CleanerStore, shared by its source files and nobody else.
#pragma once

#include "CachedModuleState.h"
#include "CleanerStore.h"
#include "Workers.h"

#include <QTimer>

#include <bitset>
#include <cstdint>
#include <exception>
#include <functional>
#include <map>

namespace vellmoor {

struct CleanerStore::State {
    /// The published fields, in the order in which their changes are announced.
    enum Field : std::uint8_t {
        ActiveModule,
        CleanupItems,
        FileCandidates,
        StorageSegments,
        DiskSummary,
        Counts,
        Memory,
        MemoryApps,
        StartupItems,
        PermissionHints,
        Progress,
        Stage,
        Scanning,
        Cleaning,
        Status,
        LastScan,
        Report,
        ActionFailure,
        Advance,
        Past,
        Restore,
        Kept,
        FieldCount,
    };

    /// Holds back the signals of the fields that are set while it lives, so that a listener never sees half an update.
    class Update {
    public:
        explicit Update(State& state) : state_(state) { ++state_.openUpdates; }
        ~Update();
        Update(const Update&) = delete;
        Update& operator=(const Update&) = delete;

    private:
        State& state_;
    };

    /// What an action leaves: a message, or a report that words its own.
    struct ActionOutcome {
        std::string message;
        std::optional<CleanupReport> report;
        bool failed = false; ///< the message says why
        std::optional<RestoreReport> restore = {};
    };
    using Action = std::function<ActionOutcome(CleanerService&)>;
    /// One that tells how far it has come and can be stopped.
    using LongAction =
        std::function<ActionOutcome(CleanerService&, const CleanProgressCallback& progress, const CancelToken& stop)>;

    State(CleanerStore& owner, std::shared_ptr<CleanerService> engine, Clock now);

    /// Assigns a published field; its signal follows when the outermost update ends.
    template <class Value>
    void set(Value& field, Value value, Field changed) {
        field = std::move(value);
        pending.set(changed);
        if (openUpdates == 0) {
            announce();
        }
    }
    void announce();
    /// The store belongs to one thread; anything else ends the program.
    void requireOwnThread() const;

    // Modules and cache
    void publish(CachedModuleState& results);
    void apply(CachedModuleState& state);
    void applyNotScannedState(CleanerModule module);
    /// What was ticked and unticked stays so in what is found anew, by path.
    static void keepTicks(const std::vector<CleanupItem>& before, std::vector<CleanupItem>& found);
    [[nodiscard]] const std::vector<CleanupItem>& knownItems(CleanerModule module) const;
    /// After a scan that brought nothing: no other module's results stay under the active one's name.
    void showOwnResults();
    void takeOutOfSmartScan(const ScanSnapshot& fresh, CleanerModule module);
    void cache(ScanSnapshot snapshot, CleanerModule scannedModule);
    void cacheByModule(CachedModuleState whole);
    [[nodiscard]] std::string relativeScanLabel(TimePoint date) const;
    static std::vector<FileCandidate> fileCandidates(const std::vector<CleanupItem>& items);

    // Scanning; the main-thread end of a scan's worker
    void startScanWorker(CleanerModule module, std::uint64_t generation);
    void showProgress(const ScanProgressUpdate& update, std::uint64_t generation);
    void completeScan(ScanSnapshot snapshot, CleanerModule module, std::uint64_t generation);
    void endCancelledScan(std::uint64_t generation);
    void failScan(const std::string& cause, std::uint64_t generation);
    void invalidateCurrentScan();
    void finishCancelledScan();
    [[nodiscard]] std::string scanCompletionMessage(const std::string& cleanable, CleanerModule module) const;

    // Actions
    void startAction(const std::string& status, std::optional<CleanerModule> rescanned, const Action& action);
    void startLongAction(const std::string& status, std::optional<CleanerModule> rescanned, const LongAction& action);
    void startPutBack(const std::vector<std::filesystem::path>& places);
    void endAction(ActionOutcome outcome, std::optional<CleanerModule> rescanned);
    /// The active module, where it shows a result.
    [[nodiscard]] std::optional<CleanerModule> shownAgain() const;
    void startReading(bool recovers);
    using Farewell = QuitOutcome (CleanerService::*)(const MemoryApp&);
    /// Says how a request went that changes nothing on the page.
    void answer(const std::string& message, bool failed);
    void startFarewell(const MemoryApp& app, Farewell farewell);
    void showQuitOutcome(const MemoryApp& app, QuitOutcome outcome);
    void refreshMemoryAfterAppChange();

    // What is never offered again
    using ListChange = std::function<Outcome(CleanerService&)>;
    void changeKept(const ListChange& change, std::function<void()> changed);
    void leaveOut(const std::vector<Path>& kept);

    // Selection
    [[nodiscard]] CleanupItem* editableItem(int index);
    /// The shown rows were replaced.
    void noteNewItems();
    /// The sums over the shown rows.
    [[nodiscard]] TickLedger& ledger();

    CleanerStore& store;
    std::shared_ptr<CleanerService> service;
    Clock clock;
    std::shared_ptr<Workers> workers;

    CleanerModule activeModule = CleanerModule::smartScan;
    /// Whose results `shown` are. Differs from activeModule only while (or after) a module that was not shown is
    /// scanned: its results arrive with the scan, and until then no other module's are kept under its name.
    CleanerModule shownModule = CleanerModule::smartScan;
    CachedModuleState notScanned; ///< what is shown of a module without a result
    /// What is shown: `notScanned`, or shownModule's entry among the cached ones. Ticks are set in it, nothing is
    /// copied.
    CachedModuleState* shown = &notScanned;
    std::uint64_t itemsRevision = 1;
    double scanProgress = 0;
    std::string scanStage;
    bool isScanning = false;
    CleanerModule lastScanned = CleanerModule::smartScan;
    bool isCleaning = false;
    std::string statusMessage;
    std::string lastScanLabel;
    std::optional<CleanupReport> latestReport;
    std::string actionFailure;
    std::optional<CleanProgress> cleanProgress;
    History history;
    std::optional<RestoreReport> latestRestore;
    std::vector<KeptItem> keptItems;
    std::vector<Path> keptMeanwhile; ///< since the running scan began, which may list it

    std::map<CleanerModule, CachedModuleState> cachedStates;
    /// Grows with every scan and every invalidation; what carries an older number is stale.
    std::uint64_t scanGeneration = 0;
    bool scansAfterAction = false;           ///< the running scan shows what an action left
    std::shared_ptr<CancelToken> scanToken;  ///< of the running scan
    std::shared_ptr<CancelToken> cleanToken; ///< of the running clean, or of the last one
    QTimer memoryRefresh;
    bool isShutDown = false;

    std::bitset<FieldCount> pending;
    int openUpdates = 0;
};

} // namespace vellmoor
