// How a walk ends before its end, and what its threads do.
#include "Recorder.h"
#include "TemporaryFolder.h"
#include "Walk.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <stdexcept>

namespace vellmoor::walk::test {
namespace {

using ::testing::Each;
using ::testing::Pair;
using ::testing::SizeIs;
using vellmoor::test::TemporaryFolder;

// Folders "0" to "n-1" with files "0" to "m-1".
void fill(const TemporaryFolder& home, int folders, int files) {
    for (int i = 0; i < folders; ++i) {
        for (int j = 0; j < files; ++j) {
            home.file(std::to_string(i) + "/" + std::to_string(j));
        }
    }
}

class Counter : public Visitor {
public:
    Action entry(const Entry&, unsigned) override { return onEntry(++visits); }
    std::function<Action(unsigned)> onEntry = [](unsigned) { return Action::Continue; };
    std::atomic<unsigned> visits{0};
};

class WalkEnd : public ::testing::TestWithParam<unsigned> {};
INSTANTIATE_TEST_SUITE_P(Threads, WalkEnd, ::testing::Values(1U, 2U, 8U), ::testing::PrintToStringParamName());

TEST_P(WalkEnd, ACancelledWalkVisitsAtMostAHundredEntriesMorePerWorker) {
    const TemporaryFolder home;
    fill(home, 20, 100);
    for (unsigned when = 400; when < 700; when += 25) { // wherever it hits between two looks at the flag
        std::atomic<bool> cancelled{false};
        Options options;
        options.threads = GetParam();
        options.cancelled = &cancelled;
        Counter counter;
        std::atomic<unsigned> after{0}; // whoever comes to the moment may lose its processor before it cancels
        counter.onEntry = [&](unsigned visit) {
            after += cancelled ? 1 : 0;
            if (visit >= when) {
                cancelled = true;
            }
            return Action::Continue;
        };
        EXPECT_EQ(walk(home.path(), options, counter), Outcome::Cancelled);
        EXPECT_GE(counter.visits, when);
        EXPECT_LE(after, 100U * GetParam());
    }
}

TEST_P(WalkEnd, NothingIsVisitedWhenCancelledBefore) {
    const TemporaryFolder home;
    fill(home, 1, 1);
    const std::atomic<bool> cancelled{true};
    Options options;
    options.threads = GetParam();
    options.cancelled = &cancelled;
    Counter counter;
    EXPECT_EQ(walk(home.path(), options, counter), Outcome::Cancelled);
    EXPECT_EQ(counter.visits, 0U);
}

TEST_P(WalkEnd, ACancelledWalkAlsoEndsInAFolderOfHiddenNames) {
    const TemporaryFolder home;
    home.file("first");
    for (int i = 0; i < 1000; ++i) {
        home.file("folder/." + std::to_string(i));
    }
    std::atomic<bool> cancelled{false};
    Options options;
    options.threads = GetParam();
    options.cancelled = &cancelled;
    Counter counter;
    counter.onEntry = [&](unsigned) {
        cancelled = true;
        return Action::Continue;
    };
    EXPECT_EQ(walk(home.path(), options, counter), Outcome::Cancelled);
}

TEST_P(WalkEnd, StopEndsTheWholeWalk) {
    const TemporaryFolder home;
    fill(home, 20, 100);
    Options options;
    options.threads = GetParam();
    Counter counter;
    counter.onEntry = [](unsigned visit) { return visit >= 500 ? Action::Stop : Action::Continue; };
    EXPECT_EQ(walk(home.path(), options, counter), Outcome::Stopped);
    EXPECT_LT(counter.visits, 500U + GetParam()); // each worker's own Stop is its last visit
}

TEST_P(WalkEnd, StopForAFolderEndsTheWholeWalk) {
    const TemporaryFolder home;
    home.file("a/b/c");
    Options options;
    options.threads = GetParam();
    options.wantsNames = true;
    Recorder recorder(home.path());
    recorder.onDirectory = [](const Directory&) { return Action::Stop; };
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Stopped);
    EXPECT_EQ(recorder.visits, 1U);
}

TEST_P(WalkEnd, WhatAVisitorThrowsReachesTheCaller) {
    const TemporaryFolder home;
    fill(home, 20, 100);
    Options options;
    options.threads = GetParam();
    Counter counter;
    counter.onEntry = [](unsigned visit) -> Action {
        if (visit >= 1000) {
            throw std::runtime_error("thrown");
        }
        return Action::Continue;
    };
    EXPECT_THROW(static_cast<void>(walk(home.path(), options, counter)), std::runtime_error);
}

TEST_P(WalkEnd, EachWorkerIsOneThreadAndItsNumberIsBelowTheNumberOfThreads) {
    const TemporaryFolder home;
    fill(home, 20, 100);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.threadsOfWorker, Each(Pair(::testing::Lt(GetParam()), SizeIs(1))));
    EXPECT_EQ(recorder.visits, 20U * 101U);
}

TEST(WalkThreads, ASmallTreeIsWalkedByTheCallerAlone) {
    const TemporaryFolder home;
    fill(home, 3, 5);
    Recorder recorder(home.path());
    (void)record(recorder, home.path(), 8);
    EXPECT_EQ(recorder.visits, 18U);
    EXPECT_THAT(recorder.threadsOfWorker,
                ::testing::ElementsAre(Pair(0U, ::testing::ElementsAre(std::this_thread::get_id()))));
}

TEST(WalkThreads, AHelperTakesWaitingFoldersWhileTheCallerIsBusy) {
    class Waiting : public Visitor {
    public:
        Action entry(const Entry&, unsigned worker) override {
            std::unique_lock lock(mutex);
            helperCame = helperCame || worker != 0;
            changed.notify_all();
            if (worker == 0 && ++visits > 500) {
                changed.wait_for(lock, std::chrono::seconds(30), [this] { return helperCame; });
            }
            return helperCame ? Action::Stop : Action::Continue;
        }
        std::mutex mutex;
        std::condition_variable changed;
        int visits = 0;
        bool helperCame = false;
    };
    const TemporaryFolder home;
    fill(home, 20, 100);
    Waiting visitor;
    Options options;
    options.threads = 2;
    EXPECT_EQ(walk(home.path(), options, visitor), Outcome::Stopped);
    EXPECT_TRUE(visitor.helperCame);
}

TEST(WalkThreads, ThereIsAtLeastOneWorker) {
    Options options;
    EXPECT_GE(workerCount(options), 1U);
    options.threads = 5;
    EXPECT_EQ(workerCount(options), 5U);
}

} // namespace
} // namespace vellmoor::walk::test
