#include "Host.h"
#include "clean/CleaningFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::IsEmpty;

INSTANTIATE_TEST_SUITE_P(On, Cleaning, ::testing::ValuesIn(test::hostedSystems()), systemName);

TEST_P(Cleaning, NothingSelectedGivesAnEmptyReport) {
    const CleanupReport report = clean(home, std::vector<CleanupItem>{});
    EXPECT_EQ(report.attemptedCount, 0);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.freedBytes, 0);
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(report.memoryBefore);
    EXPECT_FALSE(report.memoryAfter);
}

TEST_P(Cleaning, AnOrdinaryFileMovesToTheTrash) {
    const Path file = home.text("Stuff/report.txt", "words");
    const CleanupReport report = clean(home, {file});
    EXPECT_FALSE(home.has(file));
    EXPECT_EQ(contentOf(trashed("report.txt")), "words");
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.freedBytes, 100);
}

TEST_P(Cleaning, AFolderMovesToTheTrashWithEverythingInIt) {
    home.text("Stuff/cache/inner/part", "words");
    clean(home, {home.place("Stuff/cache")});
    EXPECT_FALSE(home.has("Stuff/cache"));
    EXPECT_EQ(contentOf(trashed("cache/inner/part")), "words");
}

TEST_P(Cleaning, AnItemInTheTrashIsRemovedForGood) {
    const Path item = home.file(trashed("old/inner/file")).parent_path().parent_path();
    const CleanupReport report = clean(home, {item});
    expectRemovedForGood(item);
    EXPECT_EQ(report.removedCount, 1);
}

TEST_P(Cleaning, AStopFinishesThePathAtHandAndLeavesTheOthers) {
    const Path first = home.text("Stuff/a/part", "words").parent_path();
    const Path second = home.file("Stuff/b");
    CancelToken stop;
    home.platform.beforeChange = [&stop](Operation, const Path&) { stop.cancel(); };
    EngineContext context(home.platform, home.layout, stop, {});
    const CleanupReport report = vellmoor::clean(
        context, {tickedRow({first, second}), tickedRow({"/dev/null"}, CleanerModule::memoryOptimization)},
        std::chrono::milliseconds(0));
    EXPECT_FALSE(home.has(first));
    EXPECT_EQ(contentOf(trashed("a/part")), "words");
    EXPECT_TRUE(home.has(second));
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_FALSE(report.memoryBefore);
}

TEST_P(Cleaning, TheTimeOfTheReportIsTheEndOfTheClean) {
    const TimePoint before = std::chrono::system_clock::now();
    const CleanupReport report = clean(home, {home.file("Stuff/a")});
    EXPECT_GE(report.completedAt, before);
    EXPECT_LE(report.completedAt, std::chrono::system_clock::now());
}

TEST_P(Cleaning, ARowThatIsNotCleanableRemovesNothingAndCountsNothing) {
    const Path file = home.file("Stuff/a");
    CleanupItem item = tickedRow({file});
    item.isCleanable = false;
    const CleanupReport report = clean(home, std::vector{item});
    EXPECT_TRUE(home.has(file));
    EXPECT_EQ(report.attemptedCount, 0);
    EXPECT_EQ(report.freedBytes, 0);
}

TEST_P(Cleaning, ARowThatIsNotSelectedRemovesNothing) {
    const Path file = home.file("Stuff/a");
    CleanupItem item = tickedRow({file});
    item.isSelected = false;
    const CleanupReport report = clean(home, std::vector{item});
    EXPECT_TRUE(home.has(file));
    EXPECT_EQ(report.attemptedCount, 0);
}

TEST_P(Cleaning, ATargetThatIsNotSelectedStays) {
    const Path stays = home.file("Stuff/stays");
    const Path goes = home.file("Stuff/goes");
    CleanupItem item = tickedRow({stays, goes});
    item.targets.edit().front().isSelected = false;
    const CleanupReport report = clean(home, std::vector{item});
    EXPECT_TRUE(home.has(stays));
    EXPECT_FALSE(home.has(goes));
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.freedBytes, 100);
}

TEST_P(Cleaning, WhatAppearedAfterTheScanStays) {
    const Path listed = home.file("Stuff/cache/listed");
    const Path later = home.file("Stuff/cache/later");
    clean(home, {listed});
    EXPECT_TRUE(home.has(later));
}

TEST_P(Cleaning, AVanishedTargetIsNeitherRemovedNorFailedButWasAttempted) {
    const CleanupReport report = clean(home, {home.place("Stuff/gone"), home.file("Stuff/here")});
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.freedBytes, 200);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_THAT(report.failures, IsEmpty());
}

TEST_P(Cleaning, AnItemThatVanishedFromTheTrashIsNeitherRemovedNorFailed) {
    home.file(trashed("other"));
    const CleanupReport report = clean(home, {trashed("gone")});
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_TRUE(home.has(trashed("other")));
}

TEST_P(Cleaning, ATargetThatVanishesAtTheLastMomentIsNoFailure) {
    const Path file = home.file("Stuff/here");
    home.platform.beforeChange = [&](Operation, const Path&) { std::filesystem::remove(file); };
    const CleanupReport report = clean(home, {file});
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_THAT(report.failures, IsEmpty());
}

TEST_P(Cleaning, ATargetBelowOneThatIsAlreadyTrashedIsSkipped) {
    const Path inner = home.file("Stuff/cache/inner");
    const CleanupReport report = clean(home, {home.place("Stuff/cache"), inner});
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_TRUE(std::filesystem::exists(trashed("cache/inner")));
}

} // namespace
} // namespace vellmoor::test
