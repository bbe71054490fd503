#include "restore/Restore.h"

#include "Host.h"
#include "restore/RestoreFixture.h"

#include <gmock/gmock.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class Restoring : public TakingBack {};
INSTANTIATE_TEST_SUITE_P(Systems, Restoring, ::testing::ValuesIn(hostedSystems()), systemName);

TEST_P(Restoring, PutsAWholeCleanBackWithItsTimes) {
    const Path file = home.text("Stuff/report.odt", "words", days(3));
    const Path folder = home.text("Stuff/cache/inner/a", "more").parent_path().parent_path();
    home.setAge(folder, days(9));
    const auto times = std::pair(home.platform.facts(file)->modified, home.platform.facts(folder)->modified);
    const CleanupReport report = cleaned({file, folder});
    ASSERT_EQ(report.trashedCount, 2);
    ASSERT_FALSE(home.has(file));
    const RestoreReport restored = back(report.historyId);
    EXPECT_EQ(restored.restoredCount, 2);
    EXPECT_THAT(restored.failures, IsEmpty());
    EXPECT_EQ(contentOf(file), "words");
    EXPECT_EQ(contentOf(folder / "inner/a"), "more");
    EXPECT_EQ(std::pair(home.platform.facts(file)->modified, home.platform.facts(folder)->modified), times);
    EXPECT_THAT(past().cleans, IsEmpty()) << "nothing of it lies in a Trash any more";
}

TEST_P(Restoring, PutsOneItemBackAndLeavesTheOthers) {
    const Path first = home.text("Stuff/a", "one");
    const Path second = home.text("Stuff/b", "two");
    const CleanupReport report = cleaned({first, second});
    const RestoreReport restored = back(report.historyId, {1});
    EXPECT_EQ(restored.restoredCount, 1);
    EXPECT_FALSE(home.has(first));
    EXPECT_EQ(contentOf(second), "two");
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].trashedCount, 1);
    EXPECT_TRUE(past().cleans[0].items[1].isPutBack);
    EXPECT_EQ(back(report.historyId, {1}).outcomes.at(0).fate, RestoreFate::Vanished);
}

TEST_P(Restoring, MakesMissingFoldersAgainWithTheModesThatTheyHad) {
    const Path file = home.text("Stuff/outer/inner/a", "words");
    home.setMode("Stuff/outer/inner", 0705);
    home.setMode("Stuff/outer", 0750);
    const CleanupReport report = cleaned({file});
    std::filesystem::remove_all(home.place("Stuff"));
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_EQ(contentOf(file), "words");
    EXPECT_EQ(modeOf(file.parent_path()), 0705U);
    EXPECT_EQ(modeOf(file.parent_path().parent_path()), 0750U);
}

TEST_P(Restoring, ANameThatIsTakenStaysInTheTrashAndSaysSo) {
    const Path file = home.text("Stuff/a", "old");
    const CleanupReport report = cleaned({file});
    home.text("Stuff/a", "new");
    const RestoreReport restored = back(report.historyId);
    EXPECT_EQ(restored.failedCount, 1);
    EXPECT_EQ(restored.outcomes.at(0).fate, RestoreFate::NameTaken);
    EXPECT_EQ(restored.outcomes.at(0).path, file);
    EXPECT_EQ(contentOf(restored.outcomes.at(0).place), "old");
    EXPECT_EQ(contentOf(file), "new");
    EXPECT_THAT(restored.failures, ElementsAre(testing::StartsWith("a: something of that name")));
    EXPECT_THAT(past().cleans, SizeIs(1));
}

TEST_P(Restoring, ATakenNameMakesNoFolders) {
    const Path file = home.text("Stuff/outer/a", "old");
    const CleanupReport report = cleaned({file});
    std::filesystem::remove_all(home.place("Stuff"));
    home.text("Stuff", "a file where a folder was");
    EXPECT_EQ(back(report.historyId).outcomes.at(0).fate, RestoreFate::Failed);
    EXPECT_EQ(contentOf(home.place("Stuff")), "a file where a folder was");
    EXPECT_EQ(past().cleans.at(0).trashedCount, 1);
}

TEST_P(Restoring, AnotherFileUnderTheItemsNameInTheTrashIsNotPutBack) {
    const Path file = home.text("Stuff/a", "mine");
    const CleanupReport report = cleaned({file});
    const Path place = report.outcomes.at(0).place;
    std::filesystem::rename(place, home.place("elsewhere"));
    home.text(place, "not mine");
    EXPECT_EQ(back(report.historyId, {0}).restoredCount, 0);
    EXPECT_FALSE(home.has(file));
    EXPECT_EQ(contentOf(place), "not mine");
}

TEST_P(Restoring, WhatWasChangedInTheTrashStillIsTheItem) {
    const Path file = home.text("Stuff/a", "mine");
    const CleanupReport report = cleaned({file});
    std::ofstream(report.outcomes.at(0).place.native(), std::ios::app) << " and more";
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_EQ(contentOf(file), "mine and more");
}

