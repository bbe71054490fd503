// Applications on Linux by what the desktop tells of a start: the control group, variables, an AppImage.
#include "memory/MemoryLinuxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {
namespace {

using test::LinuxApps;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::string_view uuid = "8b7c2d8e-0a4f-4d53-9f2a-6c1b8f0e7d21";

TEST_F(LinuxApps, AnApplicationIsFoundByItsControlGroup) {
    const Path entry = addEntry("org.gnome.Epiphany", "Web", "epiphany %U");
    add({.pid = 10, .exe = "/usr/bin/epiphany", .group = unit("app-gnome-org.gnome.Epiphany-10.scope"), .pages = 10});
    add({.pid = 11,
         .exe = "/usr/libexec/WebKitWebProcess",
         .group = unit("app-gnome-org.gnome.Epiphany-10.scope"),
         .pages = 20});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, entry.string());
    EXPECT_EQ(found[0].path, entry.string());
    EXPECT_EQ(found[0].bundleIdentifier, "org.gnome.Epiphany");
    EXPECT_EQ(found[0].name, "Web");
    EXPECT_EQ(found[0].bytes, 30 * 4096);
    EXPECT_EQ(found[0].processCount, 2);
    EXPECT_THAT(found[0].pids, ElementsAre(10, 11));
    EXPECT_TRUE(found[0].isActive);
}

TEST_F(LinuxApps, NineApplicationsYieldTheEightLargest) {
    for (int i = 1; i <= 9; ++i) {
        const std::string id = "org.example.App" + std::to_string(i);
        addEntry(id, "App" + std::to_string(i), "app");
        add({.pid = 10 + i, .group = unit("app-gnome-" + id + "-1.scope"), .pages = i});
    }
    EXPECT_THAT(names(), ElementsAre("App9", "App8", "App7", "App6", "App5", "App4", "App3", "App2"));
}

TEST_F(LinuxApps, AFlatpakASnapAndAKdeServiceAreFoundByTheirUnits) {
    addEntry("org.mozilla.firefox", "Firefox", "flatpak run org.mozilla.firefox");
    addEntry("chromium_chromium", "Chromium", "/snap/bin/chromium");
    addEntry("google-chrome", "Chrome", "google-chrome");
    add({.pid = 10, .exe = "/app/lib/firefox", .group = unit("app-flatpak-org.mozilla.firefox-31.scope"), .pages = 3});
    add({.pid = 11,
         .exe = "/snap/chromium/1/chrome",
         .group = unit("snap.chromium.chromium-" + std::string(uuid) + ".scope"),
         .pages = 2});
    add({.pid = 12,
         .exe = "/opt/google/chrome/chrome",
         .group = unit(R"(app-google\x2dchrome@1.service)"),
         .pages = 1});
    EXPECT_THAT(names(), ElementsAre("Firefox", "Chromium", "Chrome"));
}

TEST_F(LinuxApps, AnIdentifierWithoutEntryThatSpeaksOfItsProgramNamesIt) {
    add({.pid = 10, .exe = "/opt/thing/thing", .group = unit("app-gnome-com.example.some_thing-1.scope")});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, home.place("/opt/thing/thing").string());
    EXPECT_EQ(found[0].path, home.place("/opt/thing/thing").string());
    EXPECT_EQ(found[0].bundleIdentifier, "com.example.some_thing");
    EXPECT_EQ(found[0].name, "some thing");
    EXPECT_FALSE(found[0].isActive);
}

