#include "L.h"
#include "StoreFixture.h"

#include <QTimer>
#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

namespace vellmoor {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

StartupItem agent(const std::string& name) {
    StartupItem item;
    item.name = name;
    return item;
}

MemoryApp app(const std::string& name) {
    MemoryApp made;
    made.name = name;
    return made;
}

CleanupReport reportOf(std::int64_t removed, std::int64_t failed, std::int64_t freed) {
    CleanupReport report;
    report.attemptedCount = removed + failed;
    report.removedCount = removed;
    report.failedCount = failed;
    report.freedBytes = freed;
    report.processedBytes = freed;
    return report;
}

class StoreActions : public StoreFixture {
protected:
    void showTrash() { scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10, 20})})); }

    /// Starts a clean that stands at the gate that is answered.
    std::shared_ptr<Gate> startGatedClean(const CleanupReport& report = {}) {
        auto gate = std::make_shared<Gate>();
        service->onClean([gate, report](const std::vector<CleanupItem>&) {
            gate->pass();
            return report;
        });
        store->cleanSelected(CleanerModule::trash);
        gate->awaitVisitor();
        return gate;
    }

    std::shared_ptr<Gate> startGatedDisable(const StartupActionResult& result) {
        auto gate = std::make_shared<Gate>();
        service->onDisable([gate, result](const StartupItem&) {
            gate->pass();
            return result;
        });
        store->setStartupItem(agent("Updater"), false);
        gate->awaitVisitor();
        return gate;
    }

    void awaitEnd() {
        processUntil([this] { return !store->isCleaning() && !store->isScanning(); });
        awaitWorkers();
    }

    /// Every status from now on.
    std::shared_ptr<std::vector<std::string>> statusesFromNow() {
        auto seen = std::make_shared<std::vector<std::string>>();
        QObject::connect(store.get(), &CleanerStore::statusMessageChanged, store.get(),
                         [this, seen] { seen->push_back(store->statusMessage()); });
        return seen;
    }
};

TEST_F(StoreActions, CleaningNothingChangesNothing) {
    showTrash();
    store->setAllSelected(CleanerModule::trash, false);
    const auto statuses = statusesFromNow();
    store->cleanSelected(CleanerModule::trash);
    EXPECT_FALSE(store->isCleaning());
    EXPECT_THAT(*statuses, IsEmpty());
    awaitWorkers();
    EXPECT_THAT(service->cleans(), IsEmpty());
}

TEST_F(StoreActions, CleaningAModuleWithoutASelectionLeavesTheSelectionOfAnotherAlone) {
    showTrash();
    store->cleanSelected(CleanerModule::privacy);
    awaitWorkers();
    EXPECT_THAT(service->cleans(), IsEmpty());
}

TEST_F(StoreActions, CleaningSaysSoWhileItRuns) {
    showTrash();
    const auto gate = startGatedClean();
    EXPECT_TRUE(store->isCleaning());
    EXPECT_EQ(store->statusMessage(), "Cleaning selected items...");
    gate->open();
    awaitEnd();
}

TEST_F(StoreActions, CleaningHandsTheEngineTheSelectedRows) {
    scanned(CleanerModule::smartScan,
            snapshotOf({row(CleanerModule::trash, "Trash", {10, 20}), row(CleanerModule::trash, "Unticked", {5}, false),
                        row(CleanerModule::privacy, "Cookies", {7})}));
    store->setTargetSelected(0, 0, false);
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    ASSERT_EQ(service->cleans().size(), 1U);
    const std::vector<CleanupItem> cleaned = service->cleans().front();
    EXPECT_THAT(titles(cleaned), ElementsAre("Trash"));
    EXPECT_EQ(cleaned.front().selectedBytes(), 20);
}

