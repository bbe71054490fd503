#include "Host.h"
#include "clean/RecordFixture.h"
#include "clean/Recovery.h"
#include "service/SystemCleanerService.h"

#include <gmock/gmock.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

INSTANTIATE_TEST_SUITE_P(Systems, Recorded, ::testing::ValuesIn(hostedSystems()), systemName);

TEST_P(Recorded, AllThatIsWantedStandsInTheJournalBeforeTheFirstMove) {
    const std::vector<Path> paths{home.text("Stuff/a", "1"), home.text("Stuff/b", "2")};
    std::optional<PastClean> seen;
    home.platform.beforeChange = [&](Operation, const Path&) {
        if (!seen) {
            seen = onlyClean();
        }
    };
    CleanupItem row = shownRow(home, paths);
    row.title = "Files";
    (void)cleaned(row);
    ASSERT_TRUE(seen);
    EXPECT_FALSE(seen->isFinished);
    ASSERT_THAT(seen->targets, SizeIs(2));
    EXPECT_EQ(seen->targets[1].path, paths[1]);
    EXPECT_EQ(seen->targets[1].identity, *row.targets[1].identity);
    EXPECT_EQ(seen->targets[1].fate, std::nullopt);
    EXPECT_EQ(seen->rows.at(0).title, "Files");
    EXPECT_EQ(seen->targets[0].parentModes.front(), home.platform.facts(home.place("Stuff"))->mode);
}

TEST_P(Recorded, WhatBecameOfEachStandsThereAfterwards) {
    const Path stays = home.text("Stuff/b", "2");
    home.platform.fail(Operation::MoveToTrash, stays, "Busy");
    const CleanupReport report = cleaned({home.text("Stuff/a", "1"), stays});
    const PastClean clean = onlyClean();
    EXPECT_EQ(report.historyId, clean.id);
    EXPECT_TRUE(clean.isFinished);
    EXPECT_EQ(clean.targets[0].fate, CleanupFate::Trashed);
    EXPECT_EQ(clean.targets[0].place, report.outcomes[0].place);
    EXPECT_EQ(clean.targets[1].fate, CleanupFate::Failed);
    EXPECT_EQ(clean.targets[1].reason, "Busy");
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].trashedCount, 1);
    EXPECT_EQ(past().cleans[0].items[1].reason, "Busy");
}

TEST_P(Recorded, TheReportTellsTheThreeSumsApart) {
    const Path old = home.text(trashed("old"), "words");
    const CleanupReport report = cleaned({home.text("Stuff/a", "1"), old});
    EXPECT_EQ(report.trashedCount, 1);
    EXPECT_EQ(report.trashedBytes, 100);
    EXPECT_EQ(report.removedBytes, 100);
    EXPECT_EQ(report.processedBytes, 200);
    EXPECT_EQ(report.freedNow, 0) << "the stand-in's disk has the same room before and after";
    EXPECT_FALSE(report.freedNowMayGrow);
}

TEST_P(Recorded, OnACopyOnWriteDiskMoreMayBeFreeLater) {
    home.platform.diskOf = [](const Path&) { return Disk{.name = "one", .mount = "/", .isCopyOnWrite = true}; };
    EXPECT_TRUE(cleaned({home.text("Stuff/a", "1")}).freedNowMayGrow);
    home.platform.diskCapacity.reset();
    EXPECT_EQ(cleaned({home.text("Stuff/b", "1")}).freedNow, std::nullopt);
}

