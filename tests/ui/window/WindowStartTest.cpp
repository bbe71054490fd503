// The window comes first, its views follow.
#include "RecordingDesktop.h"
#include "ScriptedCleanerService.h"
#include "WindowDriver.h"

#include <QImage>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

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

TEST(WindowStart, TheGroundFollowsTheWindowsSize) {
    MainWindow main;
    main.window().resize(1500, 1000);
    main.window().show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&main.window(), patienceMs));
    const QImage picture = main.window().grabWindow();
    EXPECT_EQ(main.window().contentItem()->childItems().constFirst()->size(), QSizeF(1500, 1000));
    EXPECT_NE(picture.pixelColor(2, 2), picture.pixelColor(picture.width() - 3, picture.height() - 3));
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
