// The list under the hands: keys, search, order, menus, and that nothing jumps.
#include "WindowFixture.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QTest>

#include <cstdint>
#include <utility>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

class ListHandsTest : public WindowTest {
protected:
    [[nodiscard]] QQuickItem* list() { return window().item(QStringLiteral("cleanupList")); }
    [[nodiscard]] int current() { return list()->property("currentIndex").toInt(); }
    [[nodiscard]] int count() { return list()->property("count").toInt(); }
    [[nodiscard]] double position() { return list()->property("contentY").toDouble(); }
    /// Where the list rests when it has followed the keyboard.
    double restingPlace() {
        double place = position();
        QElapsedTimer unmoved;
        unmoved.start();
        EXPECT_TRUE(window().waitFor([&] {
            if (std::exchange(place, position()) != place) {
                unmoved.restart();
            }
            return unmoved.elapsed() > 300;
        }));
        return place;
    }
    void openList(CleanerModule module) {
        openScanned(module);
        ASSERT_NE(list(), nullptr);
        list()->forceActiveFocus(Qt::TabFocusReason);
        window().settle();
    }
};
INSTANTIATE_IN_BOTH_LANGUAGES(ListHandsTest);

TEST_P(ListHandsTest, PagesAndEndsAreAKeyAway) {
    openList(CleanerModule::smartScan);
    window().press(Qt::Key_End);
    EXPECT_EQ(current(), count() - 1);
    window().press(Qt::Key_Home);
    EXPECT_EQ(current(), 0);
    window().press(Qt::Key_PageDown);
    const int page = current();
    EXPECT_GE(page, 3);
    EXPECT_LT(page, count() - 1);
    window().press(Qt::Key_PageUp);
    EXPECT_EQ(current(), 0);
}

TEST_P(ListHandsTest, LettersGoToAName) {
    openList(CleanerModule::largeFiles);
    window().press(Qt::Key_V);
    EXPECT_EQ(window().main().model().largeFiles()->rowStartingWith(QStringLiteral("v"), -1), current());
    EXPECT_GT(current(), 0);
}

TEST_P(ListHandsTest, EscapeInTheListOfASheetClosesTheSheet) {
    openScanned(CleanerModule::systemJunk);
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    window().press(Qt::Key_Down);
    window().press(Qt::Key_Escape);
    EXPECT_FALSE(isVisible("detailsList"));
}

TEST_P(ListHandsTest, LeftOnAPathFoldsAndStaysOnItsCategory) {
    openList(CleanerModule::systemJunk);
    window().press(Qt::Key_Right);
    window().press(Qt::Key_Down);
    window().press(Qt::Key_Down);
    EXPECT_EQ(current(), 2);
    window().press(Qt::Key_Left);
    EXPECT_EQ(current(), 0);
    EXPECT_FALSE(isVisible("item.0.target.0"));
}

TEST_P(ListHandsTest, ControlATicksTheWholeList) {
    openList(CleanerModule::largeFiles);
    EXPECT_EQ(store().selectedBytes(CleanerModule::largeFiles), 0);
    window().press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(store().selectedBytes(CleanerModule::largeFiles), store().cleanableBytes(CleanerModule::largeFiles));
}

TEST_P(ListHandsTest, ControlFSearchesNamesAndPathsAndEscapeEndsIt) {
    openList(CleanerModule::systemJunk);
    const int all = count();
    window().press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_TRUE(isVisible("searchField"));
    for (const Qt::Key key : {Qt::Key_M, Qt::Key_E, Qt::Key_S, Qt::Key_A}) {
        window().press(key);
    }
    EXPECT_EQ(count(), 1) << "mesa_shader_cache is one of the paths";
    EXPECT_LT(count(), all);
    window().press(Qt::Key_Escape);
    EXPECT_FALSE(isVisible("searchField"));
    EXPECT_EQ(count(), all);
    EXPECT_TRUE(list()->hasActiveFocus());
}

enum class Drawn : std::uint8_t { All, Usable };

/// What a list draws: its rows that can be seen, or those of them that can be used.
QStringList drawnRows(QQuickItem* list, Drawn which = Drawn::All) {
    QStringList rows;
    const auto* const contents = list->property("contentItem").value<QQuickItem*>();
    for (const QQuickItem* row : contents->childItems()) {
        if (row->isVisible() && row->opacity() > 0 && (which == Drawn::All || row->isEnabled()) &&
            row->property("title").isValid()) {
            rows << row->property("title").toString();
        }
    }
    rows.sort();
    return rows;
}

