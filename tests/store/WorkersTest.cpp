#include "Workers.h"

#include "StoreFixture.h"

#include <QObject>
#include <QThread>
#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WorkersTest : public StoreFixture {
protected:
    QObject receiver;
    std::shared_ptr<Workers> workers = std::make_shared<Workers>(receiver);
    std::vector<int> seen;
};

TEST_F(WorkersTest, BringPostsBackInOrderOnTheReceiversThread) {
    workers->start([this] {
        for (int i = 0; i < 3; ++i) {
            workers->post([this, i] {
                EXPECT_EQ(QThread::currentThread(), receiver.thread());
                seen.push_back(i);
            });
        }
    });
    processUntil([this] { return seen.size() == 3; });
    EXPECT_THAT(seen, ElementsAre(0, 1, 2));
}

TEST_F(WorkersTest, RunJobsOffTheReceiversThread) {
    const QThread* ran = receiver.thread();
    workers->start([&ran] { ran = QThread::currentThread(); });
    ASSERT_TRUE(workers->waitUntilIdle(std::chrono::seconds(30)));
    EXPECT_NE(ran, receiver.thread());
}

TEST_F(WorkersTest, DropWhatWasPostedWhenCut) {
    workers->post([this] { seen.push_back(1); });
    workers->cut();
    workers->post([this] { seen.push_back(2); });
    processQueued();
    EXPECT_THAT(seen, IsEmpty());
}

TEST_F(WorkersTest, RunNoFurtherPostWhenAPostCuts) {
    workers->post([this] {
        seen.push_back(1);
        workers->cut();
    });
    workers->post([this] { seen.push_back(2); });
    processQueued();
    EXPECT_THAT(seen, ElementsAre(1));
}

TEST_F(WorkersTest, AreIdleBeforeTheFirstJob) {
    EXPECT_TRUE(workers->waitUntilIdle(std::chrono::milliseconds(0)));
}

TEST_F(WorkersTest, AreNotIdleWhileAJobRuns) {
    Gate gate;
    workers->start([&gate] { gate.pass(); });
    EXPECT_FALSE(workers->waitUntilIdle(std::chrono::milliseconds(0)));
    gate.open();
    EXPECT_TRUE(workers->waitUntilIdle(std::chrono::seconds(30)));
}

TEST_F(WorkersTest, LetGoOfWhatAJobHeldBeforeTheyAreIdle) {
    const auto held = std::make_shared<int>(1);
    workers->start([held] {});
    ASSERT_TRUE(workers->waitUntilIdle(std::chrono::seconds(30)));
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace vellmoor