TEST_P(Recorded, AJournalThatCannotBeWrittenIsKnownBeforehandAndStopsNoClean) {
    const CleanupItem row = shownRow(home, {home.text("Stuff/a", "1")});
    EngineContext context = home.context();
    EXPECT_EQ(whyNoWayBack(context, {row}), std::nullopt);
    home.text(home.layout.stateFolder / "history.jsonl", "");
    std::filesystem::remove(home.layout.stateFolder / "history.jsonl");
    home.folder(home.layout.stateFolder / "history.jsonl");
    EXPECT_EQ(whyNoWayBack(context, {row}).value_or("").substr(0, 34), "This clean cannot be taken back: I");
    const CleanupReport report = cleaned(row);
    EXPECT_EQ(report.trashedCount, 1);
    EXPECT_EQ(report.historyId, "");
    EXPECT_THAT(report.notes, ElementsAre(testing::StartsWith("This clean cannot be taken back: ")));
    EXPECT_FALSE(past().problem.empty());
}

TEST_P(Recorded, AFullDiskIsKnownBeforehand) {
    EngineContext context = home.context();
    home.platform.diskCapacity = Capacity{1'000'000, 100};
    const CleanupItem row = shownRow(home, {home.text("Stuff/a", "1")});
    EXPECT_EQ(whyNoWayBack(context, {row}), "This clean cannot be taken back: No space left on device");
    const CleanupItem inTrash = shownRow(home, {home.text(trashed("a"), "1")}, CleanerModule::trash);
    EXPECT_EQ(whyNoWayBack(context, {inTrash}), std::nullopt) << "there is nothing to take back";
}

TEST_P(Recorded, WhileAnotherVellmoorCleansNothingIsTouched) {
    const Path file = home.text("Stuff/a", "1");
    const auto others = OwnLock::tryTake(home.layout.stateFolder / "lock");
    ASSERT_TRUE(others && *others);
    const CleanupReport report = cleaned({file});
    EXPECT_THAT(report.failures, ElementsAre("Another Vellmoor is cleaning"));
    EXPECT_THAT(fates(report), ElementsAre(CleanupFate::Untried));
    EXPECT_TRUE(home.has(file));
}

TEST_P(Recorded, AStoppedCleanSaysWhatItDidNotTouch) {
    const std::vector<Path> paths{home.text("Stuff/a", "1"), home.text("Stuff/b", "2"), home.text("Stuff/c", "3")};
    CancelToken stop;
    EngineContext context(home.platform, home.layout, stop, home.now);
    home.platform.beforeChange = [&](Operation, const Path&) { stop.cancel(); };
    std::vector<CleanProgress> told;
    const CleanupReport report = vellmoor::clean(context, {shownRow(home, paths)}, std::chrono::milliseconds(0),
                                                 [&](const CleanProgress& progress) { told.push_back(progress); });
    EXPECT_TRUE(report.wasStopped);
    EXPECT_EQ(report.untriedCount, 2);
    EXPECT_EQ(report.message(), "Processed 1 items, estimated 1 KB freed. Stopped: 2 not touched.");
    EXPECT_THAT(fates(report), ElementsAre(CleanupFate::Trashed, CleanupFate::Untried, CleanupFate::Untried));
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told.front(), (CleanProgress{.totalCount = 3, .totalBytes = 300, .current = paths[0]}));
    EXPECT_EQ(told.back(), (CleanProgress{.doneCount = 3, .totalCount = 3, .doneBytes = 300, .totalBytes = 300}));
}

TEST_P(Recorded, ACleanThatWasCutOffStandsFirstAndCanBePutBack) {
    const std::vector<Path> paths{home.text("Stuff/a", "1"), home.text("Stuff/b", "2"), home.text("Stuff/c", "3")};
    const CleanupReport other = cleaned({home.text("Stuff/other", "0")});
    const std::size_t before = home.platform.changes().size();
    cleanUntil(before + 2, shownRow(home, paths));
    const CleanupReport later = cleaned({home.text("Stuff/later", "4")});
    const History seen = past();
    ASSERT_THAT(seen.cleans, SizeIs(3));
    EXPECT_EQ(seen.cleans[0].state, HistoryState::CutOff);
    EXPECT_EQ(seen.cleans[1].id, later.historyId);
    EXPECT_EQ(seen.cleans[2].id, other.historyId);
    EXPECT_EQ(seen.cleans[0].trashedCount, 2);
    EXPECT_EQ(seen.cleans[0].openCount, 1);
    EXPECT_EQ(back(seen.cleans[0].id).restoredCount, 2);
    for (const Path& path : paths) {
        EXPECT_TRUE(home.has(path));
    }
    EXPECT_THAT(past().cleans, SizeIs(2)) << "what was taken back is no longer unfinished";
}

