#include "MemorySnapshot.h"

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
