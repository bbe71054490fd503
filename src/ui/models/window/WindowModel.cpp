#include "WindowModel.h"

#include "ModuleLook.h"
#include "QtText.h"

#include <QTimer>

#include <algorithm>
#include <chrono>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::chrono::seconds noticeDuration{8};
/// A scan that takes longer is told of at its end, when the user looks elsewhere.
constexpr std::chrono::seconds longScan{10};

} // namespace

WindowModel::WindowModel(CleanerStore& store, LanguageManager& languages, Desktop& desktop, QObject* parent)
    : QObject(parent),
      store_(store),
      desktop_(desktop),
      module_(store.activeModule()),
      chosen_(module_),
      scan_(store),
      offer_(store),
      modules_(store, desktop),
      segments_(store, desktop),
      items_(store, desktop),
      largeFiles_(store, desktop),
      memoryItems_(store, desktop),
      startupExtras_(store, desktop),
      details_(store, desktop),
      candidates_(store, desktop),
      startup_(store, desktop),
      memory_(store),
      memoryApps_(store, desktop),
      memoryParts_(store, desktop),
      question_(store),
      permissions_(store, desktop),
      report_(store),
      history_(store, desktop),
      restore_(store, desktop),
      decision_(store),
      kept_(store, desktop),
      rootNotice_(desktop.runsAsRoot()) {
    memoryItems_.setModule(CleanerModule::memoryOptimization);
    startupExtras_.setModule(CleanerModule::performance);
    details_.setInitiallyExpanded(true);
    details_.setWatched(false); // until its sheet opens: it has a row for every path
    noticeTime_.setSingleShot(true);
    noticeTime_.setInterval(noticeDuration);
    connect(&noticeTime_, &QTimer::timeout, this, &WindowModel::closeNotice);
    connectStore();
    connect(&languages, &LanguageManager::languageChanged, this, &WindowModel::retranslate);
    follow(module_);
}

void WindowModel::connectStore() {
    connect(&store_, &CleanerStore::activeModuleChanged, this, &WindowModel::followStore);
    connect(&store_, &CleanerStore::permissionHintsChanged, this, &WindowModel::limitationChanged);
    connect(&offer_, &CleanOffer::changed, &scan_, &ScanModel::changed);
    connect(&question_, &Question::switchAgreed, this, &WindowModel::switchStartupItem);
    connect(&store_, &CleanerStore::answered, this, &WindowModel::showNotice);
    connect(&store_, &CleanerStore::actionFailureChanged, this, [this] {
        // Login items say it beside their list.
        if (store_.actionFailure().empty()) {
            // It was read.
        } else if (module_ == CleanerModule::performance) {
            Q_EMIT announced(actionFailure(), true);
        } else {
            showNotice(actionFailure(), true);
        }
        Q_EMIT actionFailureChanged();
    });
    connect(&scan_, &ScanModel::announced, this, [this](const QString& text) { Q_EMIT announced(text, false); });
    for (const CleanupListModel* list : {&items_, &details_, static_cast<CleanupListModel*>(&largeFiles_)}) {
        connect(list, &CleanupListModel::keptAsked, this, &WindowModel::keptAsked);
    }
    connect(&restore_, &RestoreModel::succeeded, this, [this](const QString& text) { showNotice(text, false); });
    connect(&store_, &CleanerStore::isScanningChanged, this, [this] {
        noteScan();
        Q_EMIT busyChanged();
    });
    connect(&store_, &CleanerStore::isCleaningChanged, this, [this] {
        noteClean();
        Q_EMIT busyChanged();
    });
}

QString WindowModel::module() const {
    return toQt(rawValue(module_));
}

void WindowModel::setModule(const QString& module) {
    const auto wanted = cleanerModule(module.toStdString());
    if (!wanted || *wanted == module_) {
        return;
    }
    chosen_ = *wanted;
    store_.show(*wanted);
}

/// A clean or a switched start-up item ends with a scan of its module; the user may be on another page by then.
void WindowModel::followStore() {
    if (store_.activeModule() == chosen_) {
        follow(chosen_);
    } else {
        store_.keepShowing(chosen_);
    }
}

void WindowModel::follow(CleanerModule module) {
    const bool changed = module_ != module;
    module_ = module;
    items_.setModule(module);
    details_.setModule(module);
    // The page that is made now must not see rows of what was shown before.
    for (CleanupListModel* list : {&memoryItems_, &startupExtras_, static_cast<CleanupListModel*>(&largeFiles_)}) {
        list->rebuild();
    }
    scan_.setModule(module);
    offer_.setModule(module);
    if (changed) {
        Q_EMIT moduleChanged();
    }
    Q_EMIT textsChanged();
    Q_EMIT limitationChanged();
}

void WindowModel::retranslate() {
    store_.resetForLanguageChange();
    modules_.reload();
    segments_.reload();
    Q_EMIT largeFiles_.languageChanged();
    Q_EMIT offer_.changed();
    Q_EMIT memory_.changed();
    Q_EMIT report_.changed();
    history_.retranslate();
    Q_EMIT textsChanged();
    Q_EMIT limitationChanged();
}

QString WindowModel::moduleTitle() const {
    return toQt(title(module_));
}

QString WindowModel::moduleSubtitle() const {
    return toQt(subtitle(module_));
}

QString WindowModel::moduleSymbol() const {
    return vellmoor::moduleSymbol(module_);
}

QString WindowModel::volumeLabel() const {
    return localised(desktop_.volumeLabel());
}

