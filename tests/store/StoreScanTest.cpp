#include "L.h"
#include "StoreFixture.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StoreScan : public StoreFixture {
protected:
    /// Starts a scan that reports `fraction`, and then stands at the gate that is answered.
    std::shared_ptr<Gate> scanReporting(double fraction) {
        const auto gate = std::make_shared<Gate>();
        service->onScan([gate, fraction](CleanerModule, const ProgressCallback& progress, const CancelToken&) {
            progress({"Finding large files...", fraction});
            gate->pass();
            return ScanSnapshot();
        });
        store->scan(CleanerModule::largeFiles, true);
        gate->awaitVisitor();
        processQueued();
        return gate;
    }

    void finish(const std::shared_ptr<Gate>& gate) {
        gate->open();
        processUntil([this] { return !store->isScanning(); });
    }
};

TEST_F(StoreScan, StartsWithTheModuleActiveAnEmptyBarAndPreparingTexts) {
    const auto gate = startGatedScan(CleanerModule::largeFiles, {});
    EXPECT_TRUE(store->isScanning());
    EXPECT_EQ(store->activeModule(), CleanerModule::largeFiles);
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "Preparing scan...");
    EXPECT_EQ(store->statusMessage(), "Scanning Large Files...");
    finish(gate);
}

TEST_F(StoreScan, AsksTheEngineForTheModule) {
    scanned(CleanerModule::trash, {});
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::trash));
}

TEST_F(StoreScan, PressedTwiceStartsOneScan) {
    const auto gate = startGatedScan(CleanerModule::largeFiles, {});
    store->scan(CleanerModule::trash, true);
    EXPECT_EQ(store->activeModule(), CleanerModule::largeFiles);
    finish(gate);
    awaitWorkers();
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::largeFiles));
}

TEST_F(StoreScan, ShowsItsStageAsStageAndStatus) {
    const auto gate = scanReporting(0.5);
    EXPECT_EQ(store->scanStage(), "Finding large files...");
    EXPECT_EQ(store->statusMessage(), "Finding large files...");
    EXPECT_EQ(store->scanProgress(), 0.5);
    finish(gate);
}

TEST_F(StoreScan, ShowsAFractionOfZeroAsThreePercent) {
    const auto gate = scanReporting(0);
    EXPECT_EQ(store->scanProgress(), 0.03);
    finish(gate);
}

TEST_F(StoreScan, ShowsAFractionOfOneAsNinetySixPercent) {
    const auto gate = scanReporting(1);
    EXPECT_EQ(store->scanProgress(), 0.96);
    finish(gate);
}

TEST_F(StoreScan, ShowsOneOnCompletionOnly) {
    const auto gate = scanReporting(1);
    finish(gate);
    EXPECT_EQ(store->scanProgress(), 1);
    EXPECT_EQ(store->scanStage(), "Scan complete");
}