TEST_P(Recorded, WhatMovedWithoutAWordOfItIsFoundByItsIdentity) {
    const std::vector<Path> paths{home.text("Stuff/a", "1"), home.text("Stuff/b", "2")};
    const CleanupItem row = shownRow(home, paths);
    cleanUntil(2, [&] {
        CleanupItem more = row;
        more.targets.edit().push_back(tickedTarget(home.text("Stuff/c", "3")));
        more.targets.edit().back().identity = home.platform.identity(home.place("Stuff/c"));
        return more;
    }());
    // As if the machine had ended before the facts reached the disk.
    const Path file = home.layout.stateFolder / "history.jsonl";
    std::string text = contentOf(file);
    text.erase(text.find("{\"event\":\"did\""));
    ASSERT_TRUE(OwnFile(file).replace(text));
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].trashedCount, 2);
    EngineContext context = home.context();
    recover(context);
    EXPECT_EQ(onlyClean().targets[0].fate, CleanupFate::Trashed) << "the journal learns of it";
    EXPECT_EQ(back(onlyClean().id).restoredCount, 2);
    EXPECT_EQ(contentOf(paths[0]), "1");
}

TEST_P(Recorded, FinishingTakesWhatIsStillTheSameFile) {
    const std::vector<Path> paths{home.text("Stuff/a", "1"), home.text("Stuff/b", "2"), home.text("Stuff/c", "3")};
    cleanUntil(1, shownRow(home, paths));
    std::filesystem::remove(paths[1]);
    home.text("Stuff/b", "another");
    const std::string id = past().cleans.at(0).id;
    EXPECT_EQ(past().cleans[0].openCount, 1);
    const CleanupReport report = finished(id);
    EXPECT_EQ(report.trashedCount, 1);
    EXPECT_FALSE(home.has(paths[2]));
    EXPECT_EQ(contentOf(paths[1]), "another");
    ASSERT_THAT(past().cleans, SizeIs(2));
    EXPECT_EQ(past().cleans[0].state, HistoryState::Finished);
    EXPECT_EQ(past().cleans[1].state, HistoryState::Finished);
    EXPECT_EQ(back(report.historyId).restoredCount + back(id).restoredCount, 2);
    EXPECT_THAT(finished("none").failures, ElementsAre("The history does not know this clean"));
}

TEST_P(Recorded, AnUninstallWhoseLeftoversStayedIsUnfinished) {
    const CleanupItem item = application();
    CancelToken stop;
    EngineContext context(home.platform, home.layout, stop, home.now);
    home.platform.beforeChange = [&](Operation, const Path&) { stop.cancel(); };
    const CleanupReport report = vellmoor::clean(context, {item}, std::chrono::milliseconds(0));
    home.platform.beforeChange = nullptr;
    ASSERT_EQ(report.trashedCount, 1);
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].state, HistoryState::LeftoversStayed);
    EXPECT_EQ(past().cleans[0].openCount, 2);
    EXPECT_EQ(finished(report.historyId).trashedCount, 2);
    EXPECT_FALSE(home.has(".config/tool"));
    EXPECT_EQ(past().cleans.at(0).state, HistoryState::Finished);
}

TEST_P(Recorded, LeftoversOfAnApplicationThatIsBackStay) {
    const CleanupItem item = application();
    cleanUntil(1, item);
    const std::string id = past().cleans.at(0).id;
    std::filesystem::create_directories(item.targets[0].url.path().parent_path());
    home.text(item.targets[0].url, "installed again");
    const CleanupReport report = finished(id);
    EXPECT_EQ(report.keptCount, 2);
    EXPECT_TRUE(home.has(".config/tool"));
}

