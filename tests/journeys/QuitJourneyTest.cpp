// A running application is asked to end from the memory page.
#include "Journey.h"
#include "RunningApp.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace vellmoor::journey {
namespace {

class QuitJourney : public JourneyInEachLanguage {
protected:
    QuitJourney() {
        RunningApp::install();
        QObject::connect(store.get(), &CleanerStore::statusMessageChanged, store.get(),
                         [this] { said.push_back(store->statusMessage()); });
    }
    /// Opens the memory page on that process alone.
    void openPage(const RunningApp& app) {
        waitFor("the application", [] { return RunningApp::note() == "ready\n"; });
        app.list();
        open();
        show(CleanerModule::memoryOptimization);
        scan();
        ASSERT_EQ(store->memoryApps().size(), 1U);
        ASSERT_EQ(store->memoryApps().front().name, "Sleeper");
        ASSERT_THAT(store->memoryApps().front().pids, ::testing::ElementsAre(app.pid()));
    }
    [[nodiscard]] bool wasSaid(const char* key) const {
        return std::ranges::find(said, L::tr(key, "Sleeper")) != said.end();
    }

    std::vector<std::string> said;
};
IN_BOTH_LANGUAGES(QuitJourney);

// The application has neither a window nor a name on the bus: there is no way to ask it.

TEST_P(QuitJourney, AnApplicationThatCannotBeAskedIsEndedAfterASecondQuestion) {
    const RunningApp app;
    openPage(app);
    click(QStringLiteral("memoryApp.0.quit"));
    click(QStringLiteral("confirmQuit.accept"));
    waitFor("the second question", [&] { return isShown(QStringLiteral("confirmEnd.accept")); });
    EXPECT_EQ(textOf(QStringLiteral("confirmEnd.message")), tr("%@ 只能被结束，未保存的内容会丢失。", "Sleeper"));
    EXPECT_EQ(RunningApp::note(), "ready\n") << "it was signalled before the user agreed";
    click(QStringLiteral("confirmEnd.accept"));
    waitFor("the application to end", [&] { return !app.runs(); });
    EXPECT_TRUE(app.endedByItself());
    EXPECT_EQ(RunningApp::note(), "ready\nasked\n");
    waitFor("the page to be read again", [&] { return store->memoryApps().empty() && !store->isScanning(); });
    EXPECT_TRUE(wasSaid("已请求退出 %@，稍后刷新内存状态。"));
    EXPECT_FALSE(isShown(QStringLiteral("memoryApp.0")));
}

TEST_P(QuitJourney, CancellingTheQuestionAsksNobody) {
    const RunningApp app;
    openPage(app);
    click(QStringLiteral("memoryApp.0.quit"));
    click(QStringLiteral("confirmQuit.cancel"));
    scan();
    EXPECT_TRUE(app.runs());
    EXPECT_EQ(RunningApp::note(), "ready\n");
}

TEST_P(QuitJourney, CancellingTheSecondQuestionEndsNobody) {
    const RunningApp app;
    openPage(app);
    click(QStringLiteral("memoryApp.0.quit"));
    click(QStringLiteral("confirmQuit.accept"));
    waitFor("the second question", [&] { return isShown(QStringLiteral("confirmEnd.cancel")); });
    click(QStringLiteral("confirmEnd.cancel"));
    scan();
    EXPECT_TRUE(app.runs());
    EXPECT_EQ(RunningApp::note(), "ready\n");
}

TEST_P(QuitJourney, AnApplicationThatDoesNotWantToEndIsNeverKilled) {
    const RunningApp app({QStringLiteral("stubborn")});
    openPage(app);
    click(QStringLiteral("memoryApp.0.quit"));
    click(QStringLiteral("confirmQuit.accept"));
    waitFor("the second question", [&] { return isShown(QStringLiteral("confirmEnd.accept")); });
    click(QStringLiteral("confirmEnd.accept"));
    waitFor("the answer", [&] { return wasSaid("%@ 未响应退出请求，可在活动监视器中结束。"); });
    EXPECT_TRUE(app.runs());
    EXPECT_EQ(RunningApp::note(), "ready\nasked\n");
}

TEST_P(QuitJourney, AnApplicationThatEndedMeanwhileIsSaidToBeGone) {
    auto app = std::make_unique<RunningApp>();
    openPage(*app);
    app.reset();
    click(QStringLiteral("memoryApp.0.quit"));
    click(QStringLiteral("confirmQuit.accept"));
    waitFor("the answer", [&] { return wasSaid("%@ 当前未运行。"); });
}

TEST_P(QuitJourney, TheQuestionGoesAwayWhenItsApplicationEndsAndTheListIsReadAgain) {
    auto app = std::make_unique<RunningApp>();
    openPage(*app);
    click(QStringLiteral("memoryApp.0.quit"));
    app.reset();
    store->scan(CleanerModule::memoryOptimization, false);
    waitFor("the question to go away", [&] { return !isShown(QStringLiteral("confirmQuit.accept")); });
    EXPECT_TRUE(wasSaid("%@ 已不在列表中。"));
}

TEST_P(QuitJourney, TheQuestionIsNotAboutTheSameProgramStartedAnew) {
    auto app = std::make_unique<RunningApp>();
    openPage(*app);
    click(QStringLiteral("memoryApp.0.quit"));
    app.reset();
    const RunningApp anew;
    anew.list();
    store->scan(CleanerModule::memoryOptimization, false);
    waitFor("the question to go away", [&] { return !isShown(QStringLiteral("confirmQuit.accept")); });
    EXPECT_EQ(store->memoryApps().size(), 1U);
    EXPECT_TRUE(anew.runs());
}

} // namespace
} // namespace vellmoor::journey
