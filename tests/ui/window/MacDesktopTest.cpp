// The desktop around the window on macOS, as far as it needs no Mac.
#include "desktop/MacDesktop.h"

#include "MainWindow.h"
#include "PlayedShell.h"
#include "ScriptedCleanerService.h"
#include "StandInPlatform.h"
#include "SymbolImageProvider.h"
#include "desktop/EditCommands.h"
#include "desktop/MenuTables.h"
#include "layouts/SystemLayout.h"
#include "texts/L.h"

#include <QColor>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTest>
#include <QThread>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A square of one pixel's colour.
Picture pictureOf(int pixels, std::vector<std::uint8_t> pixel) {
    Picture picture{.width = pixels, .height = pixels, .bytes = {}};
    for (int count = 0; count < pixels * pixels; ++count) {
        picture.bytes.insert(picture.bytes.end(), pixel.begin(), pixel.end());
    }
    return picture;
}

class RecordingWorkspace final : public Workspace {
public:
    bool openAddress(const std::string& address) override {
        asked.push_back(address);
        return known.contains(address);
    }
    bool openFile(const std::filesystem::path& path) override {
        asked.push_back(path.string());
        return true;
    }
    void reveal(const std::filesystem::path& path) override { asked.push_back("reveal " + path.string()); }
    Picture fileIcon(const std::filesystem::path&, int pixels) override {
        ++drawn;
        return pictureOf(pixels, {255, 128, 0, 255});
    }
    Picture symbol(const std::string& name, int pixels) override {
        return name == "sparkles" ? pictureOf(pixels, {0, 0, 0, 255}) : Picture{};
    }
    [[nodiscard]] bool reducesMotion() const override { return true; }
    [[nodiscard]] bool increasesContrast() const override { return true; }

    std::set<std::string> known; ///< addresses that something takes
    std::vector<std::string> asked;
    int drawn = 0;
};

/// Only the named paths exist.
class FewFiles final : public test::StandInPlatform {
public:
    FewFiles() : StandInPlatform(test::System::Mac, "/Users/anna") {}
    [[nodiscard]] bool exists(const Path& path) const override { return paths.contains(path); }

    std::set<Path> paths;
};

class MacDesktopTest : public ::testing::Test {
protected:
    static constexpr auto newAccess =
        "x-apple.systempreferences:com.apple.settings.PrivacySecurity.extension?Privacy_AllFiles";
    static constexpr auto oldAccess = "x-apple.systempreferences:com.apple.preference.security?Privacy_AllFiles";
    static constexpr auto newLogin = "x-apple.systempreferences:com.apple.LoginItems-Settings.extension";
    static constexpr auto oldLogin = "x-apple.systempreferences:com.apple.preferences.users?LoginItems";
    static constexpr auto settings = "/System/Applications/System Settings.app";

    FewFiles platform_;
    SystemLayout layout_ = macosLayout("/Users/anna", 501);
    RecordingWorkspace workspace_;
    PlayedShell shell_;
    MacDesktop desktop_{platform_, layout_, workspace_, shell_};
};

TEST_F(MacDesktopTest, PermissionSettingsOpenAtTheirNewerAddress) {
    workspace_.known = {newAccess, oldAccess};
    desktop_.openPermissionSettings();
    EXPECT_THAT(workspace_.asked, ElementsAre(newAccess));
}

TEST_F(MacDesktopTest, PermissionSettingsOpenAtTheirOlderAddressWhereTheNewerIsUnknown) {
    workspace_.known = {oldAccess};
    desktop_.openPermissionSettings();
    EXPECT_THAT(workspace_.asked, ElementsAre(newAccess, oldAccess));
}

TEST_F(MacDesktopTest, WithoutAKnownAddressSystemSettingsThemselvesOpen) {
    platform_.paths = {settings};
    desktop_.openPermissionSettings();
    EXPECT_THAT(workspace_.asked, ElementsAre(newAccess, oldAccess, settings));
}

TEST_F(MacDesktopTest, LoginItemsFollowTheSameRoad) {
    platform_.paths = {settings};
    desktop_.openLoginItemsSettings();
    EXPECT_THAT(workspace_.asked, ElementsAre(newLogin, oldLogin, settings));
}

TEST_F(MacDesktopTest, ActivityMonitorIsStartedWhereItLies) {
    platform_.paths = {"/Applications/Utilities/Activity Monitor.app"};
    desktop_.openSystemMonitor();
    EXPECT_THAT(workspace_.asked, ElementsAre("/Applications/Utilities/Activity Monitor.app"));
}

TEST_F(MacDesktopTest, TheSystemsOwnActivityMonitorComesFirst) {
    platform_.paths = {"/System/Applications/Utilities/Activity Monitor.app",
                       "/Applications/Utilities/Activity Monitor.app"};
    desktop_.openSystemMonitor();
    EXPECT_THAT(workspace_.asked, ElementsAre("/System/Applications/Utilities/Activity Monitor.app"));
}