bool WindowModel::canScan() const {
    return !store_.isCleaning();
}

void WindowModel::showNotice(const QString& text, bool isFailure) {
    closeNotice(); // what is the same again appears again
    notice_ = text;
    noticeIsFailure_ = isFailure;
    noticeTime_.start();
    Q_EMIT noticeChanged();
    Q_EMIT announced(text, isFailure);
}

void WindowModel::closeNotice() {
    notice_.clear();
    Q_EMIT noticeChanged();
}

QString WindowModel::actionFailure() const {
    return toQt(store_.actionFailure());
}

QString WindowModel::limitation() const {
    QStringList areas;
    for (const PermissionHint& hint : store_.permissionLimitations(module_)) {
        areas << toQt(hint.title);
    }
    return areas.isEmpty() ? QString()
                           : localised("开启完全磁盘访问后，可扫描 %@。", areas.join(localised("、")).toStdString());
}

void WindowModel::setSheetOpen(bool open) {
    if (sheetOpen_ != open) {
        sheetOpen_ = open;
        Q_EMIT sheetOpenChanged();
    }
}

void WindowModel::scanOrCancel() {
    if (store_.isScanning()) {
        store_.cancelScan();
    } else {
        refresh();
    }
}

void WindowModel::refresh() {
    if (canScan() && !store_.isScanning()) {
        store_.scan(module_, true);
    }
}

void WindowModel::cleanSelected() {
    if (offer_.canClean()) {
        report_.setModule(module_);
        store_.cleanSelected(module_);
    }
}

void WindowModel::closeReport() {
    store_.clearReport();
}

void WindowModel::closeActionFailure() {
    store_.clearActionFailure();
}

void WindowModel::putBackReported() {
    store_.putBack(report_.clean().toStdString());
}

void WindowModel::closeRestore() {
    store_.clearRestore();
}

void WindowModel::stopCleaning() {
    store_.stopCleaning();
}

bool WindowModel::mayClose() {
    if (!store_.isCleaning() || closesAfterClean_) {
        return true;
    }
    Q_EMIT closingAsked();
    return false;
}

void WindowModel::closeAfterClean(bool stops) {
    if (!store_.isCleaning()) {
        Q_EMIT closingAgreed();
        return;
    }
    closesAfterClean_ = true;
    if (stops) {
        store_.stopCleaning();
    }
}

void WindowModel::noteScan() {
    if (store_.isScanning()) {
        scanStart_ = std::chrono::steady_clock::now();
        return;
    }
    if (!isActive_ && std::chrono::steady_clock::now() - scanStart_ > longScan) {
        // The message of the end is set together with it, and told after it.
        QTimer::singleShot(0, this, [this] { Q_EMIT finishedAside(scan_.status()); });
    }
}

void WindowModel::noteClean() {
    announceAction();
    if (store_.isCleaning()) {
        return;
    }
    const bool wasSwitch = std::exchange(changingStartup_, std::nullopt).has_value();
    if (!isActive_ && !wasSwitch) {
        Q_EMIT finishedAside(toQt(store_.statusMessage()));
    }
    if (std::exchange(closesAfterClean_, false)) {
        Q_EMIT closingAgreed();
    }
}

/// The start of a clean, of a way back or of a switch, and its end, unless that is told as a failure or by a notice.
void WindowModel::announceAction() {
    const std::optional<RestoreReport>& restored = store_.latestRestore();
    if (!store_.actionFailure().empty() || (restored && restored->failedCount == 0)) {
        return;
    }
    const std::optional<CleanupReport>& report = store_.latestReport();
    const bool hasFailed = !store_.isCleaning() && (restored || (report && report->failedCount > 0));
    Q_EMIT announced(toQt(store_.statusMessage()), hasFailed);
}

void WindowModel::rescanReported() {
    const CleanerModule module = report_.module();
    store_.clearReport();
    store_.scan(module, true);
}

void WindowModel::setAllSelected(bool selected) {
    store_.setAllSelected(module_, selected);
}

int WindowModel::changingStartupRow() const {
    const auto& items = store_.startupItems();
    const auto found = std::ranges::find_if(items, [this](const StartupItem& item) {
        return changingStartup_ && item.plistURL == changingStartup_->plistURL;
    });
    return found == items.end() ? -1 : static_cast<int>(found - items.begin());
}

void WindowModel::switchStartupItem(const StartupItem& item) {
    if (!store_.isScanning() && !store_.isCleaning()) {
        changingStartup_ = item;
        store_.setStartupItem(item, !item.isEnabled);
    }
}

void WindowModel::refreshPermissions() {
    store_.refreshPermissionHints();
}

void WindowModel::closeRootNotice() {
    rootNotice_ = false;
    Q_EMIT rootNoticeChanged();
}

void WindowModel::activated() {
    store_.refreshPermissionHints();
    // Showing the module again would take away an open result sheet and a running scan's progress.
    if (!store_.latestReport() && !store_.isScanning() && !store_.isCleaning()) {
        store_.show(module_);
    }
}

void WindowModel::openHome() {
    desktop_.openHome();
}

void WindowModel::openTrash() {
    desktop_.openTrash();
}

void WindowModel::openSystemMonitor() {
    desktop_.openSystemMonitor();
}

void WindowModel::openLoginItemsSettings() {
    desktop_.openLoginItemsSettings();
}

void WindowModel::openPermissionSettings() {
    desktop_.openPermissionSettings();
}

} // namespace vellmoor
