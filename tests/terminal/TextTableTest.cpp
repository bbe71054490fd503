#include "TextTable.h"

#include <gmock/gmock.h>

namespace vellmoor::terminal {
namespace {

using ::testing::ElementsAre;

TEST(Cells, AreTwoForChineseAndEmojiAndNoneForMarks) {
    EXPECT_EQ(cells("abc"), 3U);
    EXPECT_EQ(cells("废纸篓"), 6U);
    EXPECT_EQ(cells("（全角）"), 8U);
    EXPECT_EQ(cells("😀"), 2U);
    EXPECT_EQ(cells("e\xcc\x81"), 1U);
    EXPECT_EQ(cells("a\nb"), 2U);
    EXPECT_EQ(cells("caf\xe9"), 4U);
}

TEST(Fitted, CutsWithAnEllipsisAndNeverThroughAWideCharacter) {
    EXPECT_EQ(fitted("abcdef", 6), "abcdef");
    EXPECT_EQ(fitted("abcdef", 5), "abcd…");
    EXPECT_EQ(fitted("废纸篓里", 6), "废纸…");
    EXPECT_EQ(fitted("a\n\x1b[31mb", 40), "a[31mb");
    EXPECT_EQ(fitted("ab", 0), "");
}

TEST(TextTables, SetTheirColumnsUnderEachOtherWhateverTheScript) {
    TextTable table({{Side::Left, 10}, {Side::Right, 10}, {Side::Left, 4}});
    table.add({"系统", "1 KB", "x"});
    table.add({"System", "605.7 MB", "too long"});
    table.add({"short"});
    EXPECT_THAT(table.lines(), ElementsAre("系统        1 KB  x", "System  605.7 MB  too…", "short"));
}

} // namespace
} // namespace vellmoor::terminal
