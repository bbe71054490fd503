// What is not listed on Linux: the desktop itself, this program, what is of others or of nobody.
#include "memory/MemoryLinuxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace vellmoor {
namespace {

using test::LinuxApps;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;

TEST_F(LinuxApps, WhatNothingKnowsIsDropped) {
    add({.pid = 10, .exe = "/usr/bin/sleep"});
    add({.pid = 11}); // no program, no group
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, EntriesThatAreNotShownAreDropped) {
    addEntry("org.gnome.Service", "Service", "service", "NoDisplay=true\n");
    add({.pid = 10, .exe = "/usr/bin/service", .group = unit("app-gnome-org.gnome.Service-1.scope")});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, TheDesktopsOwnSlicesAreDropped) {
    const std::string user = std::to_string(home.platform.user);
    const std::string manager = "/user.slice/user-" + user + ".slice/user@" + user + ".service/";
    addEntry("org.gnome.Thing", "Thing", "thing");
    add({.pid = 10, .exe = "/usr/bin/a", .group = manager + "session.slice/app-gnome-org.gnome.Thing-1.scope"});
    add({.pid = 11, .exe = "/usr/bin/b", .group = manager + "background.slice/app-gnome-org.gnome.Thing-2.scope"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, TheDesktopsProgramsAreDropped) {
    int pid = 10;
    for (const char* program : {"gnome-shell",
                                "plasmashell",
                                "kwin_wayland",
                                "mutter-x11-frames",
                                "Xorg",
                                "Xwayland",
                                "xfwm4",
                                "xfce4-panel",
                                "xfdesktop",
                                "xfce4-session",
                                "cinnamon-daemon",
                                "marco",
                                "mate-panel",
                                "lxqt-panel",
                                "budgie-wm",
                                "gnome-session-binary",
                                "systemd",
                                "dbus-daemon",
                                "pipewire-pulse",
                                "wireplumber",
                                "pulseaudio",
                                "ibus-daemon",
                                "fcitx5",
                                "gvfsd-fuse",
                                "xdg-desktop-portal",
                                "at-spi2-registryd",
                                "polkit-gnome-authentication-agent-1"}) {
        add({.pid = ++pid, .exe = "/usr/bin/" + std::string(program), .group = unit("app-gnome-some.App-1.scope")});
    }
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, AProgramWhoseNameOnlyBeginsLikeADesktopsIsListed) {
    add({.pid = 10, .exe = "/usr/bin/marcoplot", .group = unit("app-gnome-org.example.Marcoplot-1.scope")});
    EXPECT_THAT(names(), ElementsAre("Marcoplot"));
}

TEST_F(LinuxApps, TheProgramItselfIsDropped) {
    addProgram("/usr/bin/vellmoor");
    addEntry("org.vellmoor.Vellmoor", "Vellmoor", "vellmoor");
    add({.pid = 10, .exe = "/usr/bin/vellmoor", .group = unit("app-gnome-org.vellmoor.Vellmoor-1.scope")});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, ItsOwnAppImageIsDropped) {
    home.environment.ownAppImage = home.script("Applications/Vellmoor.AppImage", "x").string();
    home.useEnvironment();
    add({.pid = 10,
         .exe = "/tmp/.mount_Vellmoor/AppRun",
         .environment = "APPIMAGE=" + home.environment.ownAppImage + "|APPDIR=/tmp/.mount_Vellmoor|"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, WhatItsOwnEntryStartedIsDropped) {
    addProgram("/usr/bin/vellmoor");
    addEntry("vellmoor-cleaner", "Vellmoor", "vellmoor");
    add({.pid = 10, .exe = "/usr/bin/other", .group = unit(R"(app-gnome-vellmoor\x2dcleaner-1.scope)")});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, AProcessOfAnotherUserIsNotCounted) {
    addEntry("gedit", "Text Editor", "gedit");
    add({.pid = 10, .group = unit("app-gnome-gedit-1.scope"), .pages = 7});
    add({.pid = 11, .group = unit("app-gnome-gedit-1.scope"), .pages = 900, .user = 4711});
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::bytes, 7 * 4096)));
}

TEST_F(LinuxApps, AnApplicationWithoutMemoryIsDropped) {
    addEntry("gedit", "Text Editor", "gedit");
    add({.pid = 10, .group = unit("app-gnome-gedit-1.scope"), .pages = 0});
    EXPECT_THAT(apps(), IsEmpty());
}

} // namespace
} // namespace vellmoor
