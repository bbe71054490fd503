#pragma once

#include "TickLedger.h"
#include "done/KeptItem.h"
#include "found/CleanupItem.h"
#include "found/ScanSnapshot.h"
#include "service/CleanerService.h"

#include <QObject>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// The store's notion of now; passed in so that ages can be tested.
using Clock = std::function<TimePoint()>;

/// The one observable state object of the main window: the shown module's results, a cache entry per module, the
/// running scan and the actions. Touched on the thread that made it only (a call from another ends the program);
/// engine calls run on workers. Signals are emitted at the end of an operation, when all its fields are set.
class CleanerStore final : public QObject {
    Q_OBJECT

public:
    /// `service` is shared with the workers, which may outlive the store by the rest of one blocking call. An
    /// application that was asked to quit has `memoryRefreshDelay` to go before the memory state is read again.
    CleanerStore(std::shared_ptr<CleanerService> service, Clock clock,
                 std::chrono::milliseconds memoryRefreshDelay = std::chrono::milliseconds(1500));
    /// Shuts down with two seconds' patience, unless that was done.
    ~CleanerStore() override;

    /// The last call: cancels the scan, drops every result still to come and waits until the workers have ended.
    /// False when one still runs after `patience`: then what `service` refers to must stay (or the process end).
    bool shutDown(std::chrono::milliseconds patience);

    // The published fields. Each has a signal; listeners read the field again.
    [[nodiscard]] CleanerModule activeModule() const;
    [[nodiscard]] const std::vector<CleanupItem>& cleanupItems() const;
    /// Another number whenever those were replaced; ticks do not count.
    [[nodiscard]] std::uint64_t itemsRevision() const;
    /// Large files that the scan found beyond those that are listed.
    [[nodiscard]] const std::vector<CleanupItem>& furtherLargeFiles() const;
    [[nodiscard]] const std::vector<FileCandidate>& fileCandidates() const;
    [[nodiscard]] const std::vector<StorageSegment>& storageSegments() const;
    [[nodiscard]] const std::string& diskSummary() const;
    [[nodiscard]] std::int64_t startupCount() const;
    [[nodiscard]] std::int64_t backgroundCount() const;
    [[nodiscard]] std::int64_t privacyCount() const;
    [[nodiscard]] const MemorySnapshot& memorySnapshot() const;
    [[nodiscard]] const std::vector<MemoryApp>& memoryApps() const;
    [[nodiscard]] const std::vector<StartupItem>& startupItems() const;
    [[nodiscard]] const std::vector<PermissionHint>& permissionHints() const;
    [[nodiscard]] double scanProgress() const;
    [[nodiscard]] const std::string& scanStage() const;
    [[nodiscard]] bool isScanning() const;
    /// The module that the running scan looks at, or that the last one did.
    [[nodiscard]] CleanerModule scannedModule() const;
    [[nodiscard]] bool isCleaning() const;
    [[nodiscard]] const std::string& statusMessage() const;
    [[nodiscard]] const std::string& lastScanLabel() const;
    [[nodiscard]] const std::optional<CleanupReport>& latestReport() const;
    /// How far the running clean, or way back, has come; nothing while none runs or none has told.
    [[nodiscard]] const std::optional<CleanProgress>& cleanProgress() const;
    /// What can be taken back, as it was last loaded.
    [[nodiscard]] const History& history() const;
    /// What the last way back brought, until clearRestore().
    [[nodiscard]] const std::optional<RestoreReport>& latestRestore() const;
    /// Why the last action failed as a whole; it outlives the scan that follows an action, whose messages replace
    /// statusMessage. Empty when it did not, and once the user goes on: another action, module or scan of theirs.
    [[nodiscard]] const std::string& actionFailure() const;
    /// What is never offered again, in the order in which it was added, as last read.
    [[nodiscard]] const std::vector<KeptItem>& keptItems() const;
    /// Whether `module` has a result (fresh or cached) rather than its not-scanned state.
    [[nodiscard]] bool hasResult(CleanerModule module) const;

    // Modules and cache
    /// Makes `module` the active one: its cached result, or its not-scanned state. Drops the report; starts no scan.
    void show(CleanerModule module);
    /// Makes `module` the active one again after a scan took its place; report and progress of the scan stay.
    void keepShowing(CleanerModule module);
    /// Stops a scan, forgets all results (their texts are in the old language) and shows the not-scanned state.
    void resetForLanguageChange();
    /// Lists the further large files after the others.
    void listFurtherLargeFiles();
    /// Asks the engine for the permission hints again.
    void refreshPermissionHints();

