// A Stop inside a removal for good. Foundation asks before each entry as tests/support/foundation plays it.
#include "CancelToken.h"
#include "DarwinSystem.h"
#include "MacPlatform.h"
#include "Stage.h"
#include "TemporaryFolder.h"
#include "trash/TrashSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using test::stage;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class MacRemoval : public ::testing::Test {
protected:
    void SetUp() override {
        test::resetStage();
        test::takeLog();
        trash_ = folder_.folder("Trash");
    }

    void TearDown() override { test::resetStage(); } // it points to what is gone then

    /// `then` happens right before `path` is asked about.
    void before(const Path& path, std::function<void()> then) {
        stage().beforeRemoval = [this, path, then = std::move(then)](const fs::path& asked) {
            asked_.push_back(asked.filename());
            if (asked == path) {
                then();
            }
        };
    }
    void stopBefore(const Path& path) {
        before(path, [this] { stop_.cancel(); });
    }

    [[nodiscard]] Removal remove(const Path& item) const {
        const auto session = platform_.trashSession({.home = {}, .known = {}, .stop = &stop_});
        return session->removeFromTrash({.path = item, .identity = platform_.identity(item)}, {trash_, trash_, trash_});
    }

    [[nodiscard]] bool has(const Path& path) const { return fs::exists(fs::symlink_status(path)); }

    test::TemporaryFolder folder_;
    Path trash_;
    MacPlatform platform_;
    CancelToken stop_;
    std::vector<std::string> asked_;
};

TEST_F(MacRemoval, AStopLeavesTheRestInTheTrashUnderItsName) {
    for (const char* file : {"tree/1", "tree/2/a", "tree/2/b", "tree/3/c", "tree/4"}) {
        folder_.text(Path("Trash") / file, "x");
    }
    stopBefore(trash_ / "tree/2/b");
    const Removal removal = remove(trash_ / "tree");
    EXPECT_EQ(removal.result, RemovalResult::Stopped);
    EXPECT_THAT(removal.reason, IsEmpty());
    EXPECT_FALSE(has(trash_ / "tree/1"));
    EXPECT_FALSE(has(trash_ / "tree/2/a"));
    for (const char* file : {"tree/2/b", "tree/3/c", "tree/4"}) {
        EXPECT_TRUE(has(trash_ / file)) << file;
    }
    EXPECT_THAT(test::takeLog(), IsEmpty()) << "no failure";
}

TEST_F(MacRemoval, AFileThatIsStoppedAtIsNotRemovedThoughFoundationAnswersSo) {
    const Path file = folder_.text("Trash/file", "kept");
    stopBefore(file);
    EXPECT_EQ(remove(file).result, RemovalResult::Stopped);
    EXPECT_EQ(platform_.fileContents(file, 10), "kept");
}

TEST_F(MacRemoval, WithoutAStopAllOfItGoesAndNoLinkIsFollowed) {
    const Path outside = folder_.text("outside/kept", "kept").parent_path();
    folder_.text("Trash/tree/1/a", "x");
    folder_.link(outside, "Trash/tree/2");
    before({}, [] {});
    EXPECT_EQ(remove(trash_ / "tree").result, RemovalResult::Done);
    EXPECT_FALSE(has(trash_ / "tree"));
    EXPECT_TRUE(has(outside / "kept"));
    EXPECT_THAT(asked_, ElementsAre("tree", "1", "a", "2"));
}

TEST_F(MacRemoval, AFailureIsNotTakenForAStop) {
    const Path last = folder_.text("Trash/tree/only", "x");
    before(last, [&] { folder_.text("Trash/tree/late", "came meanwhile"); });
    const Removal removal = remove(trash_ / "tree");
    EXPECT_EQ(removal.result, RemovalResult::Failed);
    EXPECT_THAT(removal.reason, HasSubstr("\"tree\" couldn't be removed"));
    EXPECT_TRUE(has(trash_ / "tree/late"));
    EXPECT_THAT(test::takeLog(), ElementsAre(HasSubstr("Removing from the Trash")));
}

TEST_F(MacRemoval, WhatSomebodyElseRemovedMeanwhileIsGone) {
    const Path last = folder_.text("Trash/tree/only", "x");
    before(last, [&] {
        stop_.cancel();
        fs::remove_all(trash_ / "tree");
    });
    EXPECT_EQ(remove(trash_ / "tree").result, RemovalResult::Done);
}

} // namespace
} // namespace vellmoor