TEST_F(MacDesktopTest, WithoutActivityMonitorNothingHappens) {
    desktop_.openSystemMonitor();
    EXPECT_THAT(workspace_.asked, IsEmpty());
}

TEST_F(MacDesktopTest, FinderShowsTheHomeTheTrashAndAnyPath) {
    desktop_.openHome();
    desktop_.openTrash();
    desktop_.reveal("/Users/anna/Movies/a.mov");
    EXPECT_THAT(workspace_.asked, ElementsAre("/Users/anna", "/Users/anna/.Trash", "reveal /Users/anna/Movies/a.mov"));
}

TEST_F(MacDesktopTest, AnIconIsDrawnOncePerSize) {
    platform_.paths = {"/Applications/A.app"};
    const QImage icon = desktop_.applicationIcon("/Applications/A.app", 38);
    EXPECT_EQ(icon.size(), QSize(38, 38));
    EXPECT_EQ(icon.pixelColor(0, 0), QColor(255, 128, 0));
    EXPECT_EQ(desktop_.applicationIcon("/Applications/A.app", 38), icon);
    EXPECT_EQ(workspace_.drawn, 1);
    EXPECT_EQ(desktop_.applicationIcon("/Applications/A.app", 76).width(), 76);
}

TEST_F(MacDesktopTest, ThatAnApplicationHasAnIconIsToldWithoutDrawingIt) {
    platform_.paths = {"/Applications/A.app"};
    EXPECT_TRUE(desktop_.hasApplicationIcon("/Applications/A.app"));
    EXPECT_FALSE(desktop_.hasApplicationIcon("/Applications/Gone.app"));
    EXPECT_EQ(workspace_.drawn, 0);
}

TEST_F(MacDesktopTest, AnApplicationThatIsGoneHasNoIcon) {
    EXPECT_TRUE(desktop_.applicationIcon("/Applications/Gone.app", 38).isNull());
    EXPECT_EQ(workspace_.drawn, 0); // the system would answer a general one
}

TEST_F(MacDesktopTest, ASymbolOfTheSystemTakesTheWantedColour) {
    SymbolImageProvider provider([this](const QString& name, int pixels) { return desktop_.symbol(name, pixels); });
    const QImage image = provider.requestImage(QStringLiteral("sparkles?#ff0000"), nullptr, QSize(16, 16));
    EXPECT_EQ(image.size(), QSize(16, 16));
    EXPECT_EQ(image.pixelColor(8, 8), QColor(Qt::red));
}

/// Shows a symbol and answers the thread on which it was drawn. What was shown before is not drawn again.
const QThread* drawingThread(const QString& symbol, bool drawsOnAnyThread) {
    std::atomic<const QThread*> drawn = nullptr;
    QQmlEngine engine;
    const auto draw = [&drawn](const QString&, int pixels) {
        drawn = QThread::currentThread();
        return imageOf(pictureOf(pixels, {0, 0, 0, 255}));
    };
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolImageProvider(draw, drawsOnAnyThread));
    QQmlComponent component(&engine);
    component.setData(QStringLiteral("import QtQuick\nImage { source: 'image://symbol/%1' }").arg(symbol).toUtf8(), {});
    const std::unique_ptr<QObject> image(component.create());
    constexpr int ready = 1; // Image.Ready
    EXPECT_TRUE(image && QTest::qWaitFor([&] { return image->property("status").toInt() == ready; }, 60000));
    return drawn;
}

TEST(SymbolImageProvider, TheWindowDoesNotWaitForSymbolsThatAnyThreadMayDraw) {
    const QThread* aside = drawingThread(QStringLiteral("sparkles"), true);
    EXPECT_NE(aside, nullptr);
    EXPECT_NE(aside, QThread::currentThread());
    EXPECT_EQ(drawingThread(QStringLiteral("trash"), false), QThread::currentThread());
}

TEST_F(MacDesktopTest, AWindowOnAMacWaitsForNoPicture) {
    LanguageManager languages({.read = [] { return std::nullopt; }, .write = [](const std::string&) {}}, std::nullopt);
    CleanerStore store(std::make_shared<ScriptedCleanerService>(), [] { return std::chrono::system_clock::now(); });
    QQmlEngine engine;
    const auto window = loadMainWindow(engine, store, languages, desktop_);
    ASSERT_TRUE(window) << window.error();
    for (const char* name : {"symbol", "application"}) {
        const auto* provider = dynamic_cast<QQuickImageProvider*>(engine.imageProvider(QString::fromLatin1(name)));
        ASSERT_NE(provider, nullptr);
        EXPECT_TRUE(provider->flags() & QQmlImageProviderBase::ForceAsynchronousImageLoading) << name;
    }
}

