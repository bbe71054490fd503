// The window comes first, its views follow.
#include "Appearance.h"
#include "RecordingDesktop.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"

#include <QImage>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace vellmoor {
namespace {

constexpr int patienceMs = 60'000;

TEST(WindowStart, TheWindowShowsItsGroundBeforeAnyViewIsLoaded) {
    MainWindow main;
    main.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main.window(), patienceMs));
    const QImage picture = main.window().grabWindow();
    // The usual size, as far as the screen of the platform without a display has it.
    const QSize screen = main.window().screen()->availableSize();
    ASSERT_EQ(main.window().size(), QSize(1080, 720).boundedTo(screen - QSize(0, 40)));
    EXPECT_NE(picture.pixelColor(2, 2), picture.pixelColor(picture.width() - 3, picture.height() - 3));
    EXPECT_EQ(main.window().contentItem()->childItems().size(), 1);
}

/// The largest difference of a channel between the picture and the theme's diagonal gradient.
int farthestFromGradient(const QImage& picture, const Appearance& theme) {
    const QPointF end(picture.width(), picture.height());
    int farthest = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const double part = QPointF::dotProduct({x + 0.5, y + 0.5}, end) / QPointF::dotProduct(end, end);
            const bool isUpper = part < 0.5;
            const QColor from = isUpper ? theme.groundStart() : theme.groundMiddle();
            const QColor to = isUpper ? theme.groundMiddle() : theme.groundEnd();
            const double step = isUpper ? part * 2 : part * 2 - 1;
            const QColor is = picture.pixelColor(x, y);
            const auto difference = [step](int a, int b, int seen) {
                return static_cast<int>(std::abs(a + (b - a) * step - seen));
            };
            farthest = std::max({farthest, difference(from.red(), to.red(), is.red()),
                                 difference(from.green(), to.green(), is.green()),
                                 difference(from.blue(), to.blue(), is.blue())});
        }
    }
    return farthest;
}

TEST(WindowStart, TheGroundFollowsTheWindowsSizeAndTheTheme) {
    Appearance theme({}, ThemeChoice::light);
    MainWindow main;
    main.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main.window(), patienceMs));
    EXPECT_LE(farthestFromGradient(main.window().grabWindow(), theme), 2);
    main.window().resize(1500, 1000);
    const QQuickItem* ground = main.window().contentItem()->childItems().constFirst();
    ASSERT_TRUE(QTest::qWaitFor([&] { return ground->size() == QSizeF(1500, 1000); }, patienceMs));
    const QImage wide = main.window().grabWindow();
    EXPECT_EQ(wide.size(), QSize(1500, 1000));
    EXPECT_LE(farthestFromGradient(wide, theme), 2);

    MainWindow dark({.theme = ThemeChoice::dark});
    dark.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dark.window(), patienceMs));
    theme.setChoice(QStringLiteral("dark"));
    EXPECT_LE(farthestFromGradient(dark.window().grabWindow(), theme), 2);
}

TEST(WindowStart, TheViewsAreLoadedInTheBackground) {
    RecordingDesktop desktop;
    LanguageManager languages({.read = [] { return std::optional<std::string>("en"); }, .write = [](const auto&) {}},
                              std::nullopt);
    CleanerStore store(std::make_shared<ScriptedCleanerService>(), [] { return std::chrono::system_clock::now(); });
    QQmlEngine engine;
    MainWindow main;
    main.window().show();
    std::optional<MainWindow::Outcome> outcome;
    main.fill(engine, store, languages, desktop, QQmlComponent::Asynchronous,
              [&](const MainWindow::Outcome& filled) { outcome = filled; });
    EXPECT_FALSE(outcome.has_value());
    ASSERT_TRUE(QTest::qWaitFor([&] { return outcome.has_value(); }, patienceMs));
    ASSERT_TRUE(outcome->has_value()) << outcome->error();
    EXPECT_NE(findItem(main.window().contentItem(), QStringLiteral("scanButton")), nullptr);
}

} // namespace
} // namespace vellmoor
