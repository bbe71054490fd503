// Every module without a mouse. Tab, the arrows, Space, Return and Escape are all that these hands use.
#include "Journey.h"
#include "RunningApp.h"

#include <QQuickWindow>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

constexpr int enough = 80;

class KeyboardJourney : public JourneyInEachLanguage {
protected:
    [[nodiscard]] QString focused() const {
        const QQuickItem* item = window->window().activeFocusItem();
        return item == nullptr ? QString() : item->objectName();
    }
    static bool isMarked(const QQuickItem& item) {
        return std::ranges::any_of(item.childItems(), [](const QQuickItem* child) {
            return child->objectName() == QLatin1String("focusRing") && child->isVisible();
        });
    }
    void tabTo(const QString& name) {
        for (int presses = 0; focused() != name && presses < enough; ++presses) {
            press(Qt::Key_Tab);
        }
        ASSERT_EQ(focused(), name) << "Tab does not get there";
    }
    void waitForFocus(const QString& name) const {
        waitFor(qPrintable(name + QStringLiteral(" to have the keyboard")), [&] { return focused() == name; });
    }
    /// Through the sidebar, from the module that is shown.
    void goTo(CleanerModule module) {
        const auto name = [](CleanerModule which) {
            return QStringLiteral("sidebar.") + text(std::string(rawValue(which)));
        };
        tabTo(name(store->activeModule()));
        for (int presses = 0; focused() != name(module) && presses < 8; ++presses) {
            press(store->activeModule() < module ? Qt::Key_Down : Qt::Key_Up);
        }
        ASSERT_EQ(focused(), name(module));
        ASSERT_EQ(store->activeModule(), module);
    }
    void waitForScan() {
        waitFor("the end of the scan", [&] { return !store->isScanning() && store->scanProgress() == 1.0; });
        settle();
    }
    void scanByKey() {
        press(Qt::Key_R, Qt::ControlModifier);
        waitForScan();
    }
    /// Moves to that row of a list and sees that it is marked.
    void goToRow(const QString& list, int row) {
        const auto isInside = [&] {
            const QQuickItem* view = find(list);
            return view != nullptr && view->isAncestorOf(window->window().activeFocusItem());
        };
        for (int presses = 0; !isInside() && presses < enough; ++presses) {
            press(Qt::Key_Tab);
        }
        ASSERT_TRUE(isInside()) << "Tab does not get there";
        const auto current = [&] { return find(list)->property("currentIndex").toInt(); };
        for (int presses = 0; current() != row && presses < 40; ++presses) {
            press(current() < row ? Qt::Key_Down : Qt::Key_Up);
        }
        ASSERT_EQ(current(), row);
        EXPECT_TRUE(isMarked(*window->window().activeFocusItem())) << "a ring shows the row";
    }
    /// From the opened question: the answer that changes nothing has the focus, one Tab further is the other one.
    void accept(const QString& question) {
        waitForFocus(question + QStringLiteral(".cancel"));
        press(Qt::Key_Tab);
        EXPECT_EQ(focused(), question + QStringLiteral(".accept"));
        press(Qt::Key_Return);
    }
    void askCleanByKeys() {
        tabTo(QStringLiteral("cleanButton"));
        press(Qt::Key_Return);
        if (window->model().previewsClean()) {
            waitFor("the paths", [&] { return isShown(QStringLiteral("details.clean")); });
            tabTo(QStringLiteral("details.clean"));
            press(Qt::Key_Return);
        }
    }
    void cleanByKeys() {
        askCleanByKeys();
        accept(QStringLiteral("confirm"));
        waitForReport();
        EXPECT_EQ(store->latestReport()->failedCount, 0);
        waitForFocus(QStringLiteral("result.done"));
        press(Qt::Key_Return);
        waitFor("the sheet to close", [&] { return !store->latestReport(); });
    }
    /// Takes that command from the menu of the row that has the keyboard.
    void chooseFromMenu(const QString& command) {
        press(Qt::Key_Menu);
        waitFor("the menu", [&] { return isShown(command); });
        for (int presses = 0; focused() != command && presses < 10; ++presses) {
            press(Qt::Key_Down);
        }
        ASSERT_EQ(focused(), command);
        press(Qt::Key_Return);
    }
    void waitUntilIdle() {
        waitFor("the end of it", [&] { return !store->isCleaning() && !store->isScanning(); });
        settle();
    }
    [[nodiscard]] bool isSelected(const std::string& title) const {
        const CleanupItem* found = item(title);
        return found != nullptr && found->isSelected;
    }
};
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
    EXPECT_FALSE(isShown(QStringLiteral("historyList")));
    waitFor("the keyboard to be somewhere", [&] {
        const QQuickItem* keyboard = window->window().activeFocusItem();
        return keyboard != window->window().contentItem() && keyboard->isVisible();
    });
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

