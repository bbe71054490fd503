#include "CheckedMath.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace vellmoor {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

TEST(CheckedMath, AnswersWhatFits) {
    EXPECT_EQ(checkedAdd<std::int64_t>(2, 3), 5);
    EXPECT_EQ(checkedAdd(most, std::int64_t{0}), most);
    EXPECT_EQ(checkedAdd(most, least), -1);
    EXPECT_EQ(checkedSub<std::int64_t>(2, 3), -1);
    EXPECT_EQ(checkedSub(least, std::int64_t{0}), least);
    EXPECT_EQ(checkedMul<std::int64_t>(-2, 3), -6);
    EXPECT_EQ(checkedMul(most, std::int64_t{1}), most);
}

TEST(CheckedMath, AnswersAtCompileTime) {
    static_assert(checkedAdd(1, 2) == 3);
    static_assert(checkedSub(1, 2) == -1);
    static_assert(checkedMul(4U, 2U) == 8U);
}

TEST(CheckedMathDeath, ASumTooLargeEndsTheProgram) {
    EXPECT_DEATH((void)checkedAdd(most, std::int64_t{1}), "overflow");
}

TEST(CheckedMathDeath, ASumTooSmallEndsTheProgram) {
    EXPECT_DEATH((void)checkedAdd(least, std::int64_t{-1}), "overflow");
}

TEST(CheckedMathDeath, ADifferenceTooSmallEndsTheProgram) {
    EXPECT_DEATH((void)checkedSub(least, std::int64_t{1}), "overflow");
}

TEST(CheckedMathDeath, AProductTooLargeEndsTheProgram) {
    EXPECT_DEATH((void)checkedMul(most, std::int64_t{2}), "overflow");
}

TEST(CheckedMathDeath, AnUnsignedDifferenceBelowZeroEndsTheProgram) {
    EXPECT_DEATH((void)checkedSub(1U, 2U), "overflow");
}

} // namespace
} // namespace vellmoor