TEST_P(ListHandsTest, RowsThatGoFadeAndLeaveNothingBehind) {
    desktop().setLook({.reducedMotion = false});
    openList(CleanerModule::largeFiles);
    CleanupListModel& files = *window().main().model().largeFiles();
    const QStringList all = drawnRows(list());
    ASSERT_GT(all.size(), 3);
    const QString first = files.index(0).data(CleanupListModel::TitleRole).toString();
    // On a busy machine a fade may be over before anybody looks.
    bool hasFaded = false;
    for (int attempt = 0; attempt < 10 && !hasFaded; ++attempt) {
        files.setSearch(first);
        window().settle();
        hasFaded = drawnRows(list()).size() > 1;
        EXPECT_EQ(drawnRows(list(), Drawn::Usable), QStringList{first})
            << "what fades can neither be clicked nor reached by keys";
        EXPECT_TRUE(window().waitFor([&] { return drawnRows(list()) == QStringList{first}; }, 5));
        files.setSearch(QString());
        EXPECT_TRUE(window().waitFor([&] { return drawnRows(list()) == all; }, 5));
    }
    EXPECT_TRUE(hasFaded);
    // Rows that come back while others still go, and are drawn anew from those kept for later use.
    for (int round = 0; round < 20; ++round) {
        files.setSearch(round % 2 == 0 ? QString() : first);
        QTest::qWait(round * 17 % 120);
    }
    files.setSearch(QString());
    EXPECT_TRUE(window().waitFor([&] { return drawnRows(list()) == all; }, 5))
        << drawnRows(list()).join(' ').toStdString();
}

TEST_P(ListHandsTest, AListCanBeSortedByNameAndBackAgain) {
    openList(CleanerModule::largeFiles);
    const QStringList given = [&] {
        QStringList names;
        for (int row = 0; row < count(); ++row) {
            names << window().main().model().largeFiles()->index(row).data(CleanupListModel::TitleRole).toString();
        }
        return names;
    }();
    ASSERT_TRUE(window().click(QStringLiteral("sortButton")));
    ASSERT_TRUE(window().click(QStringLiteral("sort.name")));
    const auto title = [&](int row) {
        return window().main().model().largeFiles()->index(row).data(CleanupListModel::TitleRole).toString();
    };
    for (int row = 1; row < count(); ++row) {
        EXPECT_LE(QString::localeAwareCompare(title(row - 1), title(row)), 0);
    }
    window().main().model().largeFiles()->setOrder(QStringLiteral("given"));
    EXPECT_EQ(title(0), given.at(0));
}

TEST_P(ListHandsTest, TheMenuKeyOpensTheRowsMenu) {
    openList(CleanerModule::systemJunk);
    window().press(Qt::Key_Right);
    window().press(Qt::Key_Down);
    window().press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(isVisible("item.0.target.0.menu.copyPath"));
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.0.menu.copyPath")));
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              QString::fromStdString(store().cleanupItems().at(0).targets.at(0).url.native()));
}

TEST_P(ListHandsTest, AFileOfThePreviewHasAMenu) {
    openScanned(CleanerModule::largeFiles);
    const fs::path first = store().fileCandidates().front().url;
    ASSERT_TRUE(window().click(QStringLiteral("candidate.0"), Qt::RightButton));
    ASSERT_TRUE(window().click(QStringLiteral("candidate.0.menu.reveal")));
    ASSERT_TRUE(window().click(QStringLiteral("previewButton")));
    QQuickItem* largest = window().item(QStringLiteral("largestItems"));
    ASSERT_NE(largest, nullptr);
    largest->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(window().click(QStringLiteral("candidate.0.menu.openFolder"), Qt::LeftButton));
    EXPECT_THAT(desktop().revealed, ::testing::ElementsAre(first));
    EXPECT_THAT(desktop().folders, ::testing::ElementsAre(first.parent_path()));
}

TEST_P(ListHandsTest, TheApplicationOfAMemoryRowIsShownFromItsMenu) {
    openScanned(CleanerModule::memoryOptimization);
    window().item(QStringLiteral("memoryApp.0.quit"))->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(isVisible("memoryApp.0.menu.reveal"));
}

TEST_P(ListHandsTest, WhatIsHeldBackLeadsToTheListOfWhatIsKept) {
    openScanned(CleanerModule::systemJunk);
    store().keep({store().cleanupItems().front().targets.front().url.path() / "inner"});
    ASSERT_TRUE(window().waitFor([this] { return !store().keptItems().empty(); }, 10));
    QQuickItem* rows = list();
    rows->forceActiveFocus(Qt::TabFocusReason);
    window().press(Qt::Key_Right);
    window().press(Qt::Key_Down);
    EXPECT_FALSE(isEnabled("item.0.target.0.toggle"));
    window().press(Qt::Key_Menu);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.target.0.menu.kept")));
    ASSERT_TRUE(window().waitFor([this] { return isVisible("kept.0"); }, 10));
    ASSERT_TRUE(window().click(QStringLiteral("kept.0"), Qt::RightButton));
    EXPECT_TRUE(isVisible("kept.0.menu.offer"));
    window().press(Qt::Key_Escape);
    ASSERT_TRUE(window().click(QStringLiteral("kept.0.offer")));
    EXPECT_TRUE(window().waitFor([this] { return store().keptItems().empty(); }, 10));
}