TEST_F(StoreScan, NamesTheCleanableSpaceWhenItEnds) {
    scanned(CleanerModule::systemJunk, snapshotOf({row(CleanerModule::systemJunk, "Caches", {1'000'000, 500'000})}));
    EXPECT_EQ(store->statusMessage(), "Scan complete, found 1.5 MB of cleanable space");
    EXPECT_EQ(store->lastScanLabel(), "just now");
}

TEST_F(StoreScan, SaysNoItemsFoundForAnEmptyResult) {
    scanned(CleanerModule::trash, {});
    EXPECT_EQ(store->statusMessage(), "No items found");
}

TEST_F(StoreScan, AddsThatPermissionsAreMissingWhenOneAffectsTheModule) {
    ScanSnapshot snapshot;
    snapshot.permissionHints = {hint("Mail Data", false, {CleanerModule::privacy})};
    scanned(CleanerModule::privacy, snapshot);
    EXPECT_EQ(store->statusMessage(), "No items found. Some permissions are not enabled, results may be incomplete.");
}

TEST_F(StoreScan, AddsNothingWhenTheMissingPermissionAffectsAnotherModule) {
    ScanSnapshot snapshot;
    snapshot.permissionHints = {hint("Mail Data", false, {CleanerModule::privacy})};
    scanned(CleanerModule::trash, snapshot);
    EXPECT_EQ(store->statusMessage(), "No items found");
}

TEST_F(StoreScan, PublishesEveryFieldOfTheSnapshot) {
    ScanSnapshot snapshot = snapshotOf({row(CleanerModule::performance, "Agents", {10})});
    snapshot.fileCandidates.resize(1);
    snapshot.storageSegments.resize(3);
    snapshot.diskSummary = "1 GB / 2 GB used";
    snapshot.startupCount = 4;
    snapshot.backgroundCount = 5;
    snapshot.privacyCount = 6;
    snapshot.memorySnapshot.totalBytes = 7;
    snapshot.memoryApps.resize(2);
    snapshot.startupItems.resize(8);
    snapshot.permissionHints = {hint("Mail Data", true, {})};
    scanned(CleanerModule::performance, snapshot);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Agents"));
    EXPECT_EQ(store->fileCandidates().size(), 1U);
    EXPECT_EQ(store->storageSegments().size(), 3U);
    EXPECT_EQ(store->diskSummary(), "1 GB / 2 GB used");
    EXPECT_EQ(store->startupCount(), 4);
    EXPECT_EQ(store->backgroundCount(), 5);
    EXPECT_EQ(store->privacyCount(), 6);
    EXPECT_EQ(store->memorySnapshot().totalBytes, 7);
    EXPECT_EQ(store->memoryApps().size(), 2U);
    EXPECT_EQ(store->startupItems().size(), 8U);
    EXPECT_EQ(store->permissionHints().size(), 1U);
}

TEST_F(StoreScan, CancelledSaysSoAndEmptiesTheBarAtOnce) {
    const auto gate = scanReporting(0.5);
    store->cancelScan();
    EXPECT_FALSE(store->isScanning());
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "");
    EXPECT_EQ(store->statusMessage(), "Scan cancelled.");
    gate->open();
    awaitWorkers();
}

TEST_F(StoreScan, CancelSetsTheTokenOfTheRunningScan) {
    const auto gate = std::make_shared<Gate>();
    const auto seen = std::make_shared<std::atomic<bool>>(false);
    service->onScan([gate, seen](CleanerModule, const ProgressCallback&, const CancelToken& token) -> ScanSnapshot {
        gate->pass();
        *seen = token.isCancelled();
        throw ScanCancelled();
    });
    store->scan(CleanerModule::trash, true);
    gate->awaitVisitor();
    store->cancelScan();
    gate->open();
    awaitWorkers();
    EXPECT_TRUE(*seen);
}

TEST_F(StoreScan, ALateResultOfACancelledScanChangesNothing) {
    const auto gate = startGatedScan(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    store->cancelScan();
    gate->open();
    awaitWorkers();
    EXPECT_EQ(store->statusMessage(), "Scan cancelled.");
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_FALSE(store->hasResult(CleanerModule::trash));
}

TEST_F(StoreScan, ALateCancellationDoesNotEndTheNextScan) {
    const auto first = std::make_shared<Gate>();
    service->onScan([first](CleanerModule, const ProgressCallback&, const CancelToken&) -> ScanSnapshot {
        first->pass();
        throw ScanCancelled();
    });
    store->scan(CleanerModule::trash, true);
    first->awaitVisitor();
    store->cancelScan();
    const auto second = startGatedScan(CleanerModule::trash, {});
    first->open();
    awaitWorkers(1);
    EXPECT_TRUE(store->isScanning());
    EXPECT_EQ(store->statusMessage(), "Scanning Trash...");
    finish(second);
}

TEST_F(StoreScan, ALateFailureOfAnOldScanChangesNothing) {
    const auto gate = std::make_shared<Gate>();
    service->onScan([gate](CleanerModule, const ProgressCallback&, const CancelToken&) -> ScanSnapshot {
        gate->pass();
        throw std::runtime_error("disk on fire");
    });
    store->scan(CleanerModule::trash, true);
    gate->awaitVisitor();
    store->cancelScan();
    gate->open();
    awaitWorkers();
    EXPECT_EQ(store->statusMessage(), "Scan cancelled.");
}

TEST_F(StoreScan, ALateResultDoesNotMixIntoTheNextScan) {
    const auto first = startGatedScan(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Old", {10})}));
    store->cancelScan();
    const auto second = startGatedScan(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "New", {20})}));
    first->open();
    awaitWorkers(1);
    EXPECT_TRUE(store->isScanning());
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    finish(second);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("New"));
}

TEST_F(StoreScan, ProgressOfAnOldScanIsIgnoredDuringTheNext) {
    const auto first = std::make_shared<Gate>();
    service->onScan([first](CleanerModule, const ProgressCallback& progress, const CancelToken&) {
        first->pass();
        progress({"Old stage", 0.7});
        return ScanSnapshot();
    });
    store->scan(CleanerModule::trash, true);
    first->awaitVisitor();
    store->cancelScan();
    const auto second = startGatedScan(CleanerModule::largeFiles, {});
    first->open();
    awaitWorkers(1);
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "Preparing scan...");
    finish(second);
}

TEST_F(StoreScan, ProgressAfterCompletionIsIgnored) {
    const auto kept = std::make_shared<ProgressCallback>();
    service->onScan([kept](CleanerModule, const ProgressCallback& progress, const CancelToken&) {
        *kept = progress;
        return ScanSnapshot();
    });
    store->scan(CleanerModule::trash, true);
    processUntil([this] { return !store->isScanning(); });
    (*kept)({"Late stage", 0.5});
    processQueued();
    EXPECT_EQ(store->scanProgress(), 1);
    EXPECT_EQ(store->scanStage(), "Scan complete");
    EXPECT_EQ(store->statusMessage(), "No items found");
}

TEST_F(StoreScan, FailureSaysItsCauseAndEmptiesTheBar) {
    service->onScan([](CleanerModule, const ProgressCallback& progress, const CancelToken&) -> ScanSnapshot {
        progress({"Stage", 0.5});
        throw std::runtime_error("disk on fire");
    });
    store->scan(CleanerModule::trash, true);
    processUntil([this] { return !store->isScanning(); });
    EXPECT_EQ(store->statusMessage(), "Scan failed: disk on fire");
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "");
    EXPECT_FALSE(store->hasResult(CleanerModule::trash));
}

