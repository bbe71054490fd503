#include "processes/MemoryText.h"

#include "ProcessLine.h"
#include "memory/MemoryFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::appleVmStat;
using test::linuxMeminfo;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;

TEST(MemoryText, TheHeaderNamesThePageSize) {
    EXPECT_EQ(vmPageSize(appleVmStat), 16384);
    EXPECT_EQ(vmPageSize("Mach Virtual Memory Statistics: (page size of 4096 bytes)\nPages free: 1.\n"), 4096);
}

TEST(MemoryText, AHeaderWithoutDigitsGivesPageSize16384) {
    EXPECT_EQ(vmPageSize("Mach Virtual Memory Statistics:\nPages free: 5.\n"), 16384);
}

TEST(MemoryText, NoTextGivesPageSize16384) {
    EXPECT_EQ(vmPageSize(""), 16384);
    EXPECT_EQ(vmPageSize("\n\n"), 16384);
}

TEST(MemoryText, APageSizeBelowOneOrTooLargeGives16384) {
    EXPECT_EQ(vmPageSize("page size of 0 bytes"), 16384);
    EXPECT_EQ(vmPageSize("page size of 99999999999999999999 bytes"), 16384);
}

TEST(MemoryText, EmptyLinesBeforeTheHeaderAreDropped) {
    EXPECT_EQ(vmPageSize("\n\n(page size of 4096 bytes)\n"), 4096);
}

TEST(MemoryText, AHeaderWithTwoNumbersJoinsTheirDigits) {
    EXPECT_EQ(vmPageSize("page 4 of 096 bytes"), 4096);
}

TEST(MemoryText, ACountIsReadFromTheLineOfItsLabel) {
    EXPECT_EQ(vmPageCount("Pages free", appleVmStat), 32768);
    EXPECT_EQ(vmPageCount("File-backed pages", appleVmStat), 294912);
    EXPECT_EQ(vmPageCount("Pages occupied by compressor", appleVmStat), 98304);
}

TEST(MemoryText, PagesActiveDoesNotMatchPagesInactive) {
    EXPECT_EQ(vmPageCount("Pages active", "Pages inactive: 7.\nPages active: 9.\n"), 9);
    EXPECT_EQ(vmPageCount("Pages active", "Pages inactive: 7.\n"), 0);
}

TEST(MemoryText, ALabelWithItsColonDoesNotMatchALongerLabel) {
    EXPECT_EQ(vmPageCount("Active:", "Active(anon): 4 kB\nActive: 6 kB\n"), 6);
    EXPECT_EQ(vmPageCount("PageTables:", "SecPageTables: 3 kB\nPageTables: 98304 kB\n"), 98304);
    EXPECT_EQ(vmPageCount("Active(file):", linuxMeminfo), 2097152);
}

TEST(MemoryText, ALabelMustStandAtTheStartOfItsLine) {
    EXPECT_EQ(vmPageCount("Pages free", "No Pages free: 5.\n"), 0);
}

TEST(MemoryText, SpacesAndTabsBeforeALabelDoNotMatter) {
    EXPECT_EQ(vmPageCount("Pages free", " \t Pages free:\t12.\n"), 12);
}

TEST(MemoryText, AMissingLabelCountsZero) {
    EXPECT_EQ(vmPageCount("Pages tagged", appleVmStat), 0);
    EXPECT_EQ(labelledCount("Pages tagged", appleVmStat), std::nullopt);
}

TEST(MemoryText, TheFirstOfRepeatedLinesCounts) {
    EXPECT_EQ(vmPageCount("Pages free", "Pages free: 3.\nPages free: 4.\n"), 3);
}

TEST(MemoryText, ALineWithoutANumberCountsZero) {
    EXPECT_EQ(vmPageCount("Pages free", "Pages free: many.\nPages free: 4.\n"), 0);
}

TEST(MemoryText, AMinusSignIsNoPartOfACount) {
    EXPECT_EQ(vmPageCount("Pages free", "Pages free: -12.\n"), 12);
}

TEST(MemoryText, ACountThatDoesNotFitIsZero) {
    EXPECT_EQ(vmPageCount("Pages free", "Pages free: 9223372036854775807.\n"), INT64_MAX);
    EXPECT_EQ(vmPageCount("Pages free", "Pages free: 9223372036854775808.\n"), 0);
}

TEST(MemoryText, AProcessLineHoldsPidKilobytesAndPath) {
    EXPECT_THAT(processMemorySample("  345  123456 /Applications/Safari.app/Contents/MacOS/Safari"),
                Optional(ProcessMemorySample{345, 123456LL * 1024, "/Applications/Safari.app/Contents/MacOS/Safari"}));
}

TEST(MemoryText, AProcessLineKeepsTheSpacesOfItsPath) {
    const auto sample = processMemorySample("  901 81920 /Applications/Visual Studio Code.app/Code Helper (GPU)");
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->command, "/Applications/Visual Studio Code.app/Code Helper (GPU)");
    EXPECT_EQ(processMemorySample("1 2 a  b")->command, "a  b");
}

TEST(MemoryText, BlanksAroundAProcessLineDoNotMatter) {
    EXPECT_EQ(processMemorySample("\t 7\t 1   /bin/zsh \t")->command, "/bin/zsh");
}

TEST(MemoryText, AProcessLineWithFewerThanThreeFieldsIsNone) {
    EXPECT_EQ(processMemorySample(""), std::nullopt);
    EXPECT_EQ(processMemorySample("   "), std::nullopt);
    EXPECT_EQ(processMemorySample("12"), std::nullopt);
    EXPECT_EQ(processMemorySample("12 34"), std::nullopt);
}