TEST_P(ListHandsTest, ARowThatIsNoFileHasNoMenu) {
    openScanned(CleanerModule::memoryOptimization);
    window().click(QStringLiteral("item.0"), Qt::RightButton);
    EXPECT_FALSE(isVisible("item.0.menu.reveal"));
}

TEST_P(ListHandsTest, ControlAndANumberShowAModule) {
    open();
    window().press(Qt::Key_3, Qt::ControlModifier);
    EXPECT_EQ(store().activeModule(), CleanerModule::largeFiles);
    window().press(Qt::Key_8, Qt::ControlModifier);
    EXPECT_EQ(store().activeModule(), CleanerModule::trash);
}

TEST_P(ListHandsTest, F1ShowsTheKeys) {
    open();
    window().press(Qt::Key_F1);
    EXPECT_TRUE(isVisible("shortcuts.done"));
    window().press(Qt::Key_Escape);
    EXPECT_FALSE(isVisible("shortcuts.done"));
}

TEST_P(ListHandsTest, AFilterThatHidesEverythingSaysSoAndOffersEverything) {
    openList(CleanerModule::largeFiles);
    window().main().model().largeFiles()->setSearch(QStringLiteral("no such file"));
    EXPECT_EQ(text("emptyState"), tr("筛选隐藏了全部项目"));
    ASSERT_TRUE(window().click(QStringLiteral("showAll")));
    EXPECT_TRUE(isVisible("item.0"));
}

TEST_P(ListHandsTest, WhatAFilterHidesIsNamedBesideTheSelection) {
    openList(CleanerModule::systemJunk);
    EXPECT_FALSE(isVisible("hiddenSelection"));
    ASSERT_TRUE(window().click(QStringLiteral("item.2.toggle")));
    ASSERT_TRUE(window().click(QStringLiteral("filter.recommended")));
    EXPECT_EQ(text("hiddenSelection"), tr("%@ 被筛选隐藏", std::string("2.9 GB")));
}

TEST_P(ListHandsTest, AFilterStaysInItsModule) {
    openScanned(CleanerModule::smartScan);
    ASSERT_TRUE(window().click(QStringLiteral("filter.selected")));
    window().show(CleanerModule::systemJunk);
    EXPECT_EQ(window().main().model().items()->filter(), QStringLiteral("all"));
    window().show(CleanerModule::smartScan);
    EXPECT_EQ(window().main().model().items()->filter(), QStringLiteral("selected"));
}

TEST_P(ListHandsTest, TheListDoesNotJumpWhenTheWindowIsActivatedTwentyTimes) {
    openList(CleanerModule::smartScan);
    ASSERT_TRUE(window().click(QStringLiteral("item.2.expand")));
    for (int presses = 0; presses < 14; ++presses) {
        window().press(Qt::Key_Down);
    }
    const double place = restingPlace();
    const int row = current();
    ASSERT_GT(place, 0);
    for (int turn = 0; turn < 20; ++turn) {
        window().main().model().activated();
        window().settle();
    }
    EXPECT_EQ(position(), place);
    EXPECT_EQ(current(), row);
    EXPECT_TRUE(list()->hasActiveFocus());
}

TEST_P(ListHandsTest, UnfoldedRowsAndTheirPlaceSurviveARescan) {
    openList(CleanerModule::smartScan);
    ASSERT_TRUE(window().click(QStringLiteral("item.0.expand")));
    for (int presses = 0; presses < 12; ++presses) {
        window().press(Qt::Key_Down);
    }
    const double place = restingPlace();
    const int rows = count();
    window().scan();
    window().settle();
    EXPECT_EQ(count(), rows);
    EXPECT_EQ(position(), place);
}

TEST_P(ListHandsTest, WhatTheDesktopCouldNotDoIsSaidUntilItIsClosed) {
    open();
    EXPECT_FALSE(isVisible("notice"));
    desktop().fail("文件管理器没有打开。");
    EXPECT_EQ(text("notice.text"), tr("文件管理器没有打开。"));
    ASSERT_TRUE(window().click(QStringLiteral("notice.close")));
    EXPECT_FALSE(isVisible("notice"));
}

} // namespace
} // namespace vellmoor