TEST_F(StoreActions, ACleanTakesWhatItTookOutOfSmartScansResult) {
    const CleanupItem cookies = row(CleanerModule::privacy, "Cookies", {7});
    CleanupItem trash = row(CleanerModule::trash, "Trash", {10, 20});
    scanned(CleanerModule::smartScan, snapshotOf({trash, cookies}));
    store->show(CleanerModule::trash);
    trash.targets.pop_back();
    answer(snapshotOf({trash}));
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    store->show(CleanerModule::smartScan);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash", "Cookies"));
    EXPECT_EQ(store->cleanableBytes(CleanerModule::smartScan), 17);
    store->show(CleanerModule::trash);
    answer(snapshotOf({}));
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    store->show(CleanerModule::smartScan);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Cookies"));
}

TEST_F(StoreActions, SelectionEditsDuringACleanDoNotAffectIt) {
    showTrash();
    const auto gate = std::make_shared<Gate>();
    const auto cleaned = std::make_shared<std::int64_t>(0);
    service->onClean([gate, cleaned](const std::vector<CleanupItem>& items) {
        gate->pass();
        *cleaned = items.front().selectedBytes();
        return CleanupReport();
    });
    store->cleanSelected(CleanerModule::trash);
    gate->awaitVisitor();
    store->setTargetSelected(0, 1, false);
    gate->open();
    awaitEnd();
    EXPECT_EQ(*cleaned, 30);
}

TEST_F(StoreActions, ASecondCleanIsIgnoredWhileOneRuns) {
    showTrash();
    const auto gate = startGatedClean();
    store->cleanSelected(CleanerModule::trash);
    gate->open();
    awaitEnd();
    EXPECT_EQ(service->cleans().size(), 1U);
}

TEST_F(StoreActions, ALoginItemChangeIsIgnoredWhileACleanRuns) {
    showTrash();
    const auto gate = startGatedClean();
    store->setStartupItem(agent("Updater"), false);
    EXPECT_EQ(store->statusMessage(), "Cleaning selected items...");
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->disables(), IsEmpty());
}

TEST_F(StoreActions, ALoginItemChangeIsIgnoredWhileAScanRuns) {
    const auto gate = startGatedScan(CleanerModule::performance, {});
    store->setStartupItem(agent("Updater"), true);
    EXPECT_FALSE(store->isCleaning());
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->enables(), IsEmpty());
}

TEST_F(StoreActions, ACleanIsIgnoredWhileALoginItemChanges) {
    showTrash();
    const auto gate = startGatedDisable({true, "Disabled."});
    store->cleanSelected(CleanerModule::trash);
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->cleans(), IsEmpty());
}

TEST_F(StoreActions, TheReportStaysWhileTheModuleIsScannedAgain) {
    showTrash();
    const auto rescan = std::make_shared<Gate>();
    answerBehind(rescan, {});
    const auto clean = startGatedClean(reportOf(2, 0, 30'000));
    clean->open();
    processUntil([this] { return store->isScanning(); });
    rescan->awaitVisitor();
    EXPECT_FALSE(store->isCleaning());
    ASSERT_TRUE(store->latestReport());
    EXPECT_EQ(store->latestReport()->removedCount, 2);
    rescan->open();
    awaitEnd();
    EXPECT_TRUE(store->latestReport());
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::trash, CleanerModule::trash));
}

