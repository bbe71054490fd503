#pragma once

#include "CleanerService.h"
#include "CleanupItem.h"
#include "ScanSnapshot.h"
#include "StoreClock.h"

#include <QObject>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// The one observable state object of the main window: the shown module's results, a cache entry per module, the
/// running scan and the actions. Touched on the main thread only; engine calls run on workers.
class CleanerStore final : public QObject {
    Q_OBJECT

public:
    /// `service` is shared with the workers, which may outlive the store by the rest of one blocking call.
    CleanerStore(std::shared_ptr<CleanerService> service, Clock clock, QObject* parent = nullptr);
    ~CleanerStore() override;

    // The published fields. Each has a signal; listeners read the field again.
    [[nodiscard]] CleanerModule activeModule() const;
    [[nodiscard]] const std::vector<CleanupItem>& cleanupItems() const;
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
    [[nodiscard]] bool isCleaning() const;
    [[nodiscard]] const std::string& statusMessage() const;
    [[nodiscard]] const std::string& lastScanLabel() const;
    [[nodiscard]] const std::optional<CleanupReport>& latestReport() const;
    /// Whether the active module shows a result (fresh or cached) rather than its not-scanned state.
    [[nodiscard]] bool hasResult(CleanerModule module) const;

    // Modules and cache
    void show(CleanerModule module);
    void resetForLanguageChange();
    /// Keeps the shown results, selection included, in the cache entry of the active module.
    void persistActiveState();
    /// Asks the engine for the permission hints again.
    void refreshPermissionHints();

    // Queries over the shown results
    [[nodiscard]] std::vector<CleanupItem> items(CleanerModule module) const;
    [[nodiscard]] std::vector<int> itemIndices(CleanerModule module, CleanupFilter filter) const;
    [[nodiscard]] std::vector<CleanupItem> selectedItems(CleanerModule module) const;
    [[nodiscard]] std::int64_t selectedBytes(CleanerModule module) const;
    [[nodiscard]] std::int64_t cleanableBytes(CleanerModule module) const;
    [[nodiscard]] std::vector<PermissionHint> permissionLimitations(CleanerModule module) const;

    // Selection, edited in place by the rows
    /// Ticks or unticks a row and nothing else; a row that is not cleanable cannot be ticked.
    void setItemSelected(int itemIndex, bool selected);
    /// Ticks or unticks one path; the row is then selected exactly when one of its paths is.
    void setTargetSelected(int itemIndex, int targetIndex, bool selected);

    // Scanning
    void scan(CleanerModule module, bool clearsReport);
    /// What the scan button does while a scan runs.
    void cancelScan();

    // Actions
    void cleanSelected(CleanerModule module);
    void setStartupItem(const StartupItem& item, bool enabled);
    /// Asks the application to quit, words the outcome in statusMessage, then reads the memory state again.
    void quitMemoryApp(const MemoryApp& app);
    /// The result sheet was closed.
    void clearReport();

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

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace vellmoor
