#include "StoreFixture.h"
#include "texts/L.h"

#include <gmock/gmock.h>

#include <thread>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class StoreModules : public StoreFixture {
protected:
    void passTime(std::chrono::seconds time) { now += time; }

    /// The label of a Trash scan when it is shown `age` after it ended.
    std::string labelAfter(std::chrono::seconds age) {
        scanned(CleanerModule::trash, {});
        passTime(age);
        store->show(CleanerModule::trash);
        return store->lastScanLabel();
    }
};

CleanupItem largeFile(const std::string& name, std::int64_t bytes) {
    CleanupItem item = row(CleanerModule::largeFiles, name, {bytes}, false);
    item.targets.edit().front().name = name;
    item.targets.edit().front().location = "~/Downloads";
    item.targets.edit().front().modified = "2 days ago";
    item.targets.edit().front().symbol = "film";
    return item;
}

/// One row of each of three modules, and facts that all modules share.
ScanSnapshot everything() {
    ScanSnapshot snapshot = snapshotOf({row(CleanerModule::trash, "Trash A", {10}), largeFile("Small.mov", 300),
                                        row(CleanerModule::systemJunk, "Caches", {20}), largeFile("Big.mov", 4'000'000),
                                        row(CleanerModule::trash, "Trash B", {30})});
    snapshot.fileCandidates.resize(5);
    snapshot.storageSegments.resize(3);
    snapshot.diskSummary = "1 GB / 2 GB used";
    snapshot.startupCount = 1;
    snapshot.backgroundCount = 2;
    snapshot.privacyCount = 3;
    snapshot.memorySnapshot.totalBytes = 4;
    snapshot.memoryApps.resize(1);
    snapshot.startupItems.resize(2);
    snapshot.permissionHints = {hint("Mail Data", true, {})};
    return snapshot;
}

TEST_F(StoreModules, StartUnscannedOnSmartScan) {
    EXPECT_EQ(store->activeModule(), CleanerModule::smartScan);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_THAT(store->fileCandidates(), IsEmpty());
    EXPECT_THAT(store->storageSegments(), IsEmpty());
    EXPECT_EQ(store->diskSummary(), "Click Scan to read disk capacity");
    EXPECT_EQ(store->startupCount(), 0);
    EXPECT_EQ(store->backgroundCount(), 0);
    EXPECT_EQ(store->privacyCount(), 0);
    EXPECT_EQ(store->memorySnapshot(), MemorySnapshot());
    EXPECT_THAT(store->memoryApps(), IsEmpty());
    EXPECT_THAT(store->startupItems(), IsEmpty());
    EXPECT_THAT(store->permissionHints(), IsEmpty());
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "");
    EXPECT_FALSE(store->isScanning());
    EXPECT_FALSE(store->isCleaning());
    EXPECT_EQ(store->statusMessage(),
              "Will check system junk, large files, trash, app leftovers, performance items and memory status.");
    EXPECT_EQ(store->lastScanLabel(), "Not scanned");
    EXPECT_FALSE(store->latestReport());
    EXPECT_FALSE(store->hasResult(CleanerModule::smartScan));
}

TEST_F(StoreModules, StartInTheLanguageOfTheMoment) {
    L::setLanguage(AppLanguage::chinese);
    const CleanerStore chinese(service, [this] { return now; });
    EXPECT_EQ(chinese.lastScanLabel(), "未扫描");
    EXPECT_EQ(chinese.diskSummary(), "点击扫描读取磁盘容量");
}

TEST_F(StoreModules, ShowAnUnscannedModuleAsNotScanned) {
    scanned(CleanerModule::trash, everything());
    service->setHints({hint("Home Directory", true, {})});
    store->show(CleanerModule::privacy);
    EXPECT_EQ(store->activeModule(), CleanerModule::privacy);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_THAT(store->fileCandidates(), IsEmpty());
    EXPECT_THAT(store->storageSegments(), IsEmpty());
    EXPECT_EQ(store->diskSummary(), "Click Scan to read disk capacity");
    EXPECT_EQ(store->startupCount() + store->backgroundCount() + store->privacyCount(), 0);
    EXPECT_EQ(store->memorySnapshot(), MemorySnapshot());
    EXPECT_THAT(store->memoryApps(), IsEmpty());
    EXPECT_THAT(store->startupItems(), IsEmpty());
    ASSERT_EQ(store->permissionHints().size(), 1U);
    EXPECT_EQ(store->permissionHints().front().title, "Home Directory");
    EXPECT_EQ(store->statusMessage(), "Not scanned yet. Click to scan this module.");
    EXPECT_EQ(store->lastScanLabel(), "Not scanned");
}

