#include "StoreFixture.h"

#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

RestoreReport restored(std::int64_t count) {
    RestoreReport report;
    report.attemptedCount = count;
    report.restoredCount = count;
    report.restoredBytes = 5000 * count;
    return report;
}

History historyOf(const std::string& id) {
    History history;
    history.cleans.push_back({.id = id, .items = {}});
    return history;
}

class StoreHistory : public StoreFixture {
protected:
    StoreHistory() {
        QObject::connect(store.get(), &CleanerStore::historyChanged, store.get(), [this] { ++historyChanges; });
    }
    void awaitEnd() {
        processUntil([this] { return !store->isCleaning() && !store->isScanning(); });
        awaitWorkers();
    }
    /// A Trash of which the first path has a note.
    static ScanSnapshot trash() {
        CleanupItem item = row(CleanerModule::trash, "Trash", {10, 20});
        item.targets.edit()[0].origin = "/home/user/a";
        return snapshotOf({item});
    }

    int historyChanges = 0;
};

TEST_F(StoreHistory, IsLoadedOnAWorkerAndAnnounced) {
    service->setHistory(historyOf("one"));
    store->loadHistory();
    EXPECT_THAT(store->history().cleans, IsEmpty());
    awaitWorkers();
    EXPECT_EQ(store->history(), historyOf("one"));
    EXPECT_EQ(historyChanges, 1);
    EXPECT_THAT(service->historyCalls(), IsEmpty());
}

TEST_F(StoreHistory, TheStartPutsRightWhatAKillHasLeft) {
    service->setHistory(historyOf("one"));
    store->recover();
    awaitWorkers();
    EXPECT_THAT(service->historyCalls(), ElementsAre("recover"));
    EXPECT_THAT(store->history().cleans, SizeIs(1));
}

TEST_F(StoreHistory, PuttingBackTellsItsProgressItsReportAndReadsTheHistoryAgain) {
    scanned(CleanerModule::trash, trash());
    auto gate = std::make_shared<Gate>();
    service->onPutBack([gate](const CleanProgressCallback& progress) {
        progress({.doneCount = 1, .totalCount = 2, .current = "/a"});
        gate->pass();
        return restored(2);
    });
    store->putBack("one", {0, 2});
    EXPECT_TRUE(store->isCleaning());
    gate->awaitVisitor();
    processQueued();
    ASSERT_TRUE(store->cleanProgress());
    EXPECT_EQ(store->cleanProgress()->doneCount, 1);
    service->setHistory(historyOf("two"));
    store->putBack("another");
    store->removeForGood("another");
    gate->open();
    awaitEnd();
    EXPECT_THAT(service->historyCalls(), ElementsAre("putBack one 0 2")) << "one action at a time";
    ASSERT_TRUE(store->latestRestore());
    EXPECT_EQ(store->latestRestore()->restoredCount, 2);
    EXPECT_FALSE(store->cleanProgress());
    EXPECT_EQ(store->history(), historyOf("two"));
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::trash, CleanerModule::trash));
    store->clearRestore();
    EXPECT_FALSE(store->latestRestore());
}

TEST_F(StoreHistory, WithoutAResultNothingIsScannedAfterwards) {
    store->show(CleanerModule::trash);
    store->putBack("one");
    awaitEnd();
    EXPECT_THAT(service->scans(), IsEmpty());
    EXPECT_EQ(store->statusMessage(), "Items put back: 0 (0 KB).");
}

TEST_F(StoreHistory, ATargetIsPutBackWhereItsPlaceIsKnown) {
    scanned(CleanerModule::trash, trash());
    store->putBackTarget(0, 1);
    store->putBackTarget(0, 2);
    store->putBackTarget(1, 0);
    store->putBackTarget(-1, 0);
    store->putBackTarget(0, 0);
    awaitEnd();
    EXPECT_THAT(service->historyCalls(), ElementsAre("putBackTrashed /home/user/Trash 0"));
}

TEST_F(StoreHistory, FinishingAndRemovingForGoodEndInAReport) {
    store->finishClean("one");
    awaitEnd();
    EXPECT_TRUE(store->latestReport());
    store->clearReport();
    store->removeForGood("two");
    awaitEnd();
    EXPECT_TRUE(store->latestReport());
    EXPECT_THAT(service->historyCalls(), ElementsAre("finish one", "removeForGood two"));
}

