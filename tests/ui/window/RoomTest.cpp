// The window in every size, theme and size of text.
#include "WindowFixture.h"

#include <QGuiApplication>
#include <QQuickWindow>

namespace vellmoor {
namespace {

using RoomTest = WindowTest;
INSTANTIATE_IN_BOTH_LANGUAGES(RoomTest);

QRectF placeOf(const QQuickItem& item) {
    return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
}

/// What has to be inside the window whatever its size.
const std::vector<const char*> mainControls{
    "scanButton",      "cleanButton",  "previewButton", "bottomRefresh", "refreshButton", "homeButton",    "filter.all",
    "filter.selected", "searchButton", "sortButton",    "themeSwitch",   "aboutButton",   "languageSwitch"};

void expectInside(WindowDriver& window) {
    const QRectF area(QPointF(), QSizeF(window.main().window().size()));
    for (const char* name : mainControls) {
        const QQuickItem* control = window.item(QString::fromUtf8(name));
        ASSERT_NE(control, nullptr) << name;
        const QRectF place = placeOf(*control);
        EXPECT_TRUE(area.contains(place))
            << name << " at " << place.left() << "," << place.top() << " to " << place.right() << "," << place.bottom();
    }
}

TEST_P(RoomTest, NoControlIsCutOffInTheSmallestWindow) {
    openScanned(CleanerModule::smartScan);
    window().resize({800, 560});
    expectInside(window());
}

TEST_P(RoomTest, NoControlIsCutOffByLargeText) {
    openScanned(CleanerModule::smartScan);
    desktop().setLook({.reducedMotion = true, .textScale = 1.4});
    expectInside(window());
}

TEST_P(RoomTest, SixCategoriesAreSeenInTheUsualWindow) {
    openScanned(CleanerModule::smartScan);
    const QQuickItem* list = window().item(QStringLiteral("cleanupList"));
    ASSERT_NE(list, nullptr);
    for (int row = 0; row < 6; ++row) {
        const QQuickItem* item = window().item(QStringLiteral("item.%1").arg(row));
        ASSERT_NE(item, nullptr) << row;
        EXPECT_TRUE(placeOf(*list).contains(placeOf(*item))) << row;
    }
}

TEST_P(RoomTest, TheMemoryPageShowsItsApplicationsWithoutScrolling) {
    openScanned(CleanerModule::memoryOptimization);
    const QQuickItem* bar = window().item(QStringLiteral("cleanButton"));
    for (const char* row : {"memoryApp.0", "memoryApp.1", "memoryApp.2"}) {
        const QQuickItem* item = window().item(QString::fromUtf8(row));
        ASSERT_NE(item, nullptr) << row;
        EXPECT_LT(placeOf(*item).bottom() + 20, placeOf(*bar).top()) << row << " stands clear of the lower edge";
    }
}

TEST_P(RoomTest, ANoticeStandsOverThePageInEitherDirection) {
    open();
    desktop().fail("文件管理器没有打开。");
    const QQuickItem* notice = window().item(QStringLiteral("notice"));
    const QQuickItem* page = window().item(QStringLiteral("scanButton"));
    const QQuickItem* sidebar = window().item(QStringLiteral("sidebar.smartScan"));
    ASSERT_TRUE(notice != nullptr && page != nullptr && sidebar != nullptr);
    const auto besideSidebar = [&] {
        const QRectF place = placeOf(*notice);
        return QRectF(QPointF(), notice->window()->size()).contains(place) &&
               (place.left() > placeOf(*sidebar).right() || place.right() < placeOf(*sidebar).left());
    };
    const double shift = placeOf(*notice).center().x() - notice->window()->width() / 2.0;
    EXPECT_GT(shift, 100);
    EXPECT_TRUE(besideSidebar());

    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    window().settle();
    EXPECT_GT(placeOf(*sidebar).left(), placeOf(*page).right()) << "the sidebar changes sides";
    EXPECT_NEAR(placeOf(*notice).center().x() - notice->window()->width() / 2.0, -shift, 1);
    EXPECT_TRUE(besideSidebar());
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
}

TEST_P(RoomTest, ANarrowWindowHasTheSecondColumnBehindAButton) {
    openScanned(CleanerModule::smartScan);
    EXPECT_TRUE(isVisible("diskSummary"));
    EXPECT_FALSE(isVisible("overviewButton"));
    window().resize({900, 640});
    EXPECT_FALSE(isVisible("diskSummary"));
    const QQuickItem* list = window().item(QStringLiteral("cleanupList"));
    EXPECT_GT(placeOf(*list).right(), 860) << "the list has the room";
    ASSERT_TRUE(window().click(QStringLiteral("overviewButton")));
    EXPECT_TRUE(isVisible("diskSummary"));
    window().press(Qt::Key_Escape);
    EXPECT_FALSE(isVisible("diskSummary"));
}

TEST_P(RoomTest, TheThemeFollowsTheDesktopWhileTheProgramRuns) {
    openScanned(CleanerModule::smartScan);
    const QColor light = window().main().window().color();
    desktop().setLook({.dark = true, .reducedMotion = true});
    EXPECT_LT(window().main().window().color().lightness(), light.lightness() / 2);
    const QQuickItem* title = window().item(QStringLiteral("moduleTitle"));
    EXPECT_GT(title->property("color").value<QColor>().lightness(), 200);
    desktop().setLook({.reducedMotion = true});
    EXPECT_EQ(window().main().window().color(), light);
}

TEST_P(RoomTest, TheUsersChoiceOfThemeStandsAboveTheDesktopsAndIsRemembered) {
    open();
    const QColor light = window().main().window().color();
    desktop().setLook({.dark = true, .reducedMotion = true});
    ASSERT_TRUE(window().click(QStringLiteral("themeSwitch")));
    EXPECT_EQ(window().main().window().color(), light);
    EXPECT_EQ(desktop().memory[std::string(themeSetting)], "light");
    ASSERT_TRUE(window().click(QStringLiteral("themeSwitch")));
    ASSERT_TRUE(window().click(QStringLiteral("themeSwitch")));
    EXPECT_EQ(desktop().memory[std::string(themeSetting)], "system");
    EXPECT_NE(window().main().window().color(), light);
}

TEST_P(RoomTest, TextFollowsTheDesktopsScaleWhileTheProgramRuns) {
    open();
    const double before = window().item(QStringLiteral("moduleTitle"))->height();
    desktop().setLook({.reducedMotion = true, .textScale = 1.5});
    EXPECT_NEAR(window().item(QStringLiteral("moduleTitle"))->height() / before, 1.5, 0.1);
}

TEST_P(RoomTest, TheShownModuleIsRemembered) {
    open();
    window().show(CleanerModule::privacy);
    EXPECT_EQ(desktop().memory[std::string(moduleSetting)], "privacy");
}

TEST(SmallestWindow, IsTheUsualOneWhereTheScreenHasIt) {
    EXPECT_EQ(smallestWindow({1920, 1080}), QSize(1080, 720));
    EXPECT_EQ(smallestWindow({1080, 760}), QSize(1080, 720));
}

TEST(SmallestWindow, GoesDownWithTheScreen) {
    EXPECT_EQ(smallestWindow({1280, 680}), QSize(800, 560));
    EXPECT_EQ(smallestWindow({960, 500}), QSize(800, 460)) << "a full screen at 200 %";
}

TEST(WindowStart, ReadsWhatWasRemembered) {
    const WindowStart start = windowStart({}, "dark", "900x600");
    EXPECT_EQ(start.theme, ThemeChoice::dark);
    EXPECT_EQ(start.size, QSize(900, 600));
    EXPECT_EQ(windowStart({}, "purple", "wide").theme, ThemeChoice::system);
    EXPECT_EQ(windowStart({}, "purple", "wide").size, std::nullopt);
}

} // namespace
} // namespace vellmoor