TEST_P(Recorded, RemovingForGoodTakesExactlyTheItemsOfThatClean) {
    const Path old = home.text(trashed("old"), "theirs");
    const CleanupReport first = cleaned({home.text("Stuff/a", "1"), home.text("Stuff/folder/b", "2").parent_path()});
    const CleanupReport second = cleaned({home.text("Stuff/c", "3")});
    const CleanupReport report = goneForGood(first.historyId);
    EXPECT_EQ(report.removedCount, 2);
    EXPECT_EQ(report.removedBytes, 200);
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_EQ(contentOf(old), "theirs");
    EXPECT_FALSE(home.has(trashed("a")));
    EXPECT_FALSE(home.has(trashed("folder")));
    EXPECT_TRUE(home.has(second.outcomes[0].place));
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].id, second.historyId);
}

TEST_P(Recorded, RemovingForGoodLeavesAStrangerAlone) {
    const CleanupReport report = cleaned({home.text("Stuff/a", "1")});
    std::filesystem::remove(report.outcomes[0].place);
    home.text(report.outcomes[0].place, "theirs");
    EXPECT_EQ(goneForGood(report.historyId).removedCount, 0);
    EXPECT_EQ(contentOf(report.outcomes[0].place), "theirs");
}

TEST_P(Recorded, WhatAPastCleanTrashedStartsUntickedInTheTrash) {
    (void)home.text(trashed("theirs"), "old");
    const Path file = home.text("Stuff/a", "1");
    (void)cleaned({file});
    SystemCleanerService service(home.platform, home.layout);
    const ScanSnapshot snapshot = service.scan(CleanerModule::trash, [](const ScanProgressUpdate&) {}, home.token);
    ASSERT_THAT(snapshot.cleanupItems, SizeIs(1));
    ASSERT_THAT(snapshot.cleanupItems[0].targets, SizeIs(2));
    for (const CleanupTarget& target : snapshot.cleanupItems[0].targets) {
        EXPECT_EQ(target.isFromClean, target.name == "a");
        EXPECT_EQ(target.isSelected, target.name != "a");
        EXPECT_EQ(target.origin, target.name == "a" ? std::optional(file) : std::nullopt);
    }
    EXPECT_TRUE(snapshot.cleanupItems[0].isSelected);
    ASSERT_TRUE(service.forgetHistory());
    const ScanSnapshot again = service.scan(CleanerModule::trash, [](const ScanProgressUpdate&) {}, home.token);
    EXPECT_TRUE(again.cleanupItems[0].targets[0].isSelected);
    EXPECT_THAT(service.history().cleans, IsEmpty());
}

TEST_P(Recorded, CleansEndAfterNinetyDays) {
    (void)cleaned({home.text("Stuff/a", "1")});
    const TimePoint now = std::chrono::system_clock::now();
    EngineContext before(home.platform, home.layout, now + days(89));
    EXPECT_THAT(history(before).cleans, SizeIs(1));
    EngineContext after(home.platform, home.layout, now + days(91));
    EXPECT_THAT(history(after).cleans, IsEmpty());
    pruneHistory(after);
    EXPECT_THAT(journal().read().value().cleans, IsEmpty());
}

TEST_P(Recorded, ADiskThatIsAwayDoesNotEndItsCleans) {
    home.platform.diskOf = [&](const Path&) { return Disk{.name = "one", .mount = home.home}; };
    (void)cleaned({home.text("Stuff/a", "1")});
    home.platform.diskOf = [&](const Path&) { return Disk{.name = "other", .mount = home.home}; };
    EngineContext context(home.platform, home.layout, std::chrono::system_clock::now());
    pruneHistory(context);
    EXPECT_THAT(journal().read().value().cleans, SizeIs(1));
}

} // namespace
} // namespace vellmoor::test
