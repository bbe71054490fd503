#include "CancelToken.h"
#include "found/ScanSnapshot.h"
#include "found/Tint.h"

#include <gtest/gtest.h>

#include <set>
#include <thread>

namespace vellmoor {
namespace {

TEST(CancelToken, IsSetOnceAndForAll) {
    CancelToken token;
    EXPECT_FALSE(token.isCancelled());
    EXPECT_FALSE(token.flag());
    token.cancel();
    token.cancel();
    EXPECT_TRUE(token.isCancelled());
    EXPECT_TRUE(token.flag());
}

TEST(CancelToken, IsSeenByAnotherThread) {
    CancelToken token;
    std::thread worker([&token] {
        while (!token.isCancelled()) {
            std::this_thread::yield();
        }
    });
    token.cancel();
    worker.join();
    EXPECT_TRUE(token.isCancelled());
}

TEST(Tints, HaveNamesOfTheirOwn) {
    const std::set<std::string_view> names{
        tintName(Tint::cyan),   tintName(Tint::teal), tintName(Tint::mint), tintName(Tint::green),
        tintName(Tint::orange), tintName(Tint::red),  tintName(Tint::pink), tintName(Tint::purple),
        tintName(Tint::indigo), tintName(Tint::blue), tintName(Tint::gray),
    };
    EXPECT_EQ(names, (std::set<std::string_view>{"cyan", "teal", "mint", "green", "orange", "red", "pink", "purple",
                                                 "indigo", "blue", "gray"}));
}

TEST(Records, OfAScanGetIdentitiesOfTheirOwn) {
    EXPECT_NE(FileCandidate().id, FileCandidate().id);
    EXPECT_NE(StorageSegment().id, StorageSegment().id);
    EXPECT_NE(PermissionHint().id, PermissionHint().id);
}

TEST(PathStats, EqualAnotherWithTheSameTotals) {
    EXPECT_EQ((PathStats{1, 2}), (PathStats{1, 2}));
    EXPECT_NE((PathStats{1, 2}), (PathStats{1, 3}));
}

} // namespace
} // namespace vellmoor
