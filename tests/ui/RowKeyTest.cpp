// By what rows of a list are known.
#include "RowKey.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace vellmoor {
namespace {

TEST(RowKey, IsTheSameForTheSameTexts) {
    EXPECT_EQ(RowKey().with("junk").with("a"), RowKey().with("junk").with("a"));
    EXPECT_EQ(RowKey(std::string("junk")), RowKey().with("junk"));
}

TEST(RowKey, DiffersWhereATextEndsElsewhere) {
    const std::set<RowKey> keys{RowKey(),
                                RowKey().with("ab"),
                                RowKey().with("a").with("b"),
                                RowKey().with("").with("ab"),
                                RowKey().with("ab").with(""),
                                RowKey().with("ab").with(0),
                                RowKey().with("ab").with(1)};
    EXPECT_EQ(keys.size(), 7U);
}

TEST(RowKeys, TellWhereAKeyStands) {
    RowKeys keys(1000);
    for (int number = 0; number < 1000; ++number) {
        EXPECT_TRUE(keys.add(RowKey().with(number)));
    }
    EXPECT_FALSE(keys.add(RowKey().with(7)));
    EXPECT_EQ(keys.find(RowKey().with(999)), 999);
    EXPECT_EQ(keys.find(RowKey().with(1000)), -1);
}

TEST(DistinctKeys, TellThingsOfTheSameNameApartByTheirOrder) {
    DistinctKeys keys(4);
    const RowKey first = keys.next(std::string("a"));
    const RowKey other = keys.next(std::string("b"));
    const RowKey second = keys.next(std::string("a"));
    const RowKey third = keys.next(std::string("a"));
    EXPECT_EQ(first, RowKey(std::string("a")));
    EXPECT_EQ(std::set({first, other, second, third}).size(), 4U);
    DistinctKeys again(4);
    (void)again.next(std::string("a"));
    EXPECT_EQ(again.next(std::string("a")), second) << "the same order gives the same keys";
}

} // namespace
} // namespace vellmoor
