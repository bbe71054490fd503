#include "history/Journal.h"

#include "EngineHome.h"
#include "ScopedUnprivileged.h"

#include <gmock/gmock.h>

#include <fstream>

namespace vellmoor {
namespace {

using test::EngineHome;
using test::System;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class Journals : public ::testing::Test {
protected:
    [[nodiscard]] PastClean clean(std::string id, TimePoint at) const {
        PastTarget target;
        target.path = home_.home / "odd \xFF\nname";
        target.identity = {
            .device = 66, .inode = ~std::uint64_t{0}, .kind = FileKind::Folder, .length = 4096, .modified = at};
        target.sameness = Sameness::Kind;
        target.bytes = 12345;
        target.parentModes = {0755, 0700};
        PastTarget body = target;
        body.path = home_.home / "\xFF.AppImage";
        body.row = 1;
        body.isBody = true;
        body.wasTrashed = true;
        const PastRow caches{
            .module = CleanerModule::systemJunk, .title = "User Caches", .application = {}, .identifier = {}};
        const PastRow application{.module = CleanerModule::appUninstaller,
                                  .title = "bad \"name\"",
                                  .application = home_.home / "\xFF.AppImage",
                                  .identifier = "org.example.App"};
        return {.id = std::move(id),
                .at = at,
                .module = CleanerModule::systemJunk,
                .run = "run",
                .home = home_.home,
                .disks = {{.device = 66, .name = "1234-ABCD", .mount = "/media/\xFFstick"}},
                .rows = {caches, application},
                .targets = {target, body}};
    }
    [[nodiscard]] Past past() const { return journal_.read().value(); }
    [[nodiscard]] Path file() const { return home_.layout.stateFolder / "history.jsonl"; }
    void add(std::string_view text) const { std::ofstream(file(), std::ios::app) << text; }

    EngineHome home_{System::Linux};
    Journal journal_{home_.layout};
};

TEST_F(Journals, WithoutAFileNothingHappenedYet) {
    EXPECT_THAT(past().cleans, IsEmpty());
    EXPECT_THAT(past().switches, IsEmpty());
}

TEST_F(Journals, WhatIsWantedIsThereBeforeAnythingIsDone) {
    const PastClean wanted = clean("one", home_.now);
    ASSERT_TRUE(journal_.begin(wanted));
    EXPECT_THAT(past().cleans, ElementsAre(wanted));
    EXPECT_FALSE(past().cleans[0].isFinished);
}

TEST_F(Journals, FactsAndTheEndAreAddedAsTheyHappen) {
    PastClean wanted = clean("one", home_.now);
    auto entry = journal_.begin(wanted);
    ASSERT_TRUE(entry) << entry.error();
    ASSERT_TRUE(
        entry->did(1, {.path = wanted.targets[1].path, .fate = CleanupFate::Trashed, .place = "/T/files/odd.2"}));
    ASSERT_TRUE(
        entry->did(0, {.path = wanted.targets[0].path, .fate = CleanupFate::Failed, .reason = "bad \xFF byte"}));
    ASSERT_TRUE(entry->end());
    const PastClean seen = past().cleans.at(0);
    EXPECT_TRUE(seen.isFinished);
    EXPECT_EQ(seen.targets[1].fate, CleanupFate::Trashed);
    EXPECT_EQ(seen.targets[1].place, "/T/files/odd.2");
    EXPECT_EQ(seen.targets[0].fate, CleanupFate::Failed);
    EXPECT_EQ(seen.targets[0].reason, "bad \xEF\xBF\xBD byte");
}

TEST_F(Journals, TheNewestStandsFirst) {
    ASSERT_TRUE(journal_.begin(clean("old", home_.now - test::days(1))));
    ASSERT_TRUE(journal_.begin(clean("new", home_.now)));
    EXPECT_EQ(past().cleans.at(0).id, "new");
    EXPECT_EQ(past().cleans.at(1).id, "old");
}

TEST_F(Journals, AnIntentThatACrashCutOffIsNoClean) {
    ASSERT_TRUE(journal_.begin(clean("whole", home_.now)));
    ASSERT_TRUE(journal_.begin(clean("cut", home_.now)));
    std::filesystem::resize_file(file(), std::filesystem::file_size(file()) - 10);
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].id, "whole");
}

