// The window that goes when it is closed and comes back when it is asked for.
#include "WindowKeeper.h"

#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using namespace std::chrono_literals;

class WindowKeeperTest : public ::testing::Test {
protected:
    void SetUp() override {
        service_->onScan(
            [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::snapshot(module); });
    }

    static void runEvents() {
        for (int turn = 0; turn < 4; ++turn) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }

    /// Starts a scan as the user does, by the window's key.
    void startScan() {
        ASSERT_TRUE(QTest::qWaitForWindowActive(keeper_.window(), 60000));
        QTest::keyClick(keeper_.window(), Qt::Key_F5);
    }

    std::shared_ptr<ScriptedCleanerService> service_ = std::make_shared<ScriptedCleanerService>();
    RecordingDesktop desktop_;
    std::vector<std::string> fronted_;
    LanguageManager languages_{
        {.read = [] { return std::optional<std::string>("en"); }, .write = [](const std::string&) {}}, std::nullopt};
    WindowKeeper keeper_{service_,
                         languages_,
                         desktop_,
                         {.activate = [this] { fronted_.emplace_back("activate"); },
                          .raise =
                              [this](QQuickWindow& window) {
                                  fronted_.emplace_back(window.isVisible() ? "raise" : "raise while hidden");
                                  window.requestActivate();
                              }}};
};

TEST_F(WindowKeeperTest, ThereIsNoWindowUntilItIsAskedFor) {
    EXPECT_EQ(keeper_.window(), nullptr);
    ASSERT_TRUE(keeper_.show().has_value());
    ASSERT_NE(keeper_.window(), nullptr);
    EXPECT_TRUE(keeper_.window()->isVisible());
}

TEST_F(WindowKeeperTest, ANewWindowIsBroughtToTheFrontOnceMoreWhenTheSystemHasPlacedIt) {
    ASSERT_TRUE(keeper_.show().has_value());
    EXPECT_THAT(fronted_, ElementsAre("activate", "raise"));
    runEvents();
    EXPECT_THAT(fronted_, ElementsAre("activate", "raise", "activate", "raise"));
}

TEST_F(WindowKeeperTest, AnOpenWindowIsOnlyBroughtToTheFront) {
    ASSERT_TRUE(keeper_.show().has_value());
    runEvents();
    fronted_.clear();
    const QPointer<QQuickWindow> window = keeper_.window();
    ASSERT_TRUE(keeper_.show().has_value());
    runEvents();
    EXPECT_EQ(keeper_.window(), window);
    EXPECT_THAT(fronted_, ElementsAre("activate", "raise"));
}

TEST_F(WindowKeeperTest, AClosedWindowGoesWithItsStoreAndANewOneComesUnscanned) {
    ASSERT_TRUE(keeper_.show().has_value());
    const QPointer<QQuickWindow> first = keeper_.window();
    const QPointer<QObject> firstStore = keeper_.store();
    startScan();
    ASSERT_TRUE(QTest::qWaitFor([&] { return keeper_.store()->hasResult(CleanerModule::smartScan); }, 60000));
    keeper_.window()->close();
    runEvents();
    EXPECT_EQ(keeper_.window(), nullptr);
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(firstStore.isNull());
    ASSERT_TRUE(keeper_.show().has_value());
    EXPECT_FALSE(keeper_.store()->hasResult(CleanerModule::smartScan));
}

TEST_F(WindowKeeperTest, AWindowThatIsShownAgainAtOnceStays) {
    ASSERT_TRUE(keeper_.show().has_value());
    const QPointer<QQuickWindow> window = keeper_.window();
    window->close();
    ASSERT_TRUE(keeper_.show().has_value());
    runEvents();
    EXPECT_EQ(keeper_.window(), window);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(WindowKeeperTest, TheProgramsEndWaitsForWhatAClosedWindowStarted) {
    Gate gate;
    service_->onScan([&gate](CleanerModule, const ProgressCallback&, const CancelToken&) {
        gate.pass();
        return ScanSnapshot{};
    });
    ASSERT_TRUE(keeper_.show().has_value());
    startScan();
    gate.awaitVisitor();
    keeper_.window()->close();
    runEvents();
    ASSERT_EQ(keeper_.window(), nullptr);
    EXPECT_FALSE(keeper_.shutDown({.scan = 10ms, .action = 60s}));
    gate.open();
    EXPECT_TRUE(keeper_.shutDown({.scan = 60s, .action = 0ms}));
}

TEST_F(WindowKeeperTest, ACleanIsBroughtToItsEndThoughItsWindowWasClosed) {
    Gate gate;
    bool isClean = false;
    service_->onClean([&](const std::vector<CleanupItem>&) {
        gate.pass();
        isClean = true;
        return CleanupReport{};
    });
    ASSERT_TRUE(keeper_.show().has_value());
    startScan();
    ASSERT_TRUE(QTest::qWaitFor([&] { return keeper_.store()->hasResult(CleanerModule::smartScan); }, 60000));
    keeper_.store()->cleanSelected(CleanerModule::smartScan);
    gate.awaitVisitor();
    keeper_.window()->close();
    runEvents();
    gate.open();
    EXPECT_TRUE(keeper_.shutDown({.scan = 0ms, .action = 60s}));
    EXPECT_TRUE(isClean);
}

TEST_F(WindowKeeperTest, TheWindowsQuitKeyAsksForTheProgramsEnd) {
    QSignalSpy quits(&keeper_, &WindowKeeper::quitAsked);
    ASSERT_TRUE(keeper_.show().has_value());
    QTest::keyClick(keeper_.window(), Qt::Key_Q, Qt::ControlModifier);
    ASSERT_TRUE(quits.size() == 1 || quits.wait(60000));
}

} // namespace
} // namespace vellmoor
