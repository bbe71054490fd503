#pragma once

#include "CleanOffer.h"
#include "CleanerStore.h"
#include "CleanupListModel.h"
#include "Decision.h"
#include "Desktop.h"
#include "FileCandidateModel.h"
#include "HistoryModel.h"
#include "KeptListModel.h"
#include "LanguageManager.h"
#include "LargeFileListModel.h"
#include "MemoryAppListModel.h"
#include "MemoryModel.h"
#include "MemoryPartModel.h"
#include "ModuleListModel.h"
#include "PermissionListModel.h"
#include "Question.h"
#include "ReportModel.h"
#include "RestoreModel.h"
#include "ScanModel.h"
#include "StartupListModel.h"
#include "StorageSegmentModel.h"

#include <QObject>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <chrono>
#include <optional>

namespace vellmoor {

/// The window's side of the store: which module is shown, the lists and texts of its page, and the user's actions.
class WindowModel final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the window loader")
    /// The raw value of the shown module.
    Q_PROPERTY(QString module READ module WRITE setModule NOTIFY moduleChanged FINAL)
    Q_PROPERTY(QString moduleTitle READ moduleTitle NOTIFY textsChanged FINAL)
    Q_PROPERTY(QString moduleSubtitle READ moduleSubtitle NOTIFY textsChanged FINAL)
    Q_PROPERTY(QString moduleSymbol READ moduleSymbol NOTIFY textsChanged FINAL)

    Q_PROPERTY(vellmoor::ScanModel* scan READ scan CONSTANT FINAL)
    Q_PROPERTY(vellmoor::CleanOffer* offer READ offer CONSTANT FINAL)
    Q_PROPERTY(vellmoor::ModuleListModel* modules READ modules CONSTANT FINAL)
    Q_PROPERTY(vellmoor::StorageSegmentModel* segments READ segments CONSTANT FINAL)
    Q_PROPERTY(vellmoor::CleanupListModel* items READ items CONSTANT FINAL)
    Q_PROPERTY(vellmoor::LargeFileListModel* largeFiles READ largeFiles CONSTANT FINAL)
    /// The categories of Memory Optimization and of Login Items only, for pages that show all their rows.
    Q_PROPERTY(vellmoor::CleanupListModel* memoryItems READ memoryItems CONSTANT FINAL)
    Q_PROPERTY(vellmoor::CleanupListModel* startupExtras READ startupExtras CONSTANT FINAL)
    Q_PROPERTY(vellmoor::CleanupListModel* details READ details CONSTANT FINAL)
    Q_PROPERTY(vellmoor::FileCandidateModel* candidates READ candidates CONSTANT FINAL)
    Q_PROPERTY(vellmoor::StartupListModel* startup READ startup CONSTANT FINAL)
    Q_PROPERTY(vellmoor::MemoryModel* memory READ memory CONSTANT FINAL)
    Q_PROPERTY(vellmoor::MemoryAppListModel* memoryApps READ memoryApps CONSTANT FINAL)
    Q_PROPERTY(vellmoor::MemoryPartModel* memoryParts READ memoryParts CONSTANT FINAL)
    Q_PROPERTY(vellmoor::Question* question READ question CONSTANT FINAL)
    Q_PROPERTY(vellmoor::PermissionListModel* permissions READ permissions CONSTANT FINAL)
    Q_PROPERTY(vellmoor::ReportModel* report READ report CONSTANT FINAL)
    Q_PROPERTY(vellmoor::HistoryModel* history READ history CONSTANT FINAL)
    Q_PROPERTY(vellmoor::RestoreModel* restore READ restore CONSTANT FINAL)
    Q_PROPERTY(vellmoor::KeptListModel* kept READ kept CONSTANT FINAL)
    Q_PROPERTY(vellmoor::Decision* decision READ decision CONSTANT FINAL)