TEST_F(StoreModules, ShowAnUnscannedSmartScanWithItsOwnText) {
    store->show(CleanerModule::trash);
    store->show(CleanerModule::smartScan);
    EXPECT_EQ(store->statusMessage(),
              "Will check system junk, large files, trash, app leftovers, performance items and memory status.");
}

TEST_F(StoreModules, ThatShowNothingGetNoCacheEntryWhenLeft) {
    store->show(CleanerModule::trash);
    store->show(CleanerModule::privacy);
    for (const CleanerModule module : allCleanerModules) {
        EXPECT_FALSE(store->hasResult(module)) << rawValue(module);
    }
}

TEST_F(StoreModules, SwitchingDropsTheReportAndEmptiesTheBar) {
    scanned(CleanerModule::trash, everything());
    store->cleanSelected(CleanerModule::trash);
    processUntil([this] { return store->latestReport() && !store->isScanning(); });
    EXPECT_EQ(store->scanProgress(), 1);
    store->show(CleanerModule::trash);
    EXPECT_FALSE(store->latestReport());
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_EQ(store->scanStage(), "");
}

TEST_F(StoreModules, ShowTheirCachedResultWithSourceAndAge) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    store->show(CleanerModule::privacy);
    passTime(std::chrono::minutes(5));
    store->show(CleanerModule::trash);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash"));
    EXPECT_EQ(store->lastScanLabel(), "5 minutes ago");
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Single scan. Last scan: 5 minutes ago.");
}

TEST_F(StoreModules, HaveEntriesForAllAfterASmartScan) {
    scanned(CleanerModule::smartScan, everything());
    for (const CleanerModule module : allCleanerModules) {
        EXPECT_TRUE(store->hasResult(module)) << rawValue(module);
    }
}

TEST_F(StoreModules, ASmartScanCountsEachPathOnceAndTheModulesKeepAllOfTheirs) {
    ScanSnapshot snapshot = snapshotOf({row(CleanerModule::systemJunk, "Leftovers", {300}), largeFile("a.iso", 300),
                                        row(CleanerModule::privacy, "Chrome Cache", {60, 5})});
    snapshot.cleanupItems[1].targets.edit()[0].isCovered = true;
    snapshot.cleanupItems[2].targets.edit()[0].isCovered = true;
    scanned(CleanerModule::smartScan, snapshot);
    ASSERT_EQ(store->cleanupItems().size(), 2U);
    EXPECT_EQ(store->cleanupItems()[1].targets.size(), 1U);
    EXPECT_EQ(store->cleanableBytes(CleanerModule::smartScan), 305);
    store->show(CleanerModule::largeFiles);
    EXPECT_EQ(store->cleanableBytes(CleanerModule::largeFiles), 300);
    store->show(CleanerModule::privacy);
    EXPECT_EQ(store->cleanableBytes(CleanerModule::privacy), 65);
}

TEST_F(StoreModules, HoldAPathOfASmartScanOnceUntilItIsTickedInOneOfItsLists) {
    scanned(CleanerModule::smartScan, snapshotOf({row(CleanerModule::systemJunk, "Caches", {20, 30})}));
    const SharedTargets smart = store->cleanupItems().at(0).targets;
    store->show(CleanerModule::systemJunk);
    EXPECT_TRUE(store->cleanupItems().at(0).targets.isSharedWith(smart));
    store->setTargetSelected(0, 0, false);
    EXPECT_FALSE(store->cleanupItems().at(0).targets.isSharedWith(smart));
    EXPECT_EQ(store->selectedBytes(CleanerModule::systemJunk), 30);
    store->show(CleanerModule::smartScan);
    EXPECT_EQ(store->selectedBytes(CleanerModule::smartScan), 50);
}

TEST_F(StoreModules, ShowTheirOwnRowsOfASmartScanInOrder) {
    scanned(CleanerModule::smartScan, everything());
    store->show(CleanerModule::trash);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Trash A", "Trash B"));
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Smart Scan. Last scan: just now.");
    store->show(CleanerModule::systemJunk);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("Caches"));
    store->show(CleanerModule::privacy);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Smart Scan. Last scan: just now.");
}

TEST_F(StoreModules, ShareTheOtherFactsOfASmartScan) {
    scanned(CleanerModule::smartScan, everything());
    for (const CleanerModule module : allCleanerModules) {
        store->show(module);
        EXPECT_EQ(store->storageSegments().size(), 3U) << rawValue(module);
        EXPECT_EQ(store->diskSummary(), "1 GB / 2 GB used") << rawValue(module);
        EXPECT_EQ(store->startupCount(), 1) << rawValue(module);
        EXPECT_EQ(store->backgroundCount(), 2) << rawValue(module);
        EXPECT_EQ(store->privacyCount(), 3) << rawValue(module);
        EXPECT_EQ(store->memorySnapshot().totalBytes, 4) << rawValue(module);
        EXPECT_EQ(store->memoryApps().size(), 1U) << rawValue(module);
        EXPECT_EQ(store->startupItems().size(), 2U) << rawValue(module);
        EXPECT_EQ(store->permissionHints().size(), 1U) << rawValue(module);
    }
}

