// The program above macOS's shell, which is played here: what a click does, and in what order the program ends.
#include "MacProgram.h"

#include "PlayedShell.h"
#include "RecordingDesktop.h"
#include "SampleData.h"
#include "ScriptedCleanerService.h"

#include <QCoreApplication>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using namespace std::chrono_literals;

class MacProgramTest : public ::testing::Test {
protected:
    void SetUp() override {
        service_->onScan(
            [](CleanerModule module, const ProgressCallback&, const CancelToken&) { return sample::snapshot(module); });
    }

    void scanAndClean(Gate& gate) {
        service_->onClean([&gate](const std::vector<CleanupItem>&) {
            gate.pass();
            return CleanupReport{};
        });
        keeper_.store()->scan(CleanerModule::smartScan, false);
        ASSERT_TRUE(QTest::qWaitFor([&] { return keeper_.store()->hasResult(CleanerModule::smartScan); }, 60000));
        keeper_.store()->cleanSelected(CleanerModule::smartScan);
        gate.awaitVisitor();
    }

    std::shared_ptr<ScriptedCleanerService> service_ = std::make_shared<ScriptedCleanerService>();
    RecordingDesktop desktop_;
    PlayedShell shell_;
    LanguageManager languages_{
        {.read = [] { return std::optional<std::string>("en"); }, .write = [](const std::string&) {}}, std::nullopt};
    WindowKeeper keeper_{service_, languages_, desktop_, frontingBy(shell_)};
    MacProgram program_{shell_, keeper_, 60s};
};

TEST_F(MacProgramTest, TheWindowComesWithTheStartAndAgainWithAClickOnTheDock) {
    ASSERT_TRUE(program_.start());
    ASSERT_NE(keeper_.window(), nullptr);
    EXPECT_EQ(shell_.calls.front(), "activate");
    keeper_.window()->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return keeper_.window() == nullptr; }, 60000));
    shell_.handlers.showMainWindow();
    EXPECT_NE(keeper_.window(), nullptr);
    EXPECT_THAT(shell_.alerts, IsEmpty());
}

TEST_F(MacProgramTest, TheLoopEndsAtOnceWhenNothingIsCleaned) {
    ASSERT_TRUE(program_.start());
    QTimer::singleShot(0, &program_, [&] { shell_.handlers.quit(); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_FALSE(keeper_.window()->isVisible());
}

TEST_F(MacProgramTest, AQuitWaitsForTheCleanWhileTheLoopGoesOn) {
    ASSERT_TRUE(program_.start());
    Gate gate;
    scanAndClean(gate);
    shell_.handlers.quit();
    EXPECT_FALSE(keeper_.window()->isVisible());
    bool isOpened = false;
    QTimer::singleShot(300ms, &program_, [&] {
        isOpened = true;
        gate.open();
    });
    EXPECT_EQ(QCoreApplication::exec(), 0);
    EXPECT_TRUE(isOpened); // not before
    EXPECT_FALSE(keeper_.isCleaning());
}

TEST_F(MacProgramTest, AQuitThatQtIsAskedForGoesTheSameWay) {
    ASSERT_TRUE(program_.start());
    Gate gate;
    scanAndClean(gate);
    QEvent quit(QEvent::Quit);
    QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
    EXPECT_FALSE(quit.isAccepted()); // Qt tells AppKit "not now"
    EXPECT_FALSE(keeper_.window()->isVisible());
    QTimer::singleShot(100ms, &program_, [&] { gate.open(); });
    EXPECT_EQ(QCoreApplication::exec(), 0);
}

TEST_F(MacProgramTest, AProgramThatEndsShowsNoWindow) {
    ASSERT_TRUE(program_.start());
    Gate gate;
    scanAndClean(gate);
    shell_.handlers.quit();
    shell_.handlers.showMainWindow();
    EXPECT_FALSE(keeper_.window()->isVisible());
    QTimer::singleShot(0, &program_, [&] { gate.open(); });
    QCoreApplication::exec();
}

TEST_F(MacProgramTest, TheSystemHearsFromTheFirstWorkToTheLast) {
    ASSERT_TRUE(program_.start());
    shell_.calls.clear();
    Gate gate;
    scanAndClean(gate);
    EXPECT_THAT(shell_.calls, ::testing::Contains("busy"));
    gate.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return shell_.calls.back() == "idle"; }, 60000));
}

TEST_F(MacProgramTest, ACleanWhoseWindowIsToCloseKeepsTheSystemAwakeToItsEnd) {
    ASSERT_TRUE(program_.start());
    Gate gate;
    scanAndClean(gate);
    keeper_.window()->close();
    EXPECT_NE(keeper_.window(), nullptr) << "the user is asked first";
    EXPECT_TRUE(keeper_.isCleaning());
    EXPECT_NE(shell_.calls.back(), "idle");
    gate.open();
    ASSERT_TRUE(QTest::qWaitFor([&] { return shell_.calls.back() == "idle"; }, 60000));
}

TEST(EditOrder, TheWindowIsAskedFirstAndAppKitOnlyForWhatItLeaves) {
    std::vector<std::string> asked;
    const auto window = [&](bool takes) {
        return [&asked, takes](std::string_view action) {
            asked.push_back("window " + std::string(action));
            return takes;
        };
    };
    const auto responders = [&] { asked.emplace_back("responders"); };
    performEdit("copy:", window(true), responders);
    EXPECT_THAT(asked, ElementsAre("window copy:"));
    asked.clear();
    performEdit("copy:", window(false), responders);
    EXPECT_THAT(asked, ElementsAre("window copy:", "responders"));
    asked.clear();
    performEdit("copy:", {}, responders);
    EXPECT_THAT(asked, ElementsAre("responders"));
}

} // namespace
} // namespace vellmoor
