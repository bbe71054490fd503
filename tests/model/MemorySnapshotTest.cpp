#include "found/MemorySnapshot.h"

#include "LanguageScope.h"

#include <gtest/gtest.h>

#include <limits>

namespace vellmoor {
namespace {

MemorySnapshot memory(std::int64_t total, std::int64_t free) {
    MemorySnapshot snapshot;
    snapshot.totalBytes = total;
    snapshot.freeBytes = free;
    return snapshot;
}

TEST(MemorySnapshot, IsAllZeroAtFirst) {
    const MemorySnapshot snapshot;
    EXPECT_EQ(snapshot.totalBytes + snapshot.freeBytes + snapshot.activeBytes + snapshot.wiredBytes +
                  snapshot.compressedBytes + snapshot.cachedBytes + snapshot.reclaimableBytes,
              0);
}

TEST(MemorySnapshot, HoldsFileCachesInWhatIsFreeButNotUnused) {
    MemorySnapshot snapshot = memory(100, 30);
    snapshot.unusedBytes = 10;
    EXPECT_EQ(snapshot.fileCacheBytes(), 20);
    snapshot.unusedBytes = 31;
    EXPECT_EQ(snapshot.fileCacheBytes(), 0);
}

MemoryApp application(std::vector<std::int32_t> pids, std::vector<std::uint64_t> starts) {
    MemoryApp app;
    app.id = "/usr/share/applications/editor.desktop";
    app.bundleIdentifier = "editor";
    app.pids = std::move(pids);
    app.starts = std::move(starts);
    return app;
}

TEST(MemoryApp, IsStillTheSameWhileOneOfItsProcessesIs) {
    const MemoryApp shown = application({10, 11}, {500, 501});
    EXPECT_TRUE(shown.isStill(application({11, 12}, {501, 900})));
    EXPECT_TRUE(shown.isStill(shown));
}

TEST(MemoryApp, IsAnotherOneOnceItWasStartedAnew) {
    const MemoryApp shown = application({10, 11}, {500, 501});
    EXPECT_FALSE(shown.isStill(application({12}, {900})));
    EXPECT_FALSE(shown.isStill(application({10}, {900}))); // the number was used again
    EXPECT_FALSE(shown.isStill(application({}, {})));
}

TEST(MemoryApp, IsAnotherOneUnderAnotherNameOrIdentifier) {
    const MemoryApp shown = application({10}, {500});
    MemoryApp other = shown;
    other.id = "/usr/share/applications/player.desktop";
    EXPECT_FALSE(shown.isStill(other));
    other = shown;
    other.bundleIdentifier = "player"; // two programs of one interpreter
    EXPECT_FALSE(shown.isStill(other));
}

TEST(MemoryApp, KeepsTheProcessesThatTheLaterRecordHasToo) {
    const MemoryApp shown = application({10, 11, 12}, {500, 501, 502});
    const MemoryApp both = shown.withProcessesOf(application({12, 11, 13}, {502, 900, 503}));
    EXPECT_EQ(both.id, shown.id);
    EXPECT_EQ(both.pids, std::vector<std::int32_t>{12});
    EXPECT_EQ(both.starts, std::vector<std::uint64_t>{502});
}

TEST(MemorySnapshot, UsesTotalMinusFree) {
    EXPECT_EQ(memory(100, 30).usedBytes(), 70);
}

TEST(MemorySnapshot, UsesNothingWhenMoreIsFreeThanThereIs) {
    EXPECT_EQ(memory(100, 130).usedBytes(), 0);
    EXPECT_EQ(memory(100, 130).usagePercent(), 0);
    EXPECT_EQ(memory(100, 130).pressureTitle(), "Good");
}

TEST(MemorySnapshot, WithoutATotalIsZeroPercentAndGood) {
    EXPECT_EQ(memory(0, 0).usagePercent(), 0);
    EXPECT_EQ(memory(0, 0).pressureTitle(), "Good");
    EXPECT_EQ(memory(-8, -100).usagePercent(), 0);
    EXPECT_EQ(memory(-8, -100).pressureTitle(), "Good");
}

TEST(MemorySnapshot, RoundsThePercentageToTheNearest) {
    EXPECT_EQ(memory(1'000, 346).usagePercent(), 65);
    EXPECT_EQ(memory(1'000, 345).usagePercent(), 66);
    EXPECT_EQ(memory(1'000, 344).usagePercent(), 66);
    EXPECT_EQ(memory(1'000, 0).usagePercent(), 100);
}

TEST(MemorySnapshot, NeverPassesAHundredPercent) {
    EXPECT_EQ(memory(100, -50).usagePercent(), 100);
}

TEST(MemorySnapshot, IsGoodBelowSeventyPercent) {
    EXPECT_EQ(memory(1'000, 301).pressureTitle(), "Good");
}

TEST(MemorySnapshot, IsHighAtExactlySeventyPercent) {
    EXPECT_EQ(memory(1'000, 300).pressureTitle(), "High");
    EXPECT_EQ(memory(10, 3).pressureTitle(), "High");
}

TEST(MemorySnapshot, IsHighBelowEightySixPercent) {
    EXPECT_EQ(memory(1'000, 141).pressureTitle(), "High");
}

TEST(MemorySnapshot, IsCriticalAtExactlyEightySixPercent) {
    EXPECT_EQ(memory(1'000, 140).pressureTitle(), "Critical");
    EXPECT_EQ(memory(50, 7).pressureTitle(), "Critical");
}

TEST(MemorySnapshot, IsCriticalWhenFullAndBeyond) {
    EXPECT_EQ(memory(100, 0).pressureTitle(), "Critical");
    EXPECT_EQ(memory(100, -50).pressureTitle(), "Critical");
}

TEST(MemorySnapshot, NamesItsPressureInChinese) {
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_EQ(memory(0, 0).pressureTitle(), "良好");
    EXPECT_EQ(memory(10, 3).pressureTitle(), "偏高");
    EXPECT_EQ(memory(10, 0).pressureTitle(), "紧张");
}

TEST(MemorySnapshotDeath, AUsedAmountThatOverflowsEndsTheProgram) {
    EXPECT_DEATH((void)memory(std::numeric_limits<std::int64_t>::max(), -1).usedBytes(), "overflow");
}

TEST(MemorySnapshot, EqualsAnotherWithTheSameFigures) {
    EXPECT_EQ(memory(1, 2), memory(1, 2));
    EXPECT_NE(memory(1, 2), memory(1, 3));
}

} // namespace
} // namespace vellmoor