TEST_P(Restoring, AfterANewStartOfTheSystemTheContentHasToAgreeToo) {
    const Path same = home.text("Stuff/same", "mine");
    const Path changed = home.text("Stuff/changed", "mine");
    const CleanupReport report = cleaned({same, changed});
    std::ofstream(report.outcomes.at(1).place.native(), std::ios::app) << " and more";
    home.platform.run = "second";
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_EQ(contentOf(same), "mine");
    EXPECT_FALSE(home.has(changed));
}

TEST_P(Restoring, AfterANewStartTheDiskIsKnownByItsName) {
    const Path file = home.text("Stuff/a", "mine");
    home.platform.diskOf = [&](const Path&) { return Disk{.name = "one", .mount = home.home}; };
    const CleanupReport report = cleaned({file});
    home.platform.run = "second";
    home.platform.diskOf = [&](const Path&) { return Disk{.name = "other", .mount = home.home}; };
    EXPECT_EQ(back(report.historyId).restoredCount, 0);
    EXPECT_EQ(past().cleans.at(0).trashedCount, 0) << "listed, since its disk may come back";
    home.platform.diskOf = [&](const Path&) { return Disk{.name = "one", .mount = home.home}; };
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_EQ(contentOf(file), "mine");
}

TEST_P(Restoring, AFolderComesBackBeforeWhatLayInIt) {
    const Path inner = home.text("Stuff/outer/inner", "in");
    const Path outer = home.text("Stuff/outer/other", "out").parent_path();
    CleanupItem row = tickedRow({inner, outer}, CleanerModule::largeFiles);
    const CleanupReport report = cleaned(row);
    ASSERT_EQ(report.trashedCount, 2);
    EXPECT_EQ(back(report.historyId).restoredCount, 2);
    EXPECT_EQ(contentOf(inner), "in");
    EXPECT_EQ(contentOf(outer / "other"), "out");
}

TEST_P(Restoring, AStoppedRestoreLeavesTheRestInTheTrash) {
    const CleanupReport report =
        cleaned({home.text("Stuff/a", "1"), home.text("Stuff/b", "2"), home.text("Stuff/c", "3")});
    CancelToken stop;
    EngineContext context(home.platform, home.layout, stop, home.now);
    std::vector<CleanProgress> told;
    const RestoreReport restored = putBack(context, report.historyId, {}, [&](const CleanProgress& progress) {
        told.push_back(progress);
        stop.cancel();
    });
    EXPECT_TRUE(restored.wasStopped);
    EXPECT_EQ(restored.untriedCount, 3);
    EXPECT_EQ(restored.message(), "Items put back: 0 (0 KB). Stopped: 3 not touched.");
    ASSERT_THAT(told, SizeIs(2));
    EXPECT_EQ(told.front(), (CleanProgress{.totalCount = 3, .totalBytes = 300, .current = home.place("Stuff/a")}));
    EXPECT_EQ(told.back().doneCount, 3);
    EXPECT_EQ(past().cleans.at(0).trashedCount, 3);
}

TEST_P(Restoring, WhileAnotherVellmoorCleansNothingIsPutBack) {
    const CleanupReport report = cleaned({home.text("Stuff/a", "1")});
    {
        const auto others = OwnLock::tryTake(home.layout.stateFolder / "lock");
        ASSERT_TRUE(others && *others);
        EXPECT_THAT(back(report.historyId).failures, ElementsAre("Another Vellmoor is cleaning"));
        EXPECT_THAT(backFromTrash({report.outcomes.at(0).place}).failures, ElementsAre("Another Vellmoor is cleaning"));
    }
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
}

TEST_P(Restoring, ACleanThatIsNotInTheHistoryIsSaidToBeNone) {
    EXPECT_THAT(back("nothing").failures, ElementsAre("The history does not know this clean"));
}

TEST_P(Restoring, AHomeThatMovedElsewhereGetsItsThingsBack) {
    const Path file = home.text("Stuff/a", "mine");
    const CleanupReport report = cleaned({file});
    const Path past = home.home / "old";
    const Journal journal(home.layout);
    const std::string text = OwnFile(home.layout.stateFolder / "history.jsonl").read().value();
    std::string moved;
    for (std::size_t at = 0; at < text.size();) { // the journal of a home that was called otherwise
        const std::size_t next = text.find(home.home.native(), at);
        moved += text.substr(at, next - at);
        moved += next == std::string::npos ? "" : past.native();
        at = next == std::string::npos ? text.size() : next + home.home.native().size();
    }
    ASSERT_TRUE(OwnFile(home.layout.stateFolder / "history.jsonl").replace(moved));
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_EQ(contentOf(file), "mine");
}

} // namespace
} // namespace vellmoor::test
