// A scan that goes to its end: how it starts, what it tells on its way, and where its result is shown.
#include "StoreScanFixture.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

TEST_F(StoreScan, AnnouncesItsEndWhenAllFieldsAreSet) {
    answer(snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    std::vector<std::size_t> rowsSeen;
    store->scan(CleanerModule::trash, true);
    QObject::connect(store.get(), &CleanerStore::isScanningChanged, store.get(),
                     [&] { rowsSeen.push_back(store->cleanupItems().size()); });
    processUntil([this] { return !store->isScanning(); });
    EXPECT_THAT(rowsSeen, ElementsAre(1U));
}

TEST_F(StoreScan, ClearsTheReportOnlyWhenAsked) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    store->cleanSelected(CleanerModule::trash);
    processUntil([this] { return store->latestReport() && !store->isScanning(); });
    scanned(CleanerModule::trash, {});
    EXPECT_FALSE(store->latestReport());
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

} // namespace
} // namespace vellmoor
