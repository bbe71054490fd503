// What a clean took, how it comes back, and how a running one is watched and stopped.
#include "WindowFixture.h"

namespace vellmoor {
namespace {

using ::testing::ElementsAre;

class HistoryViewsTest : public WindowTest {
protected:
    void openTrash() {
        service().setHistory(sample::history());
        openScanned(CleanerModule::trash);
        ASSERT_TRUE(window().waitFor([this] { return isVisible("history.0"); }, 10));
    }
    /// A report of a clean that the history knows.
    void cleanIntoHistory() {
        service().setHistory(sample::history());
        service().onClean([](const std::vector<CleanupItem>&) {
            CleanupReport report = sample::cleanReport();
            report.historyId = sample::history().cleans.at(1).id;
            report.trashedBytes = 1'200'000'000;
            report.removedBytes = 300'000'000;
            report.freedNow = 298'000'000;
            report.freedNowMayGrow = true;
            return report;
        });
        openScanned(CleanerModule::systemJunk);
        cleanConfirmed();
        ASSERT_TRUE(window().waitFor([this] { return isVisible("result.putBack"); }, 10));
    }
};
INSTANTIATE_IN_BOTH_LANGUAGES(HistoryViewsTest);

TEST_P(HistoryViewsTest, WithoutAHistoryTheTrashHasTheWholePage) {
    openScanned(CleanerModule::trash);
    EXPECT_FALSE(isVisible("historyList"));
}

TEST_P(HistoryViewsTest, AnUnfinishedCleanStandsFirstAndOffersToBeFinished) {
    openTrash();
    EXPECT_EQ(text("history.0.condition"), tr("未完成"));
    ASSERT_TRUE(window().click(QStringLiteral("history.0.finish")));
    EXPECT_TRUE(isVisible("decide.message"));
    ASSERT_TRUE(window().click(QStringLiteral("decide.cancel")));
    EXPECT_THAT(service().historyCalls(), ::testing::Not(::testing::Contains(::testing::HasSubstr("finish"))));
    ASSERT_TRUE(window().click(QStringLiteral("history.0.finish")));
    ASSERT_TRUE(window().click(QStringLiteral("decide.accept")));
    waitUntilIdle();
    EXPECT_THAT(service().historyCalls(), ::testing::Contains(::testing::HasSubstr("finish")));
}

TEST_P(HistoryViewsTest, OneSomeOrAllItemsOfACleanGoBack) {
    openTrash();
    ASSERT_TRUE(window().click(QStringLiteral("history.1.expand")));
    ASSERT_TRUE(window().click(QStringLiteral("history.1.item.0.putBack")));
    waitUntilIdle();
    ASSERT_TRUE(window().click(QStringLiteral("history.1.item.1.toggle")));
    ASSERT_TRUE(window().click(QStringLiteral("history.1.putBack")));
    waitUntilIdle();
    const std::string id = sample::history().cleans.at(1).id;
    EXPECT_THAT(service().historyCalls(), ::testing::Contains("putBack " + id + " 0"));
    EXPECT_THAT(service().historyCalls(), ::testing::Contains("putBack " + id + " 0 2"));
}

TEST_P(HistoryViewsTest, TheHistoryIsWorkedByTheKeyboard) {
    openTrash();
    QQuickItem* list = window().item(QStringLiteral("historyList"));
    ASSERT_NE(list, nullptr);
    list->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_Down);
    window().press(Qt::Key_Right);
    window().press(Qt::Key_Down);
    window().press(Qt::Key_Menu);
    ASSERT_TRUE(window().click(QStringLiteral("history.1.item.0.menu.putBack")));
    waitUntilIdle();
    EXPECT_THAT(service().historyCalls(), ::testing::Contains("putBack " + sample::history().cleans.at(1).id + " 0"));
    window().press(Qt::Key_Left);
    EXPECT_FALSE(isVisible("history.1.item.0"));
}

TEST_P(HistoryViewsTest, WhatStayedInTheTrashIsSaidAndBothCanBeShown) {
    service().onPutBack([](const CleanProgressCallback&) { return sample::restoreReport(); });
    openTrash();
    ASSERT_TRUE(window().click(QStringLiteral("history.1.putBack")));
    ASSERT_TRUE(window().waitFor([this] { return isVisible("restore.list"); }, 10));
    ASSERT_TRUE(window().click(QStringLiteral("restore.showBoth.0")));
    EXPECT_EQ(desktop().revealed.size(), 2U);
    ASSERT_TRUE(window().click(QStringLiteral("restore.done")));
    EXPECT_FALSE(isVisible("restore.list"));
}

TEST_P(HistoryViewsTest, ForgettingTheHistoryAsksFirst) {
    openTrash();
    ASSERT_TRUE(window().click(QStringLiteral("forgetHistory")));
    ASSERT_TRUE(window().click(QStringLiteral("decide.accept")));
    waitUntilIdle();
    EXPECT_THAT(service().historyCalls(), ::testing::Contains("forget"));
}

TEST_P(HistoryViewsTest, TheResultTellsThreeSumsApart) {
    cleanIntoHistory();
    EXPECT_EQ(text("result.trashed"), tr("在废纸篓中") + QStringLiteral(" 1.2 GB"));
    EXPECT_EQ(text("result.removed"), tr("已永久删除") + QStringLiteral(" 300 MB"));
    EXPECT_EQ(text("result.freedNow"), tr("现已释放") + QStringLiteral(" 298 MB ") + tr("目前为止"));
}

TEST_P(HistoryViewsTest, AReportIsPutBackOrRemovedForGoodAfterAQuestion) {
    cleanIntoHistory();
    ASSERT_TRUE(window().click(QStringLiteral("result.forGood")));
    const QQuickItem* accept = window().item(QStringLiteral("decide.accept"));
    ASSERT_NE(accept, nullptr);
    EXPECT_TRUE(accept->property("destructive").toBool());
    ASSERT_TRUE(window().click(QStringLiteral("decide.cancel")));
    ASSERT_TRUE(window().click(QStringLiteral("result.putBack")));
    waitUntilIdle();
    const std::string id = sample::history().cleans.at(1).id;
    EXPECT_THAT(service().historyCalls(), ::testing::Contains(::testing::StartsWith("putBack " + id)));
}

// Once it came back when the store spoke of its report while it faded.
TEST_P(HistoryViewsTest, AResultThatIsOnItsWayOutStaysOut) {
    desktop().setLook({.reducedMotion = false});
    cleanIntoHistory();
    ASSERT_TRUE(window().waitFor([this] { return isVisible("result.done"); }, 10));
    ASSERT_TRUE(window().click(QStringLiteral("result.putBack")));
    Q_EMIT store().latestReportChanged();
    EXPECT_TRUE(window().waitFor([this] { return !isVisible("result.done"); }, 5));
    waitUntilIdle();
    EXPECT_FALSE(isVisible("result.done"));
}

TEST_P(HistoryViewsTest, EveryFailureIsListedWithItsReason) {
    service().onClean([](const std::vector<CleanupItem>&) {
        CleanupReport report;
        report.attemptedCount = 9;
        report.failedCount = 9;
        for (int number = 0; number < 9; ++number) {
            CleanupOutcome outcome;
            outcome.path = "/home/anna/.cache/" + std::to_string(number);
            outcome.fate = CleanupFate::Failed;
            outcome.reason = "Permission denied";
            report.outcomes.push_back(outcome);
        }
        report.failures = {"0: Permission denied"};
        return report;
    });
    openScanned(CleanerModule::systemJunk);
    cleanConfirmed();
    const QQuickItem* lines = window().item(QStringLiteral("result.failures"));
    ASSERT_NE(lines, nullptr);
    EXPECT_EQ(lines->property("count").toInt(), 9);
    ASSERT_TRUE(window().click(QStringLiteral("result.copyFailures")));
}

TEST_P(HistoryViewsTest, ACleanThatCannotBeTakenBackSaysSoBeforeItRuns) {
    service().setNoWayBack("no space left");
    openScanned(CleanerModule::systemJunk);
    askClean();
    EXPECT_EQ(text("confirm.part"), QStringLiteral("no space left"));
}

class RunningCleanTest : public WindowTest {
protected:
    /// A clean that has told how far it is, and waits.
    void startClean() {
        service().onClean([gate = gate_](const std::vector<CleanupItem>&) {
            gate->pass();
            return sample::cleanReport();
        });
        openScanned(CleanerModule::systemJunk);
        askClean();
        ASSERT_TRUE(window().click(QStringLiteral("confirm.accept")));
        ASSERT_TRUE(store().isCleaning());
    }
    void TearDown() override {
        gate_->open();
        WindowTest::TearDown();
    }
    std::shared_ptr<Gate> gate_ = std::make_shared<Gate>();
};
INSTANTIATE_IN_BOTH_LANGUAGES(RunningCleanTest);

TEST_P(RunningCleanTest, ClosingTheWindowAsksAndBackLeavesEverythingAsItIs) {
    startClean();
    window().main().window().close();
    ASSERT_TRUE(isVisible("closing.message"));
    ASSERT_TRUE(window().click(QStringLiteral("closing.back")));
    EXPECT_TRUE(window().main().window().isVisible());
    EXPECT_FALSE(service().isCleanStopped());
    gate_->open();
    waitUntilIdle();
    EXPECT_TRUE(window().main().window().isVisible());
}

TEST_P(RunningCleanTest, FinishAndCloseWaitsForTheEnd) {
    startClean();
    window().main().window().close();
    ASSERT_TRUE(window().click(QStringLiteral("closing.finish")));
    EXPECT_TRUE(window().main().window().isVisible());
    EXPECT_FALSE(service().isCleanStopped());
    gate_->open();
    EXPECT_TRUE(window().waitFor([this] { return !window().main().window().isVisible(); }, 10));
    waitUntilIdle();
}

TEST_P(RunningCleanTest, StopAndCloseEndsAfterTheItemAtHand) {
    startClean();
    window().main().window().close();
    ASSERT_TRUE(window().click(QStringLiteral("closing.stop")));
    EXPECT_TRUE(service().isCleanStopped());
    gate_->open();
    EXPECT_TRUE(window().waitFor([this] { return !window().main().window().isVisible(); }, 10));
    waitUntilIdle();
}

TEST_P(RunningCleanTest, ACleanThatEndsWhileTheUserIsElsewhereIsToldToTheDesktop) {
    startClean();
    window().main().model().setActive(false);
    gate_->open();
    waitUntilIdle();
    ASSERT_EQ(desktop().notes.size(), 1U);
    EXPECT_EQ(desktop().notes.front().toStdString(), sample::cleanReport().message());
}

} // namespace
} // namespace vellmoor