TEST_F(StoreModules, KeepTheSmartScanWholeUnderItsOwnName) {
    scanned(CleanerModule::smartScan, everything());
    store->show(CleanerModule::trash);
    store->show(CleanerModule::smartScan);
    EXPECT_EQ(store->cleanupItems().size(), 5U);
    EXPECT_EQ(store->fileCandidates().size(), 5U);
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Smart Scan. Last scan: just now.");
}

TEST_F(StoreModules, ListTheLargeFilesOfASmartScanLargestFirst) {
    scanned(CleanerModule::smartScan, everything());
    store->show(CleanerModule::largeFiles);
    ASSERT_EQ(store->fileCandidates().size(), 2U);
    const FileCandidate& first = store->fileCandidates().front();
    EXPECT_EQ(first.name, "Big.mov");
    EXPECT_EQ(first.location, "~/Downloads");
    EXPECT_EQ(first.size, "4 MB");
    EXPECT_EQ(first.modified, "2 days ago");
    EXPECT_EQ(first.symbol, "film");
    EXPECT_EQ(first.url, "/home/user/Big.mov 0");
    EXPECT_EQ(store->fileCandidates().back().name, "Small.mov");
    EXPECT_NE(first.id, store->fileCandidates().back().id);
}

TEST_F(StoreModules, OtherThanLargeFilesGetNoFileLinesFromASmartScan) {
    scanned(CleanerModule::smartScan, everything());
    store->show(CleanerModule::trash);
    EXPECT_THAT(store->fileCandidates(), IsEmpty());
}

TEST_F(StoreModules, ASingleScanReplacesItsOwnEntryOnly) {
    scanned(CleanerModule::smartScan, everything());
    scanned(CleanerModule::largeFiles, snapshotOf({largeFile("New.mov", 7)}));
    store->show(CleanerModule::largeFiles);
    EXPECT_THAT(titles(store->cleanupItems()), ElementsAre("New.mov"));
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Single scan. Last scan: just now.");
    store->show(CleanerModule::smartScan);
    EXPECT_EQ(store->cleanupItems().size(), 5U);
    store->show(CleanerModule::trash);
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Smart Scan. Last scan: just now.");
}

TEST_F(StoreModules, ASmartScanReplacesEveryEntryAlsoWithNothing) {
    scanned(CleanerModule::privacy, snapshotOf({row(CleanerModule::privacy, "Cookies", {10})}));
    scanned(CleanerModule::smartScan, {});
    store->show(CleanerModule::privacy);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Smart Scan. Last scan: just now.");
}

TEST_F(StoreModules, KeepTheSelectionAndTheTimeOfTheScanWhenLeftAndShownAgain) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10, 20})}));
    store->setTargetSelected(0, 1, false);
    passTime(std::chrono::minutes(2));
    store->show(CleanerModule::privacy);
    passTime(std::chrono::minutes(2));
    store->show(CleanerModule::trash);
    EXPECT_TRUE(store->cleanupItems().front().targets.at(0).isSelected);
    EXPECT_FALSE(store->cleanupItems().front().targets.at(1).isSelected);
    EXPECT_EQ(store->lastScanLabel(), "4 minutes ago");
}

TEST_F(StoreModules, AnEmptyResultOverwritesAnExistingEntry) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    scanned(CleanerModule::trash, {});
    store->show(CleanerModule::privacy);
    store->show(CleanerModule::trash);
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_EQ(store->statusMessage(), "Showing cached results from Single scan. Last scan: just now.");
}

TEST_F(StoreModules, KeepRefreshedHintsInTheEntry) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    service->setHints({hint("Mail Data", true, {}), hint("Browser Data", false, {})});
    store->refreshPermissionHints();
    EXPECT_EQ(store->permissionHints().size(), 2U);
    store->show(CleanerModule::trash);
    EXPECT_EQ(store->permissionHints().size(), 2U);
}

TEST_F(StoreModules, ScannedFiftyNineSecondsAgoReadJustNow) {
    EXPECT_EQ(labelAfter(std::chrono::seconds(59)), "just now");
}

TEST_F(StoreModules, ScannedSixtySecondsAgoReadOneMinutesAgo) {
    EXPECT_EQ(labelAfter(std::chrono::seconds(60)), "1 minutes ago");
}

