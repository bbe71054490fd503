// The window as a whole without a mouse: the sidebar, the sheets, the questions, the way back.
#include "KeyboardHands.h"

#include <QQuickWindow>

namespace vellmoor::journey {
namespace {

IN_BOTH_LANGUAGES(KeyboardJourney);

TEST_P(KeyboardJourney, TheSidebarIsWalkedByTheArrows) {
    open();
    EXPECT_EQ(focused(), QStringLiteral("sidebar.smartScan")) << "the keyboard begins somewhere";
    press(Qt::Key_Up);
    EXPECT_EQ(store->activeModule(), CleanerModule::smartScan);
    for (const CleanerModule module : allCleanerModules) {
        goTo(module);
    }
    press(Qt::Key_Down);
    EXPECT_EQ(store->activeModule(), CleanerModule::trash);
    press(Qt::Key_Up);
    EXPECT_EQ(store->activeModule(), CleanerModule::memoryOptimization);
}

TEST_P(KeyboardJourney, SmartScanWithTheSheetOfPaths) {
    makeFile(".cache/player/b", 200'000);
    makeFile(".cache/keep-me/c", 100'000);
    makeFile(".local/state/app/session.log", 50'000);
    open();
    tabTo(QStringLiteral("scanButton"));
    press(Qt::Key_Space);
    waitForScan();
    tabTo(QStringLiteral("previewButton"));
    press(Qt::Key_Return);
    waitFor("the sheet", [&] { return isShown(QStringLiteral("detailsList")); });
    const std::string caches = L::tr("用户缓存");
    goToRow(QStringLiteral("detailsList"), listed(caches) + 1 + listed(caches, "keep-me"));
    press(Qt::Key_Space);
    const QString keep = row(caches, "keep-me") + QStringLiteral(".toggle");
    waitFor("the tick to go", [&] { return !isTicked(keep, QStringLiteral("detailsList")); });
    press(Qt::Key_Escape);
    waitForFocus(QStringLiteral("previewButton")); // the keyboard is where it was
    EXPECT_FALSE(isShown(QStringLiteral("detailsList")));

    cleanByKeys();
    EXPECT_TRUE(isTrashed("player"));
    EXPECT_TRUE(isTrashed("session.log"));
    EXPECT_TRUE(has(".cache/keep-me/c"));
}

TEST_P(KeyboardJourney, FromStartToFinishInTheSmallestWindow) {
    makeFile(".cache/player/b", 200'000);
    makeFile(".cache/keep-me/c", 100'000);
    open({800, 560});
    EXPECT_EQ(window->window().size(), QSize(800, 560));
    tabTo(QStringLiteral("scanButton"));
    press(Qt::Key_Space);
    waitForScan();
    const std::string caches = L::tr("用户缓存");
    goToRow(QStringLiteral("cleanupList"), listed(caches));
    press(Qt::Key_Right);
    waitFor("the paths", [&] { return isShown(row(caches) + QStringLiteral(".target.0")); });
    goToRow(QStringLiteral("cleanupList"), listed(caches) + 1 + listed(caches, "keep-me"));
    press(Qt::Key_Space);
    waitFor("the tick to go", [&] { return !isTicked(row(caches, "keep-me") + QStringLiteral(".toggle")); });
    tabTo(QStringLiteral("overviewButton"));
    press(Qt::Key_Return);
    waitFor("the second column", [&] { return isShown(QStringLiteral("diskSummary")); });
    press(Qt::Key_Escape);
    waitForFocus(QStringLiteral("overviewButton"));
    cleanByKeys();
    EXPECT_TRUE(isTrashed("player"));
    EXPECT_TRUE(has(".cache/keep-me/c"));
    goTo(CleanerModule::trash);
    scanByKey();
    goToRow(QStringLiteral("cleanupList"), 0);
    if (store->selectedBytes(CleanerModule::trash) == 0) {
        press(Qt::Key_Space);
    }
    waitFor("the tick", [&] { return store->selectedBytes(CleanerModule::trash) > 0; });
    cleanByKeys();
    EXPECT_FALSE(has(".local/share/Trash/files/player"));
}

TEST_P(KeyboardJourney, ACleanIsPutBackFromItsResultAndFromTheHistoryInTheSmallestWindow) {
    makeFile(".cache/player/b", 200'000);
    makeFile(".local/share/program/data", 100);
    open({800, 560});
    const auto before = tree();
    goTo(CleanerModule::systemJunk);
    scanByKey();
    askCleanByKeys();
    accept(QStringLiteral("confirm"));
    waitForReport();
    waitForFocus(QStringLiteral("result.done"));
    EXPECT_FALSE(has(".cache/player"));
    tabTo(QStringLiteral("result.putBack"));
    press(Qt::Key_Return);
    waitFor("it to be back", [&] { return has(".cache/player/b"); });
    waitUntilIdle();
    EXPECT_FALSE(isShown(QStringLiteral("result.done")));
    cleanByKeys();
    EXPECT_TRUE(isTrashed("player"));
    goTo(CleanerModule::trash);
    goToRow(QStringLiteral("historyList"), 0);
    chooseFromMenu(QStringLiteral("history.0.menu.putBack"));
    waitFor("it to be back", [&] { return has(".cache/player/b"); });
    waitUntilIdle();
    EXPECT_FALSE(isTrashed("player"));
    for (const std::string& line : before) {
        EXPECT_TRUE(tree().contains(line)) << line;
    }
    // The clean is nothing that could be taken back any more, and its list is gone.
    waitFor("the list to go", [&] { return !isShown(QStringLiteral("historyList")); });
    waitForKeyboard();
}

TEST_P(KeyboardJourney, APathIsKeptAndOfferedAgainInTheSmallestWindow) {
    makeFile(".cache/player/b", 200'000);
    makeFile(".cache/keep-me/c", 100'000);
    open({800, 560});
    goTo(CleanerModule::systemJunk);
    scanByKey();
    const std::string caches = L::tr("用户缓存");
    goToRow(QStringLiteral("cleanupList"), listed(caches));
    press(Qt::Key_Right);
    waitFor("the paths", [&] { return isShown(row(caches) + QStringLiteral(".target.0")); });
    goToRow(QStringLiteral("cleanupList"), listed(caches) + 1 + listed(caches, "keep-me"));
    chooseFromMenu(row(caches, "keep-me") + QStringLiteral(".menu.keep"));
    waitFor("it to leave the list", [&] { return listed(caches, "keep-me") < 0; });
    settle();
    goToRow(QStringLiteral("cleanupList"), listed(caches));
    cleanByKeys();
    EXPECT_TRUE(isTrashed("player"));
    EXPECT_TRUE(has(".cache/keep-me/c"));
    tabTo(QStringLiteral("keptButton"));
    press(Qt::Key_Return);
    waitFor("what is kept", [&] { return isShown(QStringLiteral("kept.0")); });
    goToRow(QStringLiteral("keptList"), 0);
    chooseFromMenu(QStringLiteral("kept.0.menu.offer"));
    waitFor("the list to be empty", [&] { return store->keptItems().empty(); });
    press(Qt::Key_Escape);
    waitForFocus(QStringLiteral("keptButton"));
    scanByKey();
    EXPECT_GE(listed(caches, "keep-me"), 0);
}

TEST_P(KeyboardJourney, WhatTheKeyboardReachesIsScrolledIntoView) {
    open();
    const auto isInView = [this](const QString& name) {
        const QQuickItem* item = find(name);
        const QQuickItem* around = item->parentItem();
        while (!around->inherits("QQuickFlickable")) {
            around = around->parentItem();
        }
        return around->boundingRect().contains(item->mapRectToItem(around, item->boundingRect()));
    };
    const QString button = QStringLiteral("recheckPermissions");
    settle();
    EXPECT_FALSE(isInView(button)) << "the column is longer than its place";
    tabTo(button);
    EXPECT_TRUE(isInView(button));
}

TEST_P(KeyboardJourney, EscapeAndReturnAnswerAQuestionWithNo) {
    makeFile(".cache/player/b", 200'000);
    const auto before = tree();
    open();
    goTo(CleanerModule::systemJunk);
    scanByKey();
    for (const Qt::Key answer : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        askCleanByKeys();
        waitForFocus(QStringLiteral("confirm.cancel"));
        press(answer);
        waitForFocus(QStringLiteral("details.clean")); // the keyboard is where it was
        EXPECT_FALSE(isShown(QStringLiteral("confirm.accept")));
        EXPECT_FALSE(store->isCleaning());
        press(Qt::Key_Escape);
        waitForFocus(QStringLiteral("cleanButton"));
    }
    EXPECT_EQ(tree(), before);
}

TEST_P(KeyboardJourney, ControlAndReturnAcceptAndTheArrowsChooseTheAnswer) {
    makeFile(".cache/player/b", 200'000);
    open();
    goTo(CleanerModule::systemJunk);
    scanByKey();
    askCleanByKeys();
    waitForFocus(QStringLiteral("confirm.cancel"));
    press(Qt::Key_Right);
    EXPECT_EQ(focused(), QStringLiteral("confirm.accept"));
    press(Qt::Key_Left);
    EXPECT_EQ(focused(), QStringLiteral("confirm.cancel"));
    EXPECT_TRUE(has(".cache/player/b"));
    press(Qt::Key_Return, Qt::ControlModifier);
    waitForReport();
    EXPECT_TRUE(isTrashed("player"));
}

TEST_P(KeyboardJourney, AnOpenQuestionHoldsBackTheKeyThatScans) {
    makeFile(".cache/player/b", 200'000);
    open();
    goTo(CleanerModule::systemJunk);
    scanByKey();
    askCleanByKeys();
    waitForFocus(QStringLiteral("confirm.cancel"));
    press(Qt::Key_R, Qt::ControlModifier);
    EXPECT_FALSE(store->isScanning());
    EXPECT_EQ(service->ended().size(), 1U);
    press(Qt::Key_Escape);
    waitForFocus(QStringLiteral("details.clean"));
    press(Qt::Key_Escape);
    waitForFocus(QStringLiteral("cleanButton"));
    scanByKey();
    waitFor("the second scan", [&] { return service->ended().size() == 2; });
}

} // namespace
} // namespace vellmoor::journey