TEST_F(Journals, LinesThatCannotBeReadArePassedOverAndKept) {
    ASSERT_TRUE(journal_.begin(clean("one", home_.now - test::days(2))));
    add("no json\n{\"event\":\"from the future\",\"x\":1}\n{\"event\":\"did\",\"id\":\"one\",\"index\":99}\n[1]\n");
    ASSERT_TRUE(journal_.begin(clean("two", home_.now)));
    EXPECT_THAT(past().cleans, SizeIs(2));
    ASSERT_TRUE(journal_.prune(home_.now - test::days(1), 200, [](const PastClean&) { return false; }));
    EXPECT_THAT(past().cleans, SizeIs(1));
    std::ifstream in(file());
    const std::string text((std::istreambuf_iterator<char>(in)), {});
    EXPECT_THAT(text, testing::StartsWith("no json\n{\"event\":\"from the future\",\"x\":1}\n[1]\n"));
}

TEST_F(Journals, OldCleansThoseBeyondTheLimitAndEmptyOnesAreDropped) {
    for (int day = 5; day >= 0; --day) {
        auto entry = journal_.begin(clean(std::to_string(day), home_.now - test::days(day)));
        ASSERT_TRUE(entry);
        ASSERT_TRUE(day == 3 || entry->end());
    }
    ASSERT_TRUE(journal_.prune(home_.now - test::days(4), 4, [](const PastClean&) { return false; }));
    ASSERT_THAT(past().cleans, SizeIs(4));
    EXPECT_EQ(past().cleans.back().id, "3");
    ASSERT_TRUE(journal_.prune(home_.now - test::days(4), 4, [](const PastClean& clean) { return clean.isFinished; }));
    ASSERT_THAT(past().cleans, SizeIs(1)) << "the one that was cut off stays";
    EXPECT_EQ(past().cleans[0].id, "3");
}

TEST_F(Journals, WhatWasPutBackIsRemembered) {
    ASSERT_TRUE(journal_.begin(clean("one", home_.now)));
    auto entry = journal_.resume("one");
    ASSERT_TRUE(entry);
    ASSERT_TRUE(entry->putBack(1));
    EXPECT_FALSE(past().cleans[0].targets[0].isPutBack);
    EXPECT_TRUE(past().cleans[0].targets[1].isPutBack);
    EXPECT_FALSE(past().cleans[0].isSettled);
    ASSERT_TRUE(entry->settle());
    EXPECT_TRUE(past().cleans[0].isSettled);
}

TEST_F(Journals, SwitchedLoginItemsAreRemembered) {
    const PastSwitch change{
        .at = home_.now, .name = "Sync", .file = home_.home / ".config/autostart.disabled/sync.desktop"};
    ASSERT_TRUE(journal_.addSwitch(change));
    EXPECT_THAT(past().switches, ElementsAre(change));
}

TEST_F(Journals, SwitchesEndWithTheirAgeToo) {
    ASSERT_TRUE(journal_.addSwitch({.at = home_.now - test::days(100), .name = "Old", .file = "/a"}));
    ASSERT_TRUE(journal_.addSwitch({.at = home_.now, .name = "New", .file = "/b"}));
    ASSERT_TRUE(journal_.prune(home_.now - test::days(90), 200, [](const PastClean&) { return false; }));
    ASSERT_THAT(past().switches, SizeIs(1));
    EXPECT_EQ(past().switches[0].name, "New");
}

TEST_F(Journals, WhatReallyMovedIsWhatIsKnownAgain) {
    auto entry = journal_.begin(clean("one", home_.now));
    ASSERT_TRUE(entry);
    CleanupOutcome outcome{.fate = CleanupFate::Trashed, .place = "/T/files/odd"};
    outcome.identity = FileIdentity{
        .device = 66, .inode = 7, .kind = FileKind::File, .length = 3, .modified = home_.now - test::days(1)};
    ASSERT_TRUE(entry->did(0, outcome));
    EXPECT_EQ(past().cleans[0].targets[0].identity, *outcome.identity);
}

TEST_F(Journals, ForgettingEmptiesIt) {
    ASSERT_TRUE(journal_.begin(clean("one", home_.now)));
    ASSERT_TRUE(journal_.forget());
    EXPECT_THAT(past().cleans, IsEmpty());
}

TEST_F(Journals, AFolderThatCannotBeWrittenIsSaidBeforeAnythingIsDone) {
    home_.folder(home_.layout.stateFolder);
    home_.setMode(home_.layout.stateFolder, 0500);
    {
        const test::ScopedUnprivileged asAnybody;
        const auto entry = journal_.begin(clean("one", home_.now));
        ASSERT_FALSE(entry);
        EXPECT_EQ(entry.error(), "Permission denied");
    }
    home_.setMode(home_.layout.stateFolder, 0700);
    EXPECT_THAT(past().cleans, IsEmpty());
}

} // namespace
} // namespace vellmoor
