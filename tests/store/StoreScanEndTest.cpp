// A scan that is cancelled, fails or outlives what asked for it: what comes late from it changes nothing.
#include "StoreScanFixture.h"
#include "texts/L.h"

#include <gmock/gmock.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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