TEST_F(StoreScan, AThrownThingThatIsNoErrorFailsTheScanToo) {
    service->onScan([](CleanerModule, const ProgressCallback&, const CancelToken&) -> ScanSnapshot { throw 7; });
    store->scan(CleanerModule::trash, true);
    processUntil([this] { return !store->isScanning(); });
    EXPECT_EQ(store->statusMessage(), "Scan failed: Unknown");
}

TEST_F(StoreScan, FailureKeepsTheResultOfTheScanBefore) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    service->onScan([](CleanerModule, const ProgressCallback&, const CancelToken&) -> ScanSnapshot {
        throw std::runtime_error("disk on fire");
    });
    store->scan(CleanerModule::trash, true);
    processUntil([this] { return !store->isScanning(); });
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
    EXPECT_TRUE(store->hasResult(CleanerModule::trash));
}

TEST_F(StoreScan, ACancellationThatTheEngineRaisesByItselfReadsCancelled) {
    service->onScan(
        [](CleanerModule, const ProgressCallback&, const CancelToken&) -> ScanSnapshot { throw ScanCancelled(); });
    store->scan(CleanerModule::trash, true);
    processUntil([this] { return !store->isScanning(); });
    EXPECT_EQ(store->statusMessage(), "Scan cancelled.");
}

TEST_F(StoreScan, CanBeStartedAgainAfterEachKindOfEnd) {
    scanned(CleanerModule::trash, {});
    const auto gate = startGatedScan(CleanerModule::trash, {});
    store->cancelScan();
    gate->open();
    awaitWorkers();
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
}

TEST_F(StoreScan, CancelWithoutAScanChangesNothing) {
    const std::string status = store->statusMessage();
    store->cancelScan();
    EXPECT_EQ(store->statusMessage(), status);
}

TEST_F(StoreScan, OfAModuleThatWasLeftIsCachedAndDoesNotTouchTheShownPage) {
    const auto gate =
        startGatedScan(CleanerModule::largeFiles, snapshotOf({row(CleanerModule::largeFiles, "Movie", {10})}));
    store->show(CleanerModule::trash);
    gate->open();
    processUntil([this] { return !store->isScanning(); });
    EXPECT_EQ(store->activeModule(), CleanerModule::trash);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_EQ(store->statusMessage(), "Not scanned yet. Click to scan this module.");
    store->show(CleanerModule::largeFiles);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Movie"));
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Single scan. Last scan: just now.");
}

