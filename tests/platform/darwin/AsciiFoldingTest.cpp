#include "values/AsciiFolding.h"

#include <gtest/gtest.h>

namespace vellmoor::mac {
namespace {

TEST(AsciiFolding, OnlyTheLettersOfAsciiAreFolded) {
    EXPECT_EQ(asciiLower("AbZ@[\xc4"), "abz@[\xc4");
    EXPECT_EQ(asciiLower(""), "");
}

TEST(AsciiFolding, OnlyLettersAndDigitsAreKept) {
    EXPECT_EQ(asciiLettersAndDigits("A-z 0_9/\xff:`{"), "az09");
    EXPECT_EQ(asciiLettersAndDigits("\xff"), "");
}

} // namespace
} // namespace vellmoor::mac
