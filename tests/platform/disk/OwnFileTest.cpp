#include "disk/OwnFile.h"

#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vellmoor {
namespace {

class OwnFiles : public ::testing::Test {
protected:
    [[nodiscard]] static unsigned mode(const Path& path) {
        struct stat status{};
        return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
    }

    test::TemporaryFolder folder_;
    Path path_ = folder_ / "state/vellmoor/kept";
};

TEST_F(OwnFiles, AMissingFileReadsAsEmptyAndIsNotMade) {
    EXPECT_EQ(OwnFile(path_).read(), "");
    EXPECT_FALSE(std::filesystem::exists(path_.parent_path()));
}

TEST_F(OwnFiles, WhatIsReplacedIsReadAgainAndOnlyTheUserMayReadIt) {
    ASSERT_TRUE(OwnFile(path_).replace("first\n"));
    ASSERT_TRUE(OwnFile(path_).replace("second\n"));
    EXPECT_EQ(OwnFile(path_).read(), "second\n");
    EXPECT_EQ(mode(path_), 0600U);
    EXPECT_EQ(mode(path_.parent_path()), 0700U);
    EXPECT_FALSE(std::filesystem::exists(path_.native() + ".new"));
}

TEST_F(OwnFiles, ALinkInThePlaceOfTheFileIsNotFollowed) {
    const Path precious = folder_.text("precious", "mine");
    folder_.link(precious, "state/vellmoor/kept");
    EXPECT_FALSE(OwnFile(path_).read());
    EXPECT_FALSE(OwnLog::open(path_));
    EXPECT_EQ(OwnFile(precious).read(), "mine");
}

TEST_F(OwnFiles, AFailedReplacementLeavesTheOldTextAndSaysWhy) {
    ASSERT_TRUE(OwnFile(path_).replace("old\n"));
    folder_.setMode("state/vellmoor", 0500);
    {
        const test::ScopedUnprivileged asAnybody;
        const Outcome outcome = OwnFile(path_).replace("new\n");
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error(), "Permission denied");
    }
    folder_.setMode("state/vellmoor", 0700);
    EXPECT_EQ(OwnFile(path_).read(), "old\n");
}

TEST_F(OwnFiles, ALogKeepsItsLinesInOrder) {
    auto log = OwnLog::open(path_);
    ASSERT_TRUE(log) << log.error();
    EXPECT_TRUE(log->append("one\n"));
    EXPECT_TRUE(log->append("two\nthree\n"));
    EXPECT_TRUE(log->sync());
    EXPECT_EQ(OwnFile(path_).read(), "one\ntwo\nthree\n");
}

TEST_F(OwnFiles, ALineThatACrashCutOffDoesNotSwallowTheNext) {
    folder_.text("state/vellmoor/kept", "whole\nhal");
    auto log = OwnLog::open(path_);
    ASSERT_TRUE(log) << log.error();
    ASSERT_TRUE(log->append("next\n"));
    EXPECT_EQ(OwnFile(path_).read(), "whole\nhal\nnext\n");
}

TEST_F(OwnFiles, AnAppendThatDoesNotFitIsTakenBack) {
    auto log = OwnLog::open(path_);
    ASSERT_TRUE(log) << log.error();
    ASSERT_TRUE(log->append("first\n"));
    // A limit stands in for the full disk; in a process of its own, since every file of the process is limited.
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{.rlim_cur = 8, .rlim_max = 8};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        ::_exit(log->append("more than two bytes\n") ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(OwnFile(path_).read(), "first\n");
}

TEST_F(OwnFiles, OnlyOneHoldsTheLock) {
    auto first = OwnLock::tryTake(path_);
    ASSERT_TRUE(first) << first.error();
    ASSERT_TRUE(first->has_value());
    const auto second = OwnLock::tryTake(path_);
    ASSERT_TRUE(second);
    EXPECT_FALSE(second->has_value());
    first->reset();
    const auto third = OwnLock::tryTake(path_);
    ASSERT_TRUE(third);
    EXPECT_TRUE(third->has_value());
}

TEST_F(OwnFiles, AProcessThatDiesGivesTheLockBack) {
    const pid_t child = ::fork();
    if (child == 0) {
        const auto lock = OwnLock::tryTake(path_);
        ::_exit(lock && *lock ? 0 : 1);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_EQ(status, 0);
    const auto lock = OwnLock::tryTake(path_);
    ASSERT_TRUE(lock);
    EXPECT_TRUE(lock->has_value());
}

} // namespace
} // namespace vellmoor
