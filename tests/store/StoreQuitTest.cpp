// Quitting an application: what is said of it, the offer to end it, and the memory state that is read again.
#include "StoreActionsFixture.h"
#include "texts/L.h"

#include <QTimer>
#include <gmock/gmock.h>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

MemoryApp app(const std::string& name) {
    MemoryApp made;
    made.name = name;
    return made;
}

class StoreQuit : public StoreActions {
protected:
    std::string statusAfter(QuitOutcome outcome) {
        service->onQuit([outcome](const MemoryApp&) { return outcome; });
        const auto statuses = statusesFromNow();
        store->quitMemoryApp(app("Editor"));
        processUntil([&] { return !statuses->empty(); });
        return statuses->front();
    }

    /// Waits until the moment after a quit is over: a timer of the same length that was started later fired.
    void awaitRefresh() {
        bool over = false;
        QTimer::singleShot(0, store.get(), [&over] { over = true; });
        processUntil([&over] { return over; });
    }
};

TEST_F(StoreQuit, AsksTheApplication) {
    statusAfter(QuitOutcome::Requested);
    ASSERT_EQ(service->quits().size(), 1U);
    EXPECT_EQ(service->quits().front().name, "Editor");
}

TEST_F(StoreQuit, SaysThatItWasRequested) {
    EXPECT_EQ(statusAfter(QuitOutcome::Requested), "Requested to quit Editor. Memory status will refresh shortly.");
}

TEST_F(StoreQuit, SaysThatThereWasNoResponse) {
    EXPECT_EQ(statusAfter(QuitOutcome::NoResponse),
              "Editor did not respond to the quit request. You can quit it in Activity Monitor.");
}

TEST_F(StoreQuit, SaysOnLinuxThatTheApplicationMayWait) {
    L::setTextSet(TextSet::Linux);
    EXPECT_EQ(statusAfter(QuitOutcome::NoResponse),
              "Editor did not respond to the quit request. It may be waiting for you.");
}

TEST_F(StoreQuit, SaysThatTheApplicationDoesNotRun) {
    EXPECT_EQ(statusAfter(QuitOutcome::NotRunning), "Editor is not currently running.");
}

TEST_F(StoreQuit, OffersToEndWhatCannotBeAskedAndDoesNothingOfItself) {
    service->onQuit([](const MemoryApp&) { return QuitOutcome::CannotAsk; });
    std::vector<MemoryApp> offered;
    QObject::connect(store.get(), &CleanerStore::endOffered, [&](const MemoryApp& app) { offered.push_back(app); });
    MemoryApp editor = app("Editor");
    editor.id = "/usr/share/applications/editor.desktop";
    editor.pids = {10, 11};
    editor.starts = {500, 501};
    store->quitMemoryApp(editor);
    processUntil([&] { return !offered.empty(); });
    ASSERT_EQ(offered.size(), 1U);
    EXPECT_EQ(offered.front().id, editor.id);
    EXPECT_EQ(offered.front().pids, editor.pids);
    EXPECT_EQ(offered.front().starts, editor.starts);
    EXPECT_THAT(service->ends(), IsEmpty());
}

TEST_F(StoreQuit, EndsTheApplicationThatItIsTold) {
    service->onEnd([](const MemoryApp&) { return QuitOutcome::Requested; });
    const auto statuses = statusesFromNow();
    store->endMemoryApp(app("Editor"));
    processUntil([&] { return !statuses->empty(); });
    EXPECT_EQ(statuses->front(), "Requested to quit Editor. Memory status will refresh shortly.");
    ASSERT_EQ(service->ends().size(), 1U);
    EXPECT_EQ(service->ends().front().name, "Editor");
    EXPECT_THAT(service->quits(), IsEmpty());
}

TEST_F(StoreQuit, ReadsTheMemoryStateAgainOnTheMemoryPage) {
    store->show(CleanerModule::memoryOptimization);
    statusAfter(QuitOutcome::Requested);
    processUntil([this] { return store->isScanning(); });
    awaitEnd();
    EXPECT_THAT(service->scans(), ElementsAre(CleanerModule::memoryOptimization));
}

TEST_F(StoreQuit, ReadsNothingAgainOnAnotherPage) {
    store->show(CleanerModule::trash);
    statusAfter(QuitOutcome::Requested);
    awaitRefresh();
    EXPECT_FALSE(store->isScanning());
    EXPECT_THAT(service->scans(), IsEmpty());
}

TEST_F(StoreQuit, ReadsTheMemoryStateOnceForTwoQuitsInARow) {
    store->show(CleanerModule::memoryOptimization);
    store->quitMemoryApp(app("Editor"));
    store->quitMemoryApp(app("Player"));
    awaitPosts();
    processUntil([this] { return !service->scans().empty(); });
    awaitEnd();
    awaitRefresh();
    EXPECT_EQ(service->scans().size(), 1U);
}

TEST_F(StoreQuit, AnOutcomeAfterTheStoresDeathIsDropped) {
    const auto gate = std::make_shared<Gate>();
    service->onQuit([gate](const MemoryApp&) {
        gate->pass();
        return QuitOutcome::Requested;
    });
    store->quitMemoryApp(app("Editor"));
    gate->awaitVisitor();
    EXPECT_FALSE(store->shutDown(std::chrono::milliseconds(0)));
    store.reset();
    gate->open();
    awaitWorkers();
    EXPECT_EQ(service.use_count(), 1);
}

} // namespace
} // namespace vellmoor