    Q_PROPERTY(QString volumeLabel READ volumeLabel NOTIFY textsChanged FINAL)
    Q_PROPERTY(bool canScan READ canScan NOTIFY busyChanged FINAL)
    /// The banner's text; empty when nothing limits the shown module.
    Q_PROPERTY(QString limitation READ limitation NOTIFY limitationChanged FINAL)
    /// The outcome of an action, for a while; empty when there is none.
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged FINAL)
    Q_PROPERTY(bool noticeIsFailure READ noticeIsFailure NOTIFY noticeChanged FINAL)
    /// Whether the window says that it should not run as root; the user may close the notice.
    Q_PROPERTY(bool rootNotice READ rootNotice NOTIFY rootNoticeChanged FINAL)
    /// Why the last action failed, until the user goes on; empty: it did not.
    Q_PROPERTY(QString actionFailure READ actionFailure NOTIFY actionFailureChanged FINAL)
    /// Whether a sheet or a question is open, as the window says: what comes from outside waits or is dropped then.
    Q_PROPERTY(bool sheetOpen READ sheetOpen WRITE setSheetOpen NOTIFY sheetOpenChanged FINAL)
    /// The row of the start-up item being changed; -1: none.
    Q_PROPERTY(int changingStartupRow READ changingStartupRow NOTIFY busyChanged FINAL)

public:
    WindowModel(CleanerStore& store, LanguageManager& languages, Desktop& desktop, QObject* parent = nullptr);

    [[nodiscard]] QString module() const;
    void setModule(const QString& module);
    [[nodiscard]] QString moduleTitle() const;
    [[nodiscard]] QString moduleSubtitle() const;
    [[nodiscard]] QString moduleSymbol() const;

    [[nodiscard]] ScanModel* scan() { return &scan_; }
    [[nodiscard]] CleanOffer* offer() { return &offer_; }
    [[nodiscard]] ModuleListModel* modules() { return &modules_; }
    [[nodiscard]] StorageSegmentModel* segments() { return &segments_; }
    [[nodiscard]] CleanupListModel* items() { return &items_; }
    [[nodiscard]] LargeFileListModel* largeFiles() { return &largeFiles_; }
    [[nodiscard]] CleanupListModel* memoryItems() { return &memoryItems_; }
    [[nodiscard]] CleanupListModel* startupExtras() { return &startupExtras_; }
    /// The list of a module's page.
    [[nodiscard]] CleanupListModel& listOf(CleanerModule module) {
        return module == CleanerModule::largeFiles ? static_cast<CleanupListModel&>(largeFiles_) : items_;
    }
    [[nodiscard]] CleanupListModel* details() { return &details_; }
    [[nodiscard]] FileCandidateModel* candidates() { return &candidates_; }
    [[nodiscard]] StartupListModel* startup() { return &startup_; }
    [[nodiscard]] MemoryModel* memory() { return &memory_; }
    [[nodiscard]] MemoryAppListModel* memoryApps() { return &memoryApps_; }
    [[nodiscard]] MemoryPartModel* memoryParts() { return &memoryParts_; }
    [[nodiscard]] Question* question() { return &question_; }
    [[nodiscard]] PermissionListModel* permissions() { return &permissions_; }
    [[nodiscard]] ReportModel* report() { return &report_; }
    [[nodiscard]] HistoryModel* history() { return &history_; }
    [[nodiscard]] RestoreModel* restore() { return &restore_; }
    [[nodiscard]] KeptListModel* kept() { return &kept_; }
    [[nodiscard]] Decision* decision() { return &decision_; }

    [[nodiscard]] QString volumeLabel() const;
    [[nodiscard]] bool canScan() const;
    [[nodiscard]] QString limitation() const;
    [[nodiscard]] QString notice() const { return notice_; }
    [[nodiscard]] bool noticeIsFailure() const { return noticeIsFailure_; }
    /// Shows a line over the page until it is closed, or for 8 seconds.
    void showNotice(const QString& text, bool isFailure);
    Q_INVOKABLE void closeNotice();
    [[nodiscard]] bool rootNotice() const { return rootNotice_; }
    [[nodiscard]] QString actionFailure() const;
    /// The row of the login item whose change runs; -1: none.
    [[nodiscard]] int changingStartupRow() const;

    [[nodiscard]] bool sheetOpen() const { return sheetOpen_; }
    void setSheetOpen(bool open);

    /// The scan button: starts a scan of the shown module, or cancels the running one.
    Q_INVOKABLE void scanOrCancel();
    /// Starts a scan of the shown module unless one runs.
    Q_INVOKABLE void refresh();
    /// After the user confirmed.
    Q_INVOKABLE void cleanSelected();
    Q_INVOKABLE void closeReport();
    Q_INVOKABLE void closeActionFailure();
    /// Puts back what the reported clean put into the Trash.
    Q_INVOKABLE void putBackReported();
    Q_INVOKABLE void closeRestore();
    /// Ends the running clean after the item at hand.
    Q_INVOKABLE void stopCleaning();
    /// The window is to close when the clean has ended; `stops` ends it after the item at hand.
    Q_INVOKABLE void closeAfterClean(bool stops);
    /// The window is asked to close: false when a clean runs, and the user is asked first.
    [[nodiscard]] bool mayClose();
    void setActive(bool active) { isActive_ = active; }
    Q_INVOKABLE void rescanReported();
    Q_INVOKABLE void setAllSelected(bool selected);
    Q_INVOKABLE void refreshPermissions();
    Q_INVOKABLE void closeRootNotice();
    /// The window became the active one.
    Q_INVOKABLE void activated();

    Q_INVOKABLE void openHome();
    Q_INVOKABLE void openTrash();
    Q_INVOKABLE void openSystemMonitor();
    Q_INVOKABLE void openLoginItemsSettings();
    Q_INVOKABLE void openPermissionSettings();