    // Queries over the shown results
    [[nodiscard]] std::vector<CleanupItem> items(CleanerModule module) const;
    /// Positions in cleanupItems().
    [[nodiscard]] std::vector<int> itemIndices(CleanerModule module, CleanupFilter filter) const;
    /// What a clean of `module` would take, copied: rows that are cleanable, ticked and have a ticked byte.
    [[nodiscard]] std::vector<CleanupItem> selectedItems(CleanerModule module) const;
    /// The sums over `module`'s list, kept as ticks change. Overflow of one is fatal.
    [[nodiscard]] const ModuleTicks& ticks(CleanerModule module) const;
    /// Those of one row.
    [[nodiscard]] const RowTicks& rowTicks(int itemIndex) const;
    [[nodiscard]] std::int64_t selectedBytes(CleanerModule module) const;
    [[nodiscard]] std::int64_t cleanableBytes(CleanerModule module) const;
    /// The denied permissions that limit `module`'s scan; for smartScan all denied ones.
    [[nodiscard]] std::vector<PermissionHint> permissionLimitations(CleanerModule module) const;

    // Selection, edited in place: what is shown of a module is its cached result, and stays as it was left. Rows that
    // are not cleanable and positions that do not exist are left alone. A row with paths is ticked exactly when at
    // least one of its paths is.
    /// With every path of it: no path of an unticked row looks ticked or comes back with another's tick.
    void setItemSelected(int itemIndex, bool selected);
    void setItemsSelected(const std::vector<int>& itemIndices, bool selected);
    void setTargetSelected(int itemIndex, int targetIndex, bool selected);
    /// Every path of every row in `module`'s list.
    void setAllSelected(CleanerModule module, bool selected);

    // Scanning
    /// Makes `module` the active one. Ignored while a scan runs. `clearsReport` false keeps the result sheet up.
    void scan(CleanerModule module, bool clearsReport);
    /// What the scan button does while a scan runs; nothing when none does.
    void cancelScan();

    // Actions. While one of them runs (isCleaning) another is ignored. Each ends in a scan and reads the history again.
    /// Cleans a copy of what is selected now, publishes the report, then scans `module` again, which makes it the
    /// active one. Nothing without a selection.
    void cleanSelected(CleanerModule module);
    /// A running action finishes the path at hand (a removal for good ends between two entries) and leaves the others
    /// where they are.
    void stopCleaning();
    /// Puts items of a clean of the history back: those of these indices, or all that lie in a Trash when there are
    /// none. This and what follows ends in a scan of the active module where that has a result.
    void putBack(const std::string& clean, const std::vector<std::size_t>& indices = {});
    /// Puts a target of a Trash's row back; nothing unless it is known where it was.
    void putBackTarget(int itemIndex, int targetIndex);
    /// Takes what a clean of the history still had to do.
    void finishClean(const std::string& clean);
    /// Removes for good what a clean of the history put into a Trash.
    void removeForGood(const std::string& clean);
    /// Switches a login item to what it was before that change.
    void putBackSwitch(const HistorySwitch& change);
    void forgetHistory();
    /// Ignored while a scan runs too. Ends in a scan of `performance`, which makes it the active module.
    void setStartupItem(const StartupItem& item, bool enabled);
    /// Asks the application to quit and words the outcome in statusMessage. A moment later, when the application had
    /// time to go, reads the memory state again if memoryOptimization is then the active module.
    void quitMemoryApp(const MemoryApp& app);
    /// Ends an application that endOffered named, and the user agreed; worded and read again alike.
    void endMemoryApp(const MemoryApp& app);
    /// Puts a line of the window's into statusMessage.
    void say(const std::string& message);
    /// The result sheet was closed.
    void clearReport();
    void clearRestore();

    // The history
    /// Once at the start: puts right what a kill has left, then loads the history.
    void recover();
    /// Reads it on a worker; historyChanged follows.
    void loadHistory();
    /// Why a clean of what is ticked in `module` could not be taken back, a whole sentence; empty: it can. Asks the
    /// engine at once.
    [[nodiscard]] std::string whyNoWayBack(CleanerModule module) const;
    /// The user has read it.
    void clearActionFailure();

    // What is never offered again. The list is read and written aside; a failure is an actionFailure.
    void loadKept();
    /// What is kept leaves the shown and the cached results; what holds some of it is held back until the next scan.
    void keep(const std::vector<std::filesystem::path>& paths);
    /// The next scan lists it again.
    void offerAgain(const std::filesystem::path& path);

Q_SIGNALS:
    void activeModuleChanged();
    /// The rows were replaced as a whole.
    void cleanupItemsChanged();
    /// Ticks of one row or of its paths changed; the rows are the same.
    void selectionChanged(int itemIndex);
    void fileCandidatesChanged();
    void storageSegmentsChanged();
    void diskSummaryChanged();
    void countsChanged();
    void memorySnapshotChanged();
    void memoryAppsChanged();
    void startupItemsChanged();
    void permissionHintsChanged();
    void scanProgressChanged();
    void scanStageChanged();
    void isScanningChanged();
    void isCleaningChanged();
    void statusMessageChanged();
    void lastScanLabelChanged();
    void latestReportChanged();
    /// How a request that changes nothing on the page went, localised: to quit, to keep, to offer again.
    void answered(const QString& message, bool failed);
    /// The application cannot be asked to quit, and was sent nothing: it can only be ended, with a loss.
    void endOffered(const vellmoor::MemoryApp& app);
    void actionFailureChanged();
    void cleanProgressChanged();
    void historyChanged();
    void latestRestoreChanged();
    void keptItemsChanged();

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace vellmoor