TEST_F(StoreModules, ScannedUnderAnHourAgoReadFiftyNineMinutesAgo) {
    EXPECT_EQ(labelAfter(std::chrono::seconds(3599)), "59 minutes ago");
}

TEST_F(StoreModules, ScannedAnHourAgoReadOneHoursAgo) {
    EXPECT_EQ(labelAfter(std::chrono::seconds(3600)), "1 hours ago");
}

TEST_F(StoreModules, ScannedUnderADayAgoReadTwentyThreeHoursAgo) {
    EXPECT_EQ(labelAfter(std::chrono::seconds(86399)), "23 hours ago");
}

TEST_F(StoreModules, ScannedADayAgoReadOneDaysAgo) {
    EXPECT_EQ(labelAfter(std::chrono::seconds(86400)), "1 days ago");
}

TEST_F(StoreModules, ScannedInTheFutureOfASetBackClockReadJustNow) {
    EXPECT_EQ(labelAfter(std::chrono::hours(-5)), "just now");
}

TEST_F(StoreModules, DoNotRefreshTheirLabelWithoutBeingShown) {
    scanned(CleanerModule::trash, {});
    passTime(std::chrono::hours(1));
    EXPECT_EQ(store->lastScanLabel(), "just now");
}

TEST_F(StoreModules, ANewLanguageForgetsEveryResultAndStartsNoScan) {
    scanned(CleanerModule::smartScan, everything());
    store->show(CleanerModule::trash);
    L::setLanguage(AppLanguage::chinese);
    store->resetForLanguageChange();
    EXPECT_EQ(store->activeModule(), CleanerModule::trash);
    for (const CleanerModule module : allCleanerModules) {
        EXPECT_FALSE(store->hasResult(module)) << rawValue(module);
    }
    EXPECT_THAT(store->cleanupItems(), IsEmpty());
    EXPECT_EQ(store->lastScanLabel(), "未扫描");
    EXPECT_EQ(store->statusMessage(), "尚未扫描，点击扫描此模块。");
    EXPECT_EQ(store->diskSummary(), "点击扫描读取磁盘容量");
    EXPECT_EQ(store->scanProgress(), 0);
    EXPECT_FALSE(store->isScanning());
    EXPECT_EQ(service->scans().size(), 1U);
}

TEST_F(StoreModules, ANewLanguageDropsTheReport) {
    scanned(CleanerModule::trash, everything());
    store->cleanSelected(CleanerModule::trash);
    processUntil([this] { return store->latestReport() && !store->isScanning(); });
    store->resetForLanguageChange();
    EXPECT_FALSE(store->latestReport());
}

TEST_F(StoreModules, AnnounceASwitchWhenAllFieldsAreSet) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    std::vector<std::size_t> rowsSeen;
    QObject::connect(store.get(), &CleanerStore::activeModuleChanged, store.get(),
                     [&] { rowsSeen.push_back(store->cleanupItems().size()); });
    store->show(CleanerModule::privacy);
    store->show(CleanerModule::trash);
    EXPECT_THAT(rowsSeen, ElementsAre(0U, 1U));
}

TEST_F(StoreModules, AnnounceEachFieldOfAnAppliedResultOnce) {
    scanned(CleanerModule::trash, everything());
    std::vector<std::string> signalled;
    const auto note = [&](auto signal, const std::string& name) {
        QObject::connect(store.get(), signal, store.get(), [&signalled, name] { signalled.push_back(name); });
    };
    note(&CleanerStore::cleanupItemsChanged, "items");
    note(&CleanerStore::fileCandidatesChanged, "files");
    note(&CleanerStore::storageSegmentsChanged, "segments");
    note(&CleanerStore::diskSummaryChanged, "disk");
    note(&CleanerStore::countsChanged, "counts");
    note(&CleanerStore::memorySnapshotChanged, "memory");
    note(&CleanerStore::memoryAppsChanged, "apps");
    note(&CleanerStore::startupItemsChanged, "startup");
    note(&CleanerStore::permissionHintsChanged, "hints");
    note(&CleanerStore::statusMessageChanged, "status");
    note(&CleanerStore::lastScanLabelChanged, "label");
    store->show(CleanerModule::trash);
    EXPECT_THAT(signalled, ElementsAre("items", "files", "segments", "disk", "counts", "memory", "apps", "startup",
                                       "hints", "status", "label"));
}

TEST_F(StoreModules, BelongToTheThreadThatMadeTheStore) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(std::thread([this] { store->show(CleanerModule::trash); }).join(), "foreign thread");
    EXPECT_DEATH(std::thread([this] { (void)store->items(CleanerModule::trash); }).join(), "foreign thread");
}

} // namespace
} // namespace vellmoor