TEST(MemoryText, AProcessLineWithAFieldThatIsNoNumberIsNone) {
    EXPECT_EQ(processMemorySample("PID RSS COMM"), std::nullopt);
    EXPECT_EQ(processMemorySample("12 34k /bin/zsh"), std::nullopt);
    EXPECT_EQ(processMemorySample("0x12 34 /bin/zsh"), std::nullopt);
    EXPECT_EQ(processMemorySample("1.5 34 /bin/zsh"), std::nullopt);
}

TEST(MemoryText, AProcessLineWithANumberThatDoesNotFitIsNone) {
    EXPECT_EQ(processMemorySample("2147483648 1 /bin/zsh"), std::nullopt);
    EXPECT_EQ(processMemorySample("1 99999999999999999999 /bin/zsh"), std::nullopt);
    EXPECT_EQ(processMemorySample("1 9223372036854775807 /bin/zsh"), std::nullopt); // its bytes do not fit
}

TEST(MemoryText, NegativeNumbersOfAProcessLineAreKept) {
    EXPECT_THAT(processMemorySample("-1 -2 x"), Optional(ProcessMemorySample{-1, -2048, "x"}));
}

TEST(MemoryText, DecimalTakesASignAndNothingElse) {
    EXPECT_EQ(decimal<std::int32_t>("+5"), 5);
    EXPECT_EQ(decimal<std::int32_t>("-5"), -5);
    EXPECT_EQ(decimal<std::int32_t>("+-5"), std::nullopt);
    EXPECT_EQ(decimal<std::int32_t>(""), std::nullopt);
    EXPECT_EQ(decimal<std::int32_t>("+"), std::nullopt);
    EXPECT_EQ(decimal<std::int32_t>(" 5"), std::nullopt);
    EXPECT_EQ(decimal<std::int32_t>("5 "), std::nullopt);
}

TEST(MemoryText, TheSecondFieldOfStatmIsTheResidentSizeInPages) {
    EXPECT_EQ(residentBytes("2154 371 300 5 0 120 0\n", 4096), 371 * 4096);
}

TEST(MemoryText, AStatmTextWithoutAUsableSecondFieldTellsNothing) {
    EXPECT_EQ(residentBytes("", 4096), std::nullopt);
    EXPECT_EQ(residentBytes("2154\n", 4096), std::nullopt);
    EXPECT_EQ(residentBytes("2154 x 3\n", 4096), std::nullopt);
    EXPECT_EQ(residentBytes("2154 -3 3\n", 4096), std::nullopt);
    EXPECT_EQ(residentBytes("1 9223372036854775807 3\n", 4096), std::nullopt);
}

TEST(MemoryText, TheThirdFieldOfMmStatIsWhatAZramDeviceOccupies) {
    EXPECT_EQ(zramBytes("1073741824 402653184 419430400        0 430000000     2048        0      12        3\n"),
              419430400);
}

TEST(MemoryText, AnMmStatTextWithoutAUsableThirdFieldCountsZero) {
    EXPECT_EQ(zramBytes(""), 0);
    EXPECT_EQ(zramBytes("1 2\n"), 0);
    EXPECT_EQ(zramBytes("1 2 three 4\n"), 0);
    EXPECT_EQ(zramBytes("1 2 -3 4\n"), 0);
    EXPECT_EQ(zramBytes("1 2 99999999999999999999 4\n"), 0);
}

TEST(MemoryText, AStatusValueFollowsItsLabel) {
    const std::string_view status = "Name:\tcat\nPPid:\t4711\nUid:\t1000\t1000\t1000\t1000\n";
    EXPECT_THAT(statusValue(status, "PPid:"), Optional(std::string_view("4711")));
    EXPECT_THAT(statusValue(status, "Uid:"), Optional(std::string_view("1000\t1000\t1000\t1000")));
    EXPECT_EQ(statusValue(status, "Gid:"), std::nullopt);
}

TEST(MemoryText, AVariableIsFoundByItsWholeName) {
    using namespace std::string_view_literals;
    constexpr std::string_view environment = "GIO=1\0GIO_PID=7\0EMPTY=\0TEXT=a=b\0LAST=x"sv;
    EXPECT_THAT(environmentValue(environment, "GIO_PID"), Optional("7"sv));
    EXPECT_THAT(environmentValue(environment, "GIO"), Optional("1"sv));
    EXPECT_THAT(environmentValue(environment, "EMPTY"), Optional(""sv));
    EXPECT_THAT(environmentValue(environment, "TEXT"), Optional("a=b"sv));
    EXPECT_THAT(environmentValue(environment, "LAST"), Optional("x"sv));
    EXPECT_EQ(environmentValue(environment, "GI"), std::nullopt);
    EXPECT_EQ(environmentValue("", "GIO"), std::nullopt);
}

TEST(MemoryText, LinesAreThoseThatHoldSomething) {
    EXPECT_THAT(lines("a\n\nb\n"), ElementsAre("a", "b"));
    EXPECT_THAT(lines("\n"), IsEmpty());
}

TEST(MemoryText, TheLastFieldKeepsTheRest) {
    EXPECT_THAT(fields("  a \t b  c d ", 3), ElementsAre("a", "b", "c d"));
    EXPECT_THAT(fields(" \n ", 3), IsEmpty());
    EXPECT_THAT(fields("a b", 5), ElementsAre("a", "b"));
}

} // namespace
} // namespace vellmoor