TEST_F(MacDesktopTest, WhatIsOverIsToldByTheShellWhichOutlivesTheWindow) {
    bool isCalled = false;
    desktop_.notify(QStringLiteral("Vellmoor"), QStringLiteral("清理完成"), [&] { isCalled = true; });
    EXPECT_THAT(shell_.notes, ElementsAre("Vellmoor: 清理完成"));
    EXPECT_FALSE(isCalled);
}

TEST_F(MacDesktopTest, AnotherAppearanceOfTheSystemIsToldToTheWindow) {
    int told = 0;
    desktop_.whenLookChanges([&] { ++told; });
    QEvent change(QEvent::ApplicationPaletteChange);
    QCoreApplication::sendEvent(qGuiApp, &change);
    EXPECT_EQ(told, 1);
    QObject other;
    QCoreApplication::sendEvent(&other, &change);
    EXPECT_EQ(told, 1);
}

TEST(MenuTables, TheStatusMenuFollowsTheLanguage) {
    const auto titles = [] {
        std::vector<std::string> all;
        for (const StatusEntry& entry : statusMenu()) {
            all.push_back(entry.title);
        }
        return all;
    };
    L::setLanguage(AppLanguage::english);
    EXPECT_THAT(titles(), ElementsAre("Open Vellmoor", "", "Quit"));
    L::setLanguage(AppLanguage::chinese);
    EXPECT_THAT(titles(), ElementsAre("打开 Vellmoor", "", "退出"));
}

TEST(MenuTables, OnlyTheRightButtonOpensTheMenuOfTheStatusItem) {
    constexpr unsigned long leftDown = 1, leftUp = 2, rightDown = 3, rightUp = 4;
    EXPECT_TRUE(opensStatusMenu(rightUp));
    for (const unsigned long other : {leftDown, leftUp, rightDown}) {
        EXPECT_FALSE(opensStatusMenu(other));
    }
}

TEST(Placement, APictureStandsInTheMiddleAndIsNeverEnlarged) {
    const auto small = placedInSquare(10, 20, 40);
    ASSERT_TRUE(small);
    EXPECT_EQ(small->x, 15);
    EXPECT_EQ(small->y, 10);
    EXPECT_EQ(small->width, 10);
    EXPECT_EQ(small->height, 20);
}

TEST(Placement, APictureThatIsTooLargeIsShrunkAndKeepsItsShape) {
    const auto large = placedInSquare(100, 50, 40);
    ASSERT_TRUE(large);
    EXPECT_EQ(large->x, 0);
    EXPECT_EQ(large->y, 10);
    EXPECT_EQ(large->width, 40);
    EXPECT_EQ(large->height, 20);
}

TEST(Placement, WhatHasNoSizeHasNoPlace) {
    EXPECT_FALSE(placedInSquare(0, 20, 40));
    EXPECT_FALSE(placedInSquare(10, -1, 40));
    EXPECT_FALSE(placedInSquare(10, 20, 0));
}

TEST(MenuTables, TheEditMenuHasTheFourUsualCommands) {
    std::map<std::string, std::string> keys;
    for (const BarEntry& entry : editMenu()) {
        keys[entry.action] = entry.key;
    }
    EXPECT_EQ(keys, (std::map<std::string, std::string>{
                        {"cut:", "x"}, {"copy:", "c"}, {"paste:", "v"}, {"selectAll:", "a"}}));
}

TEST(EditCommands, ATextFieldDoesWhatTheMenuSays) {
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nTextInput { text: 'abc' }", QUrl());
    const std::unique_ptr<QObject> field(component.create());
    ASSERT_TRUE(field);
    EXPECT_TRUE(editFocused(field.get(), "selectAll:"));
    EXPECT_EQ(field->property("selectedText").toString(), QStringLiteral("abc"));
    EXPECT_TRUE(editFocused(field.get(), "cut:"));
    EXPECT_EQ(field->property("text").toString(), QString());
    EXPECT_TRUE(editFocused(field.get(), "paste:"));
    EXPECT_EQ(field->property("text").toString(), QStringLiteral("abc"));
}

TEST(EditCommands, WhatCannotBeEditedIsLeftAlone) {
    QObject plain;
    EXPECT_FALSE(editFocused(&plain, "copy:"));
    EXPECT_FALSE(editFocused(nullptr, "copy:"));
}

TEST(EditCommands, NoOtherMethodIsCalled) {
    auto* watched = new QObject;
    bool isGone = false;
    QObject::connect(watched, &QObject::destroyed, [&] { isGone = true; });
    EXPECT_FALSE(editFocused(watched, "deleteLater:"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(isGone);
    delete watched;
}

} // namespace
} // namespace vellmoor