TEST_P(KeyboardJourney, SystemJunkTickedBySpace) {
    makeFile(".cache/player/b", 200'000);
    makeFile(".npm/_cacache/index", 400'000);
    open();
    goTo(CleanerModule::systemJunk);
    scanByKey();
    goToRow(QStringLiteral("cleanupList"), listed(L::tr("开发缓存")));
    press(Qt::Key_Space);
    waitFor("the tick", [&] { return isSelected(L::tr("开发缓存")); });
    goToRow(QStringLiteral("cleanupList"), listed(L::tr("用户缓存")));
    press(Qt::Key_Space);
    waitFor("the tick to go", [&] { return !isSelected(L::tr("用户缓存")); });
    cleanByKeys();
    EXPECT_TRUE(isTrashed("_cacache"));
    EXPECT_TRUE(has(".cache/player/b"));
}

TEST_P(KeyboardJourney, LargeFilesByTheirFilters) {
    const fs::path film = makeFile("Videos/holiday.mkv", 0);
    const int file = ::open(film.c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(::posix_fallocate(file, 0, off_t{260} * 1024 * 1024), 0);
    ::close(file);
    fs::create_directories(home() / "Downloads");
    fs::create_hard_link(film, home() / "Downloads/backup.zip");
    open();
    goTo(CleanerModule::largeFiles);
    scanByKey();
    tabTo(QStringLiteral("kindFilter"));
    for (int presses = 0; presses < static_cast<int>(LargeFileKindFilter::videos); ++presses) {
        press(Qt::Key_Down);
    }
    tabTo(QStringLiteral("selectFiltered"));
    press(Qt::Key_Return);
    waitFor("the tick", [&] { return isSelected("holiday.mkv"); });
    cleanByKeys();
    EXPECT_TRUE(isTrashed("holiday.mkv"));
    EXPECT_TRUE(has("Downloads/backup.zip"));
}

TEST_P(KeyboardJourney, PrivacyUnfoldedByTheArrows) {
    const fs::path profile = ".mozilla/firefox/abcd.default";
    makeText(".mozilla/firefox/profiles.ini", "[Profile0]\nName=default\nIsRelative=1\nPath=abcd.default\n");
    makeText(profile / "prefs.js", "");
    makeFile(profile / "cookies.sqlite", 90'000);
    makeFile(profile / "cookies.sqlite-wal", 30'000);
    makeFile(profile / "places.sqlite", 80'000);
    makeFile(profile / "logins.json", 3'000);
    open();
    goTo(CleanerModule::privacy);
    scanByKey();
    const auto& items = store->cleanupItems();
    const auto cookies = std::ranges::find_if(
        items, [](const CleanupItem& row) { return row.isCleanable && row.targets.front().name == "cookies.sqlite"; });
    ASSERT_NE(cookies, items.end());
    const int position = listed(cookies->title);
    goToRow(QStringLiteral("cleanupList"), position);
    press(Qt::Key_Right);
    waitFor("the paths", [&] { return isShown(QStringLiteral("item.%1.target.0").arg(position)); });
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    waitFor("the tick", [&] { return isTicked(QStringLiteral("item.%1.target.0.toggle").arg(position)); });
    press(Qt::Key_Return);
    EXPECT_EQ(desktop.asked.back(), "reveal " + (home() / profile / "cookies.sqlite").string());
    press(Qt::Key_Left);
    waitFor("the paths to fold", [&] { return !isShown(QStringLiteral("item.%1.target.0").arg(position)); });
    cleanByKeys();
    EXPECT_TRUE(isTrashed("cookies.sqlite"));
    EXPECT_TRUE(has(profile / "cookies.sqlite-wal"));
    EXPECT_TRUE(has(profile / "places.sqlite"));
    EXPECT_TRUE(has(profile / "logins.json"));
}

TEST_P(KeyboardJourney, AnApplicationIsUninstalled) {
    fs::permissions(makeFile("Applications/Painter.AppImage", 200'000), fs::perms::owner_all);
    makeFile(".config/Painter/settings.ini", 4'000);
    makeFile("Documents/Painter/picture.kra", 4'000);
    open();
    goTo(CleanerModule::appUninstaller);
    scanByKey();
    goToRow(QStringLiteral("cleanupList"), listed("Painter"));
    press(Qt::Key_Space);
    waitFor("the tick", [&] { return isSelected("Painter"); });
    cleanByKeys();
    EXPECT_TRUE(isTrashed("Painter.AppImage"));
    EXPECT_FALSE(has(".config/Painter"));
    EXPECT_TRUE(has("Documents/Painter/picture.kra"));
}

TEST_P(KeyboardJourney, ALoginItemIsSwitchedOff) {
    for (const char* name : {"Alpha", "Beta"}) {
        makeText(std::string(".config/autostart/") + name + ".desktop",
                 std::string("[Desktop Entry]\nType=Application\nExec=/usr/bin/true\nName=") + name + "\n");
    }
    open();
    goTo(CleanerModule::performance);
    scanByKey();
    goToRow(QStringLiteral("startupList"), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(desktop.asked.back(), "reveal " + (home() / ".config/autostart/Beta.desktop").string());
    press(Qt::Key_Space);
    accept(QStringLiteral("confirmStartup"));
    waitFor("the change", [&] { return has(".config/autostart.disabled/Beta.desktop") && !store->isCleaning(); });
    waitForScan();
    EXPECT_FALSE(has(".config/autostart/Beta.desktop"));
    EXPECT_TRUE(has(".config/autostart/Alpha.desktop"));
}

TEST_P(KeyboardJourney, AnApplicationIsAskedToQuit) {
    RunningApp::install();
    const RunningApp app;
    waitFor("the application", [] { return RunningApp::note() == "ready\n"; });
    app.list();
    open();
    goTo(CleanerModule::memoryOptimization);
    scanByKey();
    tabTo(QStringLiteral("memoryApp.0.quit"));
    press(Qt::Key_Space);
    accept(QStringLiteral("confirmQuit"));
    waitFor("the second question", [&] { return isShown(QStringLiteral("confirmEnd.accept")); });
    accept(QStringLiteral("confirmEnd"));
    waitFor("the application to end", [&] { return !app.runs(); });
    EXPECT_TRUE(app.endedByItself());
}

TEST_P(KeyboardJourney, TheTrashIsEmptied) {
    makeText(".local/share/Trash/files/old", "old");
    makeText(".local/share/Trash/info/old.trashinfo", "[Trash Info]\nPath=old\nDeletionDate=2024-01-01T00:00:00\n");
    open();
    goTo(CleanerModule::trash);
    scanByKey();
    cleanByKeys();
    EXPECT_FALSE(has(".local/share/Trash/files/old"));
    EXPECT_FALSE(has(".local/share/Trash/info/old.trashinfo"));
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