TEST_F(StoreHistory, ForgettingAndSwitchingBackSayHowItWent) {
    store->forgetHistory();
    awaitEnd();
    EXPECT_EQ(store->statusMessage(), "The history was forgotten.");
    store->putBackSwitch({.name = "Sync", .file = "/x"});
    awaitEnd();
    EXPECT_EQ(store->statusMessage(), "switched");
    EXPECT_THAT(service->historyCalls(), ElementsAre("forget", "putBackSwitch Sync"));
}

TEST_F(StoreHistory, TheConfirmationCanSayThatThereIsNoWayBack) {
    service->setNoWayBack("full disk");
    EXPECT_EQ(store->whyNoWayBack(CleanerModule::trash), "") << "nothing is ticked";
    scanned(CleanerModule::trash, trash());
    EXPECT_EQ(store->whyNoWayBack(CleanerModule::trash), "full disk");
    service->setNoWayBack(std::nullopt);
    EXPECT_EQ(store->whyNoWayBack(CleanerModule::trash), "");
}

class TicksOverAScan : public StoreFixture {
protected:
    [[nodiscard]] std::vector<bool> ticks(std::size_t item = 0) const {
        std::vector<bool> all;
        for (const CleanupTarget& target : store->cleanupItems().at(item).targets) {
            all.push_back(target.isSelected);
        }
        return all;
    }
};

TEST_F(TicksOverAScan, StayByPath) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10, 20, 30})}));
    store->setTargetSelected(0, 1, false);
    CleanupItem next = row(CleanerModule::trash, "Trash", {10, 20, 30, 40});
    std::swap(next.targets.edit()[0], next.targets.edit()[1]);
    scanned(CleanerModule::trash, snapshotOf({next}));
    EXPECT_THAT(ticks(), ElementsAre(false, true, true, true)) << "what is new has its own tick";
}

TEST_F(TicksOverAScan, WhatTheUserTickedStaysTicked) {
    scanned(CleanerModule::privacy, snapshotOf({row(CleanerModule::privacy, "Cookies", {10, 20}, false)}));
    store->setTargetSelected(0, 1, true);
    scanned(CleanerModule::privacy, snapshotOf({row(CleanerModule::privacy, "Cookies", {10, 20, 30}, false)}));
    EXPECT_THAT(ticks(), ElementsAre(false, true, false));
    EXPECT_TRUE(store->cleanupItems().at(0).isSelected);
}

TEST_F(TicksOverAScan, ARowThatIsOffStaysOffWithWhatIsNewInIt) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10})}));
    store->setItemSelected(0, false);
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10, 20})}));
    EXPECT_THAT(ticks(), ElementsAre(false, false));
    EXPECT_FALSE(store->cleanupItems().at(0).isSelected);
}

TEST_F(TicksOverAScan, WhatComesFromACleanStartsUntickedUnderAnyName) {
    scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10, 20})}));
    CleanupItem next = row(CleanerModule::trash, "Trash", {10, 20});
    next.targets.edit()[0].isFromClean = true;
    next.targets.edit()[0].isSelected = false;
    scanned(CleanerModule::trash, snapshotOf({next}));
    EXPECT_THAT(ticks(), ElementsAre(false, true));
    store->setTargetSelected(0, 0, true);
    scanned(CleanerModule::trash, snapshotOf({next}));
    EXPECT_THAT(ticks(), ElementsAre(true, true)) << "the user's own tick";
}

TEST_F(TicksOverAScan, AreThoseOfTheEndOfIt) {
    const ScanSnapshot trash = snapshotOf({row(CleanerModule::trash, "Trash", {10, 20})});
    scanned(CleanerModule::trash, trash);
    const auto gate = startGatedScan(CleanerModule::trash, trash);
    store->setTargetSelected(0, 0, false);
    gate->open();
    processUntil([this] { return !store->isScanning(); });
    EXPECT_THAT(ticks(), ElementsAre(false, true));
}

} // namespace
} // namespace vellmoor
