#include "PercentText.h"

#include <gtest/gtest.h>

namespace vellmoor {
namespace {

TEST(PercentText, PlainNamesAndSlashesStayAsTheyAre) {
    EXPECT_EQ(percentEncoded("/home/anna/a-b_c.d!~*'()"), "/home/anna/a-b_c.d!~*'()");
}

TEST(PercentText, EverythingElseBecomesHexadecimal) {
    EXPECT_EQ(percentEncoded("a b\n%\xff?"), "a%20b%0A%25%FF%3F");
    EXPECT_EQ(percentEncoded("文"), "%E6%96%87");
}

TEST(PercentText, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    EXPECT_EQ(percentDecoded(percentEncoded(all)), all);
}

TEST(PercentText, APercentSignWithoutDigitsStandsForItself) {
    EXPECT_EQ(percentDecoded("100%"), "100%");
    EXPECT_EQ(percentDecoded("%4"), "%4");
    EXPECT_EQ(percentDecoded("%zz%41%4a%4A"), "%zzAJJ");
}

} // namespace
} // namespace vellmoor
