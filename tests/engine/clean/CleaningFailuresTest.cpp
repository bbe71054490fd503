#include "Host.h"
#include "ScopedUnprivileged.h"
#include "clean/CleaningFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

using CleaningFailures = Cleaning;

INSTANTIATE_TEST_SUITE_P(On, CleaningFailures, ::testing::ValuesIn(test::hostedSystems()), systemName);

TEST_P(CleaningFailures, AFailedMoveLeavesTheFileAndSaysWhy) {
    const Path file = home.text("Stuff/a", "words");
    home.platform.fail(Operation::MoveToTrash, file, "The disk is not ready.");
    const CleanupReport report = clean(home, {file});
    EXPECT_THAT(report.failures, ElementsAre("a: The disk is not ready."));
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.freedBytes, 100); // an estimate from before the clean
    EXPECT_EQ(contentOf(file), "words");
}

TEST_P(CleaningFailures, AFailedMoveNeverBecomesADeletion) {
    home.file("Stuff/cache/a");
    home.platform.fail(Operation::MoveToTrash, {}, "Not supported");
    clean(home, {home.place("Stuff/cache")});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_TRUE(home.has("Stuff/cache/a"));
}

TEST_P(CleaningFailures, AFailedRemovalLeavesTheItemInTheTrash) {
    const Path item = home.text(trashed("old"), "words");
    home.platform.fail(Operation::RemoveFromTrash, item, "The disk is not ready.");
    const CleanupReport report = clean(home, {item});
    EXPECT_THAT(report.failures, ElementsAre("old: The disk is not ready."));
    EXPECT_EQ(contentOf(item), "words");
}

TEST_P(CleaningFailures, AFailureDoesNotEndTheClean) {
    const Path first = home.file("Stuff/first");
    const Path second = home.file("Stuff/second");
    home.platform.fail(Operation::MoveToTrash, first, "Busy");
    const CleanupReport report = clean(home, {first, second});
    EXPECT_TRUE(home.has(first));
    EXPECT_FALSE(home.has(second));
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 1);
}

TEST_P(CleaningFailures, WhatFollowsTheFirstFailureOfADyingDiskStays) {
    const Path first = home.file("Stuff/first");
    const Path second = home.file("Stuff/second");
    const Path third = home.file("Stuff/third");
    home.platform.failAfter(1, "Input/output error");
    const CleanupReport report = clean(home, {first, second, third});
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_THAT(report.failures, ElementsAre("second: Input/output error", "third: Input/output error"));
    EXPECT_TRUE(home.has(second));
    EXPECT_TRUE(home.has(third));
}

TEST_P(CleaningFailures, SevenFailuresAreCountedAndTheFirstFiveShown) {
    std::vector<Path> files;
    for (int i = 1; i <= 7; ++i) {
        files.push_back(home.file("Stuff/" + std::to_string(i)));
    }
    home.platform.fail(Operation::MoveToTrash, {}, "Busy");
    const CleanupReport report = clean(home, files);
    EXPECT_EQ(report.failedCount, 7);
    EXPECT_THAT(report.failures, ElementsAre("1: Busy", "2: Busy", "3: Busy", "4: Busy", "5: Busy"));
    EXPECT_THAT(files, Each(::testing::Truly([&](const Path& file) { return home.has(file); })));
}

TEST_P(CleaningFailures, AFileInAFolderThatCannotBeWrittenStaysAndTheCauseIsShown) {
    const Path file = home.text("Stuff/locked/a", "words");
    home.setMode("Stuff/locked", 0555);
    CleanupReport report;
    {
        const ScopedUnprivileged unprivileged;
        report = clean(home, {file});
    }
    EXPECT_EQ(report.failedCount, 1);
    ASSERT_THAT(report.failures, SizeIs(1));
    EXPECT_THAT(report.failures.front(), StartsWith("a: "));
    EXPECT_GT(report.failures.front().size(), std::string("a: ").size());
    EXPECT_EQ(contentOf(file), "words");
}

} // namespace
} // namespace vellmoor::test
