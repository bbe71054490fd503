// What a clean must see between the scan and the removal.
#include "Host.h"
#include "ScopedUnprivileged.h"
#include "clean/CleaningFixture.h"
#include "trash/Trash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using CleaningOfWhatWasShown = Cleaning;

INSTANTIATE_TEST_SUITE_P(On, CleaningOfWhatWasShown, ::testing::ValuesIn(test::hostedSystems()), systemName);

TEST_P(CleaningOfWhatWasShown, AFileTrashedUnderTheNameOfARestoredOneStays) {
    home.text(trashed("report.odt"), "the old one");
    EngineContext context = home.context();
    std::vector<CleanupItem> rows = trashItems(context);
    ASSERT_EQ(rows.size(), 1U);
    std::filesystem::rename(trashed("report.odt"), home.place("report.odt"));
    home.text(trashed("report.odt"), "the new one");
    const CleanupReport report = clean(home, rows);
    EXPECT_EQ(contentOf(trashed("report.odt")), "the new one");
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.keptCount, 1);
    EXPECT_EQ(report.processedBytes, 0);
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_THAT(report.notes, ElementsAre("report.odt: changed since the scan and was kept"));
    ASSERT_EQ(report.outcomes.size(), 1U);
    EXPECT_EQ(report.outcomes.front().fate, CleanupFate::Kept);
}

TEST_P(CleaningOfWhatWasShown, AnOrdinaryFileThatWasReplacedStays) {
    const Path file = home.text("Stuff/a", "shown");
    CleanupItem row = shownRow(home, {file});
    home.text("Stuff/b", "not shown");
    std::filesystem::rename(home.place("Stuff/b"), file);
    const CleanupReport report = clean(home, std::vector{row});
    EXPECT_EQ(contentOf(file), "not shown");
    EXPECT_THAT(report.notes, ElementsAre("a: changed since the scan and was kept"));
}

TEST_P(CleaningOfWhatWasShown, ACacheThatWasReplacedAndALogThatGrewGo) {
    const Path file = home.text("Stuff/log", "shown");
    CleanupItem row = shownRow(home, {file});
    row.targets.edit().front().sameness = Sameness::Kind;
    home.text("Stuff/b", "a longer one");
    std::filesystem::rename(home.place("Stuff/b"), file);
    const CleanupReport report = clean(home, std::vector{row});
    EXPECT_FALSE(home.has(file));
    EXPECT_EQ(report.removedCount, 1);
}

TEST_P(CleaningOfWhatWasShown, AFileSwappedInTheLastMomentStaysInItsPlace) {
    const Path file = home.text("Stuff/a", "shown");
    const CleanupItem row = shownRow(home, {file});
    home.text("Stuff/b", "precious");
    home.platform.beforeChange = [&](Operation, const Path&) { std::filesystem::rename(home.place("Stuff/b"), file); };
    clean(home, std::vector{row});
    EXPECT_EQ(contentOf(file), "precious");
}

TEST_P(CleaningOfWhatWasShown, TheReportTellsOfEachPathWhatBecameOfIt) {
    const Path moved = home.text("Stuff/moved", "words");
    const Path gone = home.text("Stuff/gone", "words");
    const Path old = home.text(trashed("old"), "words");
    const CleanupItem row = shownRow(home, {moved, gone, old, home.home});
    std::filesystem::remove(gone);
    const CleanupReport report = clean(home, std::vector{row});
    ASSERT_EQ(report.outcomes.size(), 4U);
    EXPECT_EQ(report.outcomes[0].fate, CleanupFate::Trashed);
    EXPECT_EQ(report.outcomes[0].place, trashed("moved"));
    EXPECT_EQ(report.outcomes[1].fate, CleanupFate::Vanished);
    EXPECT_EQ(report.outcomes[2].fate, CleanupFate::Removed);
    EXPECT_EQ(report.outcomes[3].fate, CleanupFate::Failed);
    EXPECT_EQ(report.outcomes[3].reason, "Operation not permitted");
    EXPECT_EQ(report.freedBytes, 400);
    EXPECT_EQ(report.processedBytes, 200);
    EXPECT_EQ(report.message(), "Processed 2 items, 1 failed, estimated 1 KB freed.");
}

TEST_P(CleaningOfWhatWasShown, WhatCannotBeSeenIsAFailureAndNotGone) {
    if (isMac) {
        GTEST_SKIP() << "macOS follows links to find out, and privacy protection hides files";
    }
    const Path first = home.text("Stuff/closed/first", "words");
    const Path second = home.text("Stuff/second", "words");
    const CleanupItem row = shownRow(home, {first, second});
    home.setMode("Stuff/closed", 0);
    CleanupReport report;
    {
        const ScopedUnprivileged unprivileged;
        report = clean(home, std::vector{row});
    }
    home.setMode("Stuff/closed", 0755);
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_THAT(report.failures, ElementsAre("first: Permission denied"));
    EXPECT_TRUE(home.has(first));
}

/// The row of an application with its leftovers.
class CleaningOfAnApplication : public ::testing::Test {
protected:
    EngineHome home{test::hostedSystems().back()};
    const Path body = home.text("Applications/tool/run", "program").parent_path();
    const Path leftover = home.text(".config/tool/settings", "words").parent_path();

    CleanupItem row() {
        CleanupItem item = shownRow(home, {leftover, body}, CleanerModule::appUninstaller);
        item.title = "Tool";
        item.appInfo = AppCleanupInfo{.bundleIdentifier = {}, .appPath = body.string()};
        return item;
    }
};

TEST_F(CleaningOfAnApplication, GoesBeforeItsLeftovers) {
    const CleanupReport report = clean(home, std::vector{row()});
    EXPECT_THAT(changedPaths(home, Operation::MoveToTrash), ElementsAre(body, leftover));
    EXPECT_EQ(report.removedCount, 2);
}

TEST_F(CleaningOfAnApplication, KeepsItsLeftoversWhenItStaysWithTheSameReason) {
    home.platform.fail(Operation::MoveToTrash, body, "Permission denied");
    const CleanupReport report = clean(home, std::vector{row()});
    EXPECT_THAT(report.failures, ElementsAre("tool: Permission denied"));
    EXPECT_THAT(report.notes, ElementsAre("tool: Permission denied"));
    EXPECT_EQ(report.keptCount, 1);
    EXPECT_TRUE(home.has(leftover / "settings"));
}

TEST_F(CleaningOfAnApplication, KeepsThemToWhenItIsAnotherOneByNow) {
    const CleanupItem shown = row();
    std::filesystem::rename(body, home.place("away"));
    home.text("Applications/tool/run", "another");
    const CleanupReport report = clean(home, std::vector{shown});
    EXPECT_EQ(report.keptCount, 2);
    EXPECT_TRUE(home.has(leftover / "settings"));
}

TEST_F(CleaningOfAnApplication, LetsThemGoWhenItIsGoneAlready) {
    const CleanupItem shown = row();
    std::filesystem::remove_all(body);
    const CleanupReport report = clean(home, std::vector{shown});
    EXPECT_FALSE(home.has(leftover));
    EXPECT_EQ(report.removedCount, 1);
}

} // namespace
} // namespace vellmoor::test
