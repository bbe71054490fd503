// A clean from the window: what it takes, what may run beside it, its report and the scan that follows.
#include "StoreActionsFixture.h"
#include "texts/L.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

namespace vellmoor {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

CleanupReport reportOf(std::int64_t removed, std::int64_t failed, std::int64_t freed) {
    CleanupReport report;
    report.attemptedCount = removed + failed;
    report.removedCount = removed;
    report.failedCount = failed;
    report.freedBytes = freed;
    report.processedBytes = freed;
    return report;
}

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
    trash.targets.edit().pop_back();
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

} // namespace
} // namespace vellmoor
