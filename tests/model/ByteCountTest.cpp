#include "texts/ByteCount.h"

#include "LanguageScope.h"

#include <gtest/gtest.h>

#include <limits>

namespace vellmoor {
namespace {

TEST(ByteCount, NothingIsZeroKilobytes) {
    EXPECT_EQ(byteCountText(0), "0 KB");
}

TEST(ByteCount, IsNeverShownInPlainBytesAndNeverAsNothing) {
    EXPECT_EQ(byteCountText(1), "1 KB");
    EXPECT_EQ(byteCountText(499), "1 KB");
    EXPECT_EQ(byteCountText(500), "1 KB");
    EXPECT_EQ(byteCountText(1'499), "1 KB");
}

TEST(ByteCount, CountsAThousandBytesToTheKilobyte) {
    EXPECT_EQ(byteCountText(1'000), "1 KB");
    EXPECT_EQ(byteCountText(1'024'000), "1 MB");
    EXPECT_EQ(byteCountText(2'000), "2 KB");
}

TEST(ByteCount, ShowsKilobytesWithoutDecimals) {
    EXPECT_EQ(byteCountText(1'500), "2 KB");
    EXPECT_EQ(byteCountText(12'400), "12 KB");
    EXPECT_EQ(byteCountText(999'000), "999 KB");
}

TEST(ByteCount, BecomesMegabytesWhenRoundingReachesAThousandKilobytes) {
    EXPECT_EQ(byteCountText(999'499), "999 KB");
    EXPECT_EQ(byteCountText(999'500), "1 MB");
    EXPECT_EQ(byteCountText(999'999), "1 MB");
    EXPECT_EQ(byteCountText(1'000'000), "1 MB");
}

TEST(ByteCount, ShowsMegabytesWithAtMostOneDecimal) {
    EXPECT_EQ(byteCountText(1'049'999), "1 MB");
    EXPECT_EQ(byteCountText(1'050'000), "1.1 MB");
    EXPECT_EQ(byteCountText(1'500'000), "1.5 MB");
    EXPECT_EQ(byteCountText(262'144'000), "262.1 MB");
}

TEST(ByteCount, BecomesGigabytesWhenRoundingReachesAThousandMegabytes) {
    EXPECT_EQ(byteCountText(999'949'999), "999.9 MB");
    EXPECT_EQ(byteCountText(999'950'000), "1 GB");
    EXPECT_EQ(byteCountText(1'000'000'000), "1 GB");
}

TEST(ByteCount, ShowsGigabytesWithAtMostTwoDecimals) {
    EXPECT_EQ(byteCountText(1'234'999'999), "1.23 GB");
    EXPECT_EQ(byteCountText(1'235'000'000), "1.24 GB");
    EXPECT_EQ(byteCountText(1'500'000'000), "1.5 GB");
    EXPECT_EQ(byteCountText(1'050'000'000), "1.05 GB");
    EXPECT_EQ(byteCountText(100'000'000'000), "100 GB");
}

TEST(ByteCount, BecomesTerabytesWhenRoundingReachesAThousandGigabytes) {
    EXPECT_EQ(byteCountText(999'994'999'999), "999.99 GB");
    EXPECT_EQ(byteCountText(999'995'000'000), "1 TB");
}

TEST(ByteCount, ShowsTerabytesWithAtMostTwoDecimals) {
    EXPECT_EQ(byteCountText(1'230'000'000'000), "1.23 TB");
    EXPECT_EQ(byteCountText(2'500'000'000'000), "2.5 TB");
}

TEST(ByteCount, StaysInTerabytesUpToTheLargestAmount) {
    EXPECT_EQ(byteCountText(1'000'000'000'000'000), "1000 TB");
    EXPECT_EQ(byteCountText(std::numeric_limits<std::int64_t>::max()), "9223372.04 TB");
}

TEST(ByteCount, ShowsNegativeAmountsWithAMinus) {
    EXPECT_EQ(byteCountText(-1), "-1 KB");
    EXPECT_EQ(byteCountText(-999'500), "-1 MB");
    EXPECT_EQ(byteCountText(-1'500'000'000), "-1.5 GB");
    EXPECT_EQ(byteCountText(std::numeric_limits<std::int64_t>::min()), "-9223372.04 TB");
}

TEST(ByteCount, ReadsTheSameInBothLanguages) {
    const LanguageScope chinese(AppLanguage::chinese);
    EXPECT_EQ(byteCountText(0), "0 KB");
    EXPECT_EQ(byteCountText(1'500'000), "1.5 MB");
}

TEST(ByteCount, ItsPartsAreNumberAndUnit) {
    const ByteCountParts parts = byteCountParts(1'500'000'000);
    EXPECT_EQ(parts.number, "1.5");
    EXPECT_EQ(parts.unit, "GB");
    EXPECT_EQ(byteCountParts(0).number, "0");
    EXPECT_EQ(byteCountParts(0).unit, "KB");
}

} // namespace
} // namespace vellmoor
