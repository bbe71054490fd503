// Each module without a mouse.
#include "KeyboardHands.h"
#include "RunningApp.h"

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace vellmoor::journey {
namespace {

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

} // namespace
} // namespace vellmoor::journey