TEST_F(StoreActions, TheStatusReadsTheReportThenTheRescan) {
    showTrash();
    answer({});
    const auto statuses = statusesFromNow();
    service->onClean([](const std::vector<CleanupItem>&) { return reportOf(1, 1, 30'000); });
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    EXPECT_THAT(*statuses,
                ElementsAre("Cleaning selected items...", "Processed 1 items, 1 failed, estimated 30 KB freed.",
                            "Scanning Trash...", "No items found"));
}

TEST_F(StoreActions, TheRescanAfterACleanShowsWhatIsLeft) {
    showTrash();
    answer(snapshotOf({row(CleanerModule::trash, "Left over", {5})}));
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Left over"));
}

TEST_F(StoreActions, TheRescanIsDroppedWhenAScanRunsAlready) {
    showTrash();
    const auto clean = startGatedClean(reportOf(1, 0, 30));
    const auto scan = startGatedScan(CleanerModule::privacy, {});
    clean->open();
    awaitWorkers(1);
    EXPECT_TRUE(store->latestReport());
    EXPECT_EQ(store->activeModule(), CleanerModule::privacy);
    scan->open();
    awaitEnd();
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::trash, CleanerModule::privacy));
}

TEST_F(StoreActions, ACleanMayStartWhileAScanRuns) {
    showTrash();
    const auto scan = startGatedScan(CleanerModule::trash, {});
    const auto clean = startGatedClean(reportOf(1, 0, 30));
    EXPECT_TRUE(store->isScanning());
    EXPECT_TRUE(store->isCleaning());
    clean->open();
    awaitWorkers(1);
    EXPECT_TRUE(store->latestReport());
    EXPECT_TRUE(store->isScanning());
    scan->open();
    awaitEnd();
}

TEST_F(StoreActions, ACleanGoesOnThroughAChangeOfLanguageAndReportsInTheNewOne) {
    showTrash();
    const auto statuses = statusesFromNow();
    const auto clean = startGatedClean(reportOf(2, 0, 30'000));
    L::setLanguage(AppLanguage::chinese);
    store->resetForLanguageChange();
    EXPECT_TRUE(store->isCleaning());
    clean->open();
    awaitEnd();
    EXPECT_TRUE(store->latestReport());
    EXPECT_THAT(*statuses, Contains("已处理 2 项，预计释放 30 KB。"));
}

TEST_F(StoreActions, AClosedReportIsGone) {
    showTrash();
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    ASSERT_TRUE(store->latestReport());
    store->clearReport();
    EXPECT_FALSE(store->latestReport());
}

TEST_F(StoreActions, ACleanThatRunsOutOfMemoryEndsWithItsCauseAndWithoutAReport) {
    showTrash();
    service->onClean([](const std::vector<CleanupItem>&) -> CleanupReport { throw std::runtime_error("no memory"); });
    const auto statuses = statusesFromNow();
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    EXPECT_FALSE(store->latestReport());
    EXPECT_THAT(*statuses, Contains("no memory"));
}

TEST_F(StoreActions, AReportAfterTheStoresDeathIsDropped) {
    showTrash();
    const auto gate = startGatedClean();
    EXPECT_FALSE(store->shutDown(std::chrono::milliseconds(0)));
    store.reset();
    gate->open();
    awaitWorkers();
    EXPECT_EQ(service.use_count(), 1);
}

TEST_F(StoreActions, DisablingSaysSoAndAsksTheEngine) {
    const auto gate = startGatedDisable({true, "Disabled Updater from launching at login."});
    EXPECT_TRUE(store->isCleaning());
    EXPECT_EQ(store->statusMessage(), "Disabling startup item for Updater...");
    gate->open();
    awaitEnd();
    ASSERT_EQ(service->disables().size(), 1U);
    EXPECT_EQ(service->disables().front().name, "Updater");
    EXPECT_THAT(service->enables(), IsEmpty());
}

TEST_F(StoreActions, RestoringSaysSoAndAsksTheEngine) {
    const auto statuses = statusesFromNow();
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    EXPECT_EQ(statuses->front(), "Restoring startup item for Updater...");
    ASSERT_EQ(service->enables().size(), 1U);
    EXPECT_EQ(service->enables().front().name, "Updater");
    EXPECT_THAT(service->disables(), IsEmpty());
}

TEST_F(StoreActions, ALoginItemsResultIsShownWhetherItSucceededOrNot) {
    for (const bool succeeded : {true, false}) {
        const auto statuses = statusesFromNow();
        const auto gate = startGatedDisable({succeeded, "What the engine says."});
        gate->open();
        awaitEnd();
        EXPECT_THAT(*statuses, Contains("What the engine says."));
    }
}

TEST_F(StoreActions, AFailedLoginItemChangeIsSaidAfterTheRescanToo) {
    startGatedDisable({false, "Failed to disable Updater: Permission denied"})->open();
    awaitEnd();
    EXPECT_FALSE(store->isScanning());
    EXPECT_EQ(store->actionFailure(), "Failed to disable Updater: Permission denied");
}

TEST_F(StoreActions, ALoginItemChangeThatRunsOutOfMemoryIsAFailure) {
    service->onEnable([](const StartupItem&) -> StartupActionResult { throw std::runtime_error("out of memory"); });
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    EXPECT_EQ(store->actionFailure(), "out of memory");
}

TEST_F(StoreActions, AFailureIsGoneWhenTheUserGoesOn) {
    const auto fail = [&] {
        startGatedDisable({false, "No."})->open();
        awaitEnd();
        ASSERT_EQ(store->actionFailure(), "No.");
    };
    fail();
    startGatedDisable({true, "Done."})->open();
    awaitEnd();
    EXPECT_EQ(store->actionFailure(), "");
    fail();
    store->show(CleanerModule::trash);
    EXPECT_EQ(store->actionFailure(), "");
    fail();
    store->scan(CleanerModule::performance, true);
    EXPECT_EQ(store->actionFailure(), "");
    awaitEnd();
    fail();
    store->resetForLanguageChange();
    EXPECT_EQ(store->actionFailure(), "");
}

TEST_F(StoreActions, ALoginItemChangeScansAndShowsPerformanceWhateverWasActive) {
    showTrash();
    answer(snapshotOf({row(CleanerModule::performance, "Agents", {1})}));
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    EXPECT_EQ(service->scans().back(), CleanerModule::performance);
    EXPECT_EQ(store->activeModule(), CleanerModule::performance);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Agents"));
}

TEST_F(StoreActions, ALoginItemChangeKeepsTheRowsOfTheModuleThatWasShown) {
    showTrash();
    store->setItemSelected(0, false);
    store->setStartupItem(agent("Updater"), true);
    awaitEnd();
    store->show(CleanerModule::trash);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
    EXPECT_EQ(store->selectedBytes(CleanerModule::trash), 0);
}

TEST_F(StoreActions, ACleanIsToldWhenTheSessionEnds) {
    showTrash();
    service->onClean([this](const std::vector<CleanupItem>&) {
        while (!service->isCleanStopped()) {
            std::this_thread::yield();
        }
        return reportOf(1, 0, 10);
    });
    store->cleanSelected(CleanerModule::trash);
    processUntil([this] { return !service->cleans().empty(); });
    EXPECT_FALSE(service->isCleanStopped());
    store->stopCleaning();
    awaitEnd();
    EXPECT_EQ(store->latestReport()->removedCount, 1);
}

TEST_F(StoreActions, AStopMeantForOneCleanDoesNotStopTheNext) {
    showTrash();
    store->stopCleaning(); // nothing runs
    bool isStopped = true;
    service->onClean([&](const std::vector<CleanupItem>&) {
        isStopped = service->isCleanStopped();
        return CleanupReport();
    });
    store->cleanSelected(CleanerModule::trash);
    awaitEnd();
    EXPECT_FALSE(isStopped);
}

class StoreQuit : public StoreActions {
protected:
    std::string statusAfter(QuitOutcome outcome) {
        service->onQuit([outcome](const MemoryApp&) { return outcome; });
        const auto statuses = statusesFromNow();
        store->quitMemoryApp(app("Editor"));
        processUntil([&] { return !statuses->empty(); });
        return statuses->front();
    }

    /// Waits until the moment after a quit is over: a timer of the same length that was started later fired.
    void awaitRefresh() {
        bool over = false;
        QTimer::singleShot(0, store.get(), [&over] { over = true; });
        processUntil([&over] { return over; });
    }
};

TEST_F(StoreQuit, AsksTheApplication) {
    statusAfter(QuitOutcome::Requested);
    ASSERT_EQ(service->quits().size(), 1U);
    EXPECT_EQ(service->quits().front().name, "Editor");
}

TEST_F(StoreQuit, SaysThatItWasRequested) {
    EXPECT_EQ(statusAfter(QuitOutcome::Requested), "Requested to quit Editor. Memory status will refresh shortly.");
}

TEST_F(StoreQuit, SaysThatThereWasNoResponse) {
    EXPECT_EQ(statusAfter(QuitOutcome::NoResponse),
              "Editor did not respond to the quit request. You can quit it in Activity Monitor.");
}

TEST_F(StoreQuit, SaysOnLinuxThatTheApplicationMayWait) {
    L::setTextSet(TextSet::Linux);
    EXPECT_EQ(statusAfter(QuitOutcome::NoResponse),
              "Editor did not respond to the quit request. It may be waiting for you.");
}

TEST_F(StoreQuit, SaysThatTheApplicationDoesNotRun) {
    EXPECT_EQ(statusAfter(QuitOutcome::NotRunning), "Editor is not currently running.");
}

TEST_F(StoreQuit, OffersToEndWhatCannotBeAskedAndDoesNothingOfItself) {
    service->onQuit([](const MemoryApp&) { return QuitOutcome::CannotAsk; });
    std::vector<MemoryApp> offered;
    QObject::connect(store.get(), &CleanerStore::endOffered, [&](const MemoryApp& app) { offered.push_back(app); });
    MemoryApp editor = app("Editor");
    editor.id = "/usr/share/applications/editor.desktop";
    editor.pids = {10, 11};
    editor.starts = {500, 501};
    store->quitMemoryApp(editor);
    processUntil([&] { return !offered.empty(); });
    ASSERT_EQ(offered.size(), 1U);
    EXPECT_EQ(offered.front().id, editor.id);
    EXPECT_EQ(offered.front().pids, editor.pids);
    EXPECT_EQ(offered.front().starts, editor.starts);
    EXPECT_THAT(service->ends(), IsEmpty());
}

TEST_F(StoreQuit, EndsTheApplicationThatItIsTold) {
    service->onEnd([](const MemoryApp&) { return QuitOutcome::Requested; });
    const auto statuses = statusesFromNow();
    store->endMemoryApp(app("Editor"));
    processUntil([&] { return !statuses->empty(); });
    EXPECT_EQ(statuses->front(), "Requested to quit Editor. Memory status will refresh shortly.");
    ASSERT_EQ(service->ends().size(), 1U);
    EXPECT_EQ(service->ends().front().name, "Editor");
    EXPECT_THAT(service->quits(), IsEmpty());
}

TEST_F(StoreQuit, ReadsTheMemoryStateAgainOnTheMemoryPage) {
    store->show(CleanerModule::memoryOptimization);
    statusAfter(QuitOutcome::Requested);
    processUntil([this] { return store->isScanning(); });
    awaitEnd();
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::memoryOptimization));
}

TEST_F(StoreQuit, ReadsNothingAgainOnAnotherPage) {
    store->show(CleanerModule::trash);
    statusAfter(QuitOutcome::Requested);
    awaitRefresh();
    EXPECT_FALSE(store->isScanning());
    EXPECT_THAT(service->scans(), IsEmpty());
}

TEST_F(StoreQuit, ReadsTheMemoryStateOnceForTwoQuitsInARow) {
    store->show(CleanerModule::memoryOptimization);
    store->quitMemoryApp(app("Editor"));
    store->quitMemoryApp(app("Player"));
    awaitPosts();
    processUntil([this] { return !service->scans().empty(); });
    awaitEnd();
    awaitRefresh();
    EXPECT_EQ(service->scans().size(), 1U);
}

TEST_F(StoreQuit, AnOutcomeAfterTheStoresDeathIsDropped) {
    const auto gate = std::make_shared<Gate>();
    service->onQuit([gate](const MemoryApp&) {
        gate->pass();
        return QuitOutcome::Requested;
    });
    store->quitMemoryApp(app("Editor"));
    gate->awaitVisitor();
    EXPECT_FALSE(store->shutDown(std::chrono::milliseconds(0)));
    store.reset();
    gate->open();
    awaitWorkers();
    EXPECT_EQ(service.use_count(), 1);
}

} // namespace
} // namespace vellmoor