Q_SIGNALS:
    void moduleChanged();
    void textsChanged();
    void busyChanged();
    void actionFailureChanged();
    void limitationChanged();
    void rootNoticeChanged();
    void noticeChanged();
    /// A clean runs: what is to become of it?
    void closingAsked();
    /// For those who hear what they do not see; what is urgent goes before everything else.
    void announced(const QString& text, bool urgent);
    /// The list of what is kept is to be shown.
    void keptAsked();
    /// Nothing holds the window back any more.
    void closingAgreed();
    /// Something that took long is over while the window was not the active one.
    void finishedAside(const QString& text);
    void sheetOpenChanged();
    /// The desktop's menu asked for a clean of what is selected: the question that stands before one opens.
    void cleanOffered();

private:
    void connectStore();
    void followStore();
    void noteScan();
    void noteClean();
    void announceAction();
    void follow(CleanerModule module);
    void retranslate();
    void switchStartupItem(const StartupItem& item);

    CleanerStore& store_;
    Desktop& desktop_;
    CleanerModule module_;
    CleanerModule chosen_; ///< by the user; module_ is there when the store is
    ScanModel scan_;
    CleanOffer offer_;
    ModuleListModel modules_;
    StorageSegmentModel segments_;
    CleanupListModel items_;
    LargeFileListModel largeFiles_;
    CleanupListModel memoryItems_;
    CleanupListModel startupExtras_;
    CleanupListModel details_;
    FileCandidateModel candidates_;
    StartupListModel startup_;
    MemoryModel memory_;
    MemoryAppListModel memoryApps_;
    MemoryPartModel memoryParts_;
    Question question_;
    PermissionListModel permissions_;
    ReportModel report_;
    HistoryModel history_;
    RestoreModel restore_;
    Decision decision_;
    KeptListModel kept_;
    bool rootNotice_;
    bool sheetOpen_ = false;
    std::optional<StartupItem> changingStartup_;
    QString notice_;
    bool noticeIsFailure_ = false;
    QTimer noticeTime_;
    bool closesAfterClean_ = false;
    bool isActive_ = true;
    std::chrono::steady_clock::time_point scanStart_;
};

} // namespace vellmoor