TEST_F(StoreScan, OfEverythingFillsTheModuleThatIsActiveAtItsEnd) {
    const auto gate = startGatedScan(
        CleanerModule::smartScan,
        snapshotOf({row(CleanerModule::trash, "Trash", {2'000}), row(CleanerModule::privacy, "Cookies", {5'000})}));
    store->show(CleanerModule::trash);
    gate->open();
    processUntil([this] { return !store->isScanning(); });
    EXPECT_EQ(store->activeModule(), CleanerModule::trash);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
    EXPECT_EQ(store->statusMessage(), "Scan complete, found 2 KB of cleanable space");
}

TEST_F(StoreScan, GoesOnReportingAfterASwitchOfModules) {
    const auto gate = startGatedScan(CleanerModule::largeFiles, {});
    store->show(CleanerModule::trash);
    EXPECT_TRUE(store->isScanning());
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "");
    finish(gate);
    EXPECT_EQ(store->scanProgress(), 1);
}

TEST_F(StoreScan, ANewLanguageStopsItAndItsLateResultChangesNothing) {
    const auto gate = startGatedScan(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    L::setLanguage(AppLanguage::chinese);
    store->resetForLanguageChange();
    EXPECT_FALSE(store->isScanning());
    gate->open();
    awaitWorkers();
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_EQ(store->lastScanLabel(), "未扫描");
    EXPECT_EQ(store->statusMessage(), "尚未扫描，点击扫描此模块。");
    EXPECT_FALSE(store->hasResult(CleanerModule::trash));
}

TEST_F(StoreScan, ClearsTheReportOnlyWhenAsked) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    store->cleanSelected(CleanerModule::trash);
    processUntil([this] { return store->latestReport() && !store->isScanning(); });
    scanned(CleanerModule::trash, {});
    EXPECT_FALSE(store->latestReport());
}

TEST_F(StoreScan, OfAModuleThatWasNotShownNeverPutsTheShownRowsUnderItsName) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    const auto gate = startGatedScan(CleanerModule::performance, {});
    store->cancelScan();
    gate->open();
    awaitWorkers();
    store->show(CleanerModule::privacy);
    EXPECT_FALSE(store->hasResult(CleanerModule::performance));
    store->show(CleanerModule::trash);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
}

TEST_F(StoreScan, OfAModuleThatWasNotShownLeavesItsEarlierResultAloneWhenItIsCancelled) {
    scanned(CleanerModule::performance, snapshotOf({row(CleanerModule::performance, "Agents", {5})}));
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    const auto gate = startGatedScan(CleanerModule::performance, {});
    store->cancelScan();
    gate->open();
    awaitWorkers();
    store->show(CleanerModule::performance);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Agents"));
}

TEST_F(StoreScan, AnnouncesItsEndWhenAllFieldsAreSet) {
    answer(snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    std::vector<std::size_t> rowsSeen;
    store->scan(CleanerModule::trash, true);
    QObject::connect(store.get(), &CleanerStore::isScanningChanged, store.get(),
                     [&] { rowsSeen.push_back(store->cleanupItems().size()); });
    processUntil([this] { return !store->isScanning(); });
    EXPECT_THAT(rowsSeen, ElementsAre(1U));
}

TEST_F(StoreScan, AResultAfterTheStoresDeathIsDropped) {
    const auto gate = startGatedScan(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    EXPECT_FALSE(store->shutDown(std::chrono::milliseconds(0)));
    store.reset();
    gate->open();
    awaitWorkers();
    EXPECT_EQ(service.use_count(), 1);
}

TEST_F(StoreScan, AResultThatWaitsWhenTheStoreDiesIsDropped) {
    answer(snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    store->scan(CleanerModule::trash, true);
    awaitPosts();
    store.reset();
    processQueued();
    EXPECT_EQ(service.use_count(), 1);
}

TEST_F(StoreScan, TheStoresDeathCancelsTheScanAndWaitsForItsEnd) {
    const auto gate = std::make_shared<Gate>();
    service->onScan([gate](CleanerModule, const ProgressCallback&, const CancelToken& token) -> ScanSnapshot {
        gate->open();
        while (!token.isCancelled()) {
            std::this_thread::yield();
        }
        throw ScanCancelled();
    });
    store->scan(CleanerModule::trash, true);
    gate->pass();
    EXPECT_TRUE(store->shutDown(std::chrono::seconds(20)));
    EXPECT_EQ(service.use_count(), 2);
}

} // namespace
} // namespace vellmoor
