#include "ProcessLine.h"

#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using ::testing::Eq;
using ::testing::Optional;

const std::string rest = " 1 1 34816 -1 4194560 1 2 3 4 5 6 7 8 20 0 1 0 987654 1000 200";

TEST(ProcessLines, AreReadWhateverTheNameHolds) {
    const auto process = parseProcessLine("42 (a) b (c) S 7" + rest);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->pid, 42);
    EXPECT_EQ(process->name, "a) b (c");
    EXPECT_EQ(process->parent, 7);
    EXPECT_EQ(process->terminal, 34816);
    EXPECT_EQ(process->started, 987654U);
}

// The first line is kthreadd's as Linux 6 writes it; flags are the ninth field.
TEST(ProcessLines, TellTheKernelsThreadsFromPrograms) {
    const auto thread = parseProcessLine("2 (kthreadd) S 0 0 0 0 -1 2129984 0 0 0 0 0 6 0 0 20 0 1 0 18 0 0");
    ASSERT_TRUE(thread);
    EXPECT_TRUE(thread->isKernelThread);
    const auto program = parseProcessLine("42 (a) S 7" + rest);
    ASSERT_TRUE(program);
    EXPECT_FALSE(program->isKernelThread);
}

TEST(ProcessLines, OfAnEndedOrUnreadableProcessAreNothing) {
    EXPECT_FALSE(parseProcessLine("42 (a) Z 7" + rest));
    EXPECT_FALSE(parseProcessLine("42 (a) X 7" + rest));
    EXPECT_FALSE(parseProcessLine("42 (a) S x" + rest));
    EXPECT_FALSE(parseProcessLine("42 (a) S 7"));
    EXPECT_FALSE(parseProcessLine("42 a) S 7" + rest));
    EXPECT_FALSE(parseProcessLine("(a) S 7" + rest));
    EXPECT_FALSE(parseProcessLine(""));
}

TEST(ProcessStatus, TellsWhoseRightsAProcessHas) {
    EXPECT_THAT(effectiveUser("Name:\tx\nUid:\t1000\t1001\t1002\t1003\nGid:\t5\t5\t5\t5\n"), Optional(Eq(1001U)));
    EXPECT_FALSE(effectiveUser("Name:\tx\nUid:\t1000\n"));
    EXPECT_FALSE(effectiveUser("Name:\tx\n"));
    EXPECT_FALSE(effectiveUser(""));
}

} // namespace
} // namespace vellmoor