TEST_F(LinuxApps, AShellInATerminalIsNotKnownByWhatItInherited) {
    addEntry("org.gnome.Terminal", "Terminal", "gnome-terminal");
    const std::string shell = "app-org.gnome.Terminal.slice/vte-spawn-" + std::string(uuid) + ".scope";
    add({.pid = 10,
         .exe = "/usr/bin/bash",
         .group = unit(shell),
         .environment = "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/org.gnome.Terminal.desktop|"
                        "GIO_LAUNCHED_DESKTOP_FILE_PID=10|APPIMAGE=/x.AppImage|"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, AProgramStartedInATerminalIsFoundByItsPath) {
    addProgram("/usr/bin/mousepad");
    addEntry("mousepad", "Mousepad", "mousepad");
    const std::string shell = "app-org.gnome.Terminal.slice/vte-spawn-" + std::string(uuid) + ".scope";
    add({.pid = 10, .exe = "/usr/bin/mousepad", .group = unit(shell)});
    EXPECT_THAT(names(), ElementsAre("Mousepad"));
}

TEST_F(LinuxApps, ALaunchedEntryIsKnownByItsVariables) {
    const Path entry = addEntry("gedit", "Text Editor", "gedit");
    add({.pid = 10,
         .exe = "/usr/bin/python3.11",
         .environment = "HOME=/x|GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/gedit.desktop|"
                        "GIO_LAUNCHED_DESKTOP_FILE_PID=10|"});
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::id, entry.string())));
}

TEST_F(LinuxApps, InheritedLaunchVariablesSayNothing) {
    addEntry("gedit", "Text Editor", "gedit");
    add({.pid = 11,
         .exe = "/usr/bin/make",
         .environment = "GIO_LAUNCHED_DESKTOP_FILE=/usr/share/applications/gedit.desktop|"
                        "GIO_LAUNCHED_DESKTOP_FILE_PID=10|"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, ALaunchedFileThatIsNotInstalledStandsForItself) {
    const Path entry = home.text("/opt/loose/tool.desktop", "[Desktop Entry]\nType=Application\nName=Loose\nExec=x\n");
    add({.pid = 10,
         .environment = "GIO_LAUNCHED_DESKTOP_FILE=/opt/loose/tool.desktop|GIO_LAUNCHED_DESKTOP_FILE_PID=10|"});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, entry.string());
    EXPECT_EQ(found[0].name, "Loose");
    EXPECT_EQ(found[0].bundleIdentifier, "tool");
}

TEST_F(LinuxApps, AnAutostartFileStandsForTheInstalledEntryOfItsName) {
    const Path entry = addEntry("gedit", "Text Editor", "gedit");
    add({.pid = 10,
         .environment =
             "GIO_LAUNCHED_DESKTOP_FILE=/etc/xdg/autostart/gedit.desktop|GIO_LAUNCHED_DESKTOP_FILE_PID=10|"});
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::id, entry.string())));
}

TEST_F(LinuxApps, AnAppImageWithoutEntryStandsForItself) {
    const std::string image = home.script("Applications/Krita-5.2-x86_64.AppImage", "x").string();
    add({.pid = 10,
         .exe = "/tmp/.mount_KritaX/usr/bin/krita",
         .environment = "APPIMAGE=" + image + "|APPDIR=/tmp/.mount_KritaX|"});
    add({.pid = 11,
         .exe = "/tmp/.mount_KritaX/usr/bin/helper",
         .environment = "APPIMAGE=" + image + "|APPDIR=/tmp/.mount_KritaX|"});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].id, image);
    EXPECT_EQ(found[0].path, image);
    EXPECT_EQ(found[0].name, "Krita-5.2-x86_64");
    EXPECT_EQ(found[0].bundleIdentifier, std::nullopt);
    EXPECT_EQ(found[0].processCount, 2);
    EXPECT_FALSE(found[0].isActive);
}

TEST_F(LinuxApps, AnAppImageWithAnEntryIsThatEntry) {
    const std::string image = home.script("Applications/Krita.AppImage", "x").string();
    const Path entry = addEntry("krita", "Krita", image + " %F");
    add({.pid = 10,
         .exe = "/tmp/.mount_KritaX/usr/bin/krita",
         .environment = "APPIMAGE=" + image + "|APPDIR=/tmp/.mount_KritaX|"});
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::id, entry.string())));
}

} // namespace
} // namespace vellmoor
