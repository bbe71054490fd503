#include "memory/Memory.h"
#include "memory/MemoryFixtures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::addProcess;
using test::EngineHome;
using test::FakeProcess;
using test::System;
using test::userUnit;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr std::string_view uuid = "8b7c2d8e-0a4f-4d53-9f2a-6c1b8f0e7d21";

class LinuxApps : public ::testing::Test {
protected:
    LinuxApps() { home.layout.memory.processes.pageBytes = 4096; }

    /// An entry of the system with a program that exists.
    Path addEntry(const std::string& id, const std::string& name, const std::string& exec,
                  const std::string& more = {}) {
        return home.text("/usr/share/applications/" + id + ".desktop",
                         "[Desktop Entry]\nType=Application\nName=" + name + "\nExec=" + exec + "\n" + more);
    }
    void addProgram(const Path& path) { home.script(path, "#!/bin/sh\n"); }
    /// One that the kernel runs as it is.
    void addBinary(const Path& path) {
        home.script(path, "\x7f"
                          "ELF");
    }
    void add(FakeProcess process) { addProcess(home, process); }
    std::string unit(std::string_view name) { return userUnit(home, name); }
    std::vector<MemoryApp> apps() {
        EngineContext context = home.context();
        return memoryApps(context);
    }
    std::vector<std::string> names() {
        std::vector<std::string> out;
        for (const MemoryApp& app : apps()) {
            out.push_back(app.name);
        }
        return out;
    }

    EngineHome home{System::Linux};
};

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

TEST_F(LinuxApps, AProgramIsFoundByTheEntryThatStartsIt) {
    addProgram("/usr/bin/mousepad");
    const Path entry = addEntry("mousepad", "Mousepad", "mousepad %U");
    add({.pid = 10, .exe = "/usr/bin/mousepad"});
    EXPECT_THAT(apps(), ElementsAre(Field(&MemoryApp::id, entry.string())));
}

TEST_F(LinuxApps, LinksOfAnEntrysProgramAreResolved) {
    addProgram("/usr/lib/firefox/firefox");
    home.link("../lib/firefox/firefox", "/usr/bin/firefox");
    addEntry("firefox", "Firefox", "firefox %u");
    add({.pid = 10, .exe = "/usr/lib/firefox/firefox"});
    EXPECT_THAT(names(), ElementsAre("Firefox"));
}

TEST_F(LinuxApps, AProgramIsFoundByTheEntryThatTriesIt) {
    addProgram("/usr/bin/real");
    addEntry("real", "Real", "sh -c real", "TryExec=real\n");
    add({.pid = 10, .exe = "/usr/bin/real"});
    EXPECT_THAT(names(), ElementsAre("Real"));
}

TEST_F(LinuxApps, AProgramInTheFolderOfAnEntrysProgramBelongsToIt) {
    addProgram("/opt/google/chrome/google-chrome");
    addEntry("google-chrome", "Chrome", "/opt/google/chrome/google-chrome %U");
    add({.pid = 10, .exe = "/opt/google/chrome/chrome", .pages = 5});
    add({.pid = 11, .exe = "/opt/google/chrome/lib/helper", .pages = 5});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].processCount, 2);
}

TEST_F(LinuxApps, ASharedFolderTellsNothing) {
    addProgram("/usr/bin/mousepad");
    addEntry("mousepad", "Mousepad", "mousepad");
    home.script(".local/bin/own", "x");
    addEntry("own", "Own", (home.home / ".local/bin/own").string());
    add({.pid = 10, .exe = "/usr/bin/bash"});
    add({.pid = 11, .exe = (home.home / ".local/bin/other").string()});
    add({.pid = 12, .exe = "/usr/bin/deeper/tool"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, TheHomeItselfIsASharedFolder) {
    home.script("tool", "x");
    addEntry("tool", "Tool", (home.home / "tool").string());
    add({.pid = 10, .exe = (home.home / "src/other").string()});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, AnInterpreterIsNoApplication) {
    addProgram("/usr/bin/python3.11");
    home.link("python3.11", "/usr/bin/python3");
    addEntry("updater", "Updater", "python3 /usr/share/updater/main.py");
    add({.pid = 10, .exe = "/usr/bin/python3.11"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, AVisibleEntryOfAProgramGoesBeforeAHiddenOne) {
    addProgram("/usr/bin/nautilus");
    addEntry("a-autorun", "Autorun", "nautilus --autorun", "NoDisplay=true\n");
    addEntry("b-files", "Files", "nautilus");
    add({.pid = 10, .exe = "/usr/bin/nautilus"});
    EXPECT_THAT(names(), ElementsAre("Files"));
}

TEST_F(LinuxApps, ADeletedEntryIsNone) {
    addProgram("/usr/bin/tool");
    addEntry("tool", "Tool", "tool", "Hidden=true\n");
    add({.pid = 10, .exe = "/usr/bin/tool"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, TheUsersEntryReplacesTheSystemsOfTheSameName) {
    addProgram("/usr/bin/tool");
    addEntry("tool", "System", "tool");
    home.text(".local/share/applications/tool.desktop", "[Desktop Entry]\nType=Application\nName=Mine\nExec=tool\n");
    add({.pid = 10, .exe = "/usr/bin/tool"});
    EXPECT_THAT(names(), ElementsAre("Mine"));
}

TEST_F(LinuxApps, AReplacedEntryIsNotKnownByItsProgram) {
    addProgram("/usr/bin/old");
    addProgram("/usr/bin/new");
    addEntry("tool", "System", "old");
    home.text(".local/share/applications/tool.desktop", "[Desktop Entry]\nType=Application\nName=Mine\nExec=new\n");
    add({.pid = 10, .exe = "/usr/bin/old"});
    EXPECT_THAT(apps(), IsEmpty());
}

TEST_F(LinuxApps, AHelperBesideItsParentBelongsToTheParentsApplication) {
    addProgram("/usr/libexec/editor/editor");
    addEntry("editor", "Editor", "sh editor");
    add({.pid = 10, .exe = "/srv/editor/editor", .group = unit("app-gnome-editor-10.scope"), .pages = 5});
    add({.pid = 11, .exe = "/srv/editor/worker", .parent = 10, .pages = 5});
    add({.pid = 12, .exe = "/srv/editor/worker", .parent = 11, .pages = 5});
    add({.pid = 13, .exe = "/srv/other/worker", .parent = 10, .pages = 5});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].pids, ElementsAre(10, 11, 12));
}

TEST_F(LinuxApps, ParentsThatFormALoopAreHandled) {
    add({.pid = 10, .exe = "/srv/a/a", .parent = 11});
    add({.pid = 11, .exe = "/srv/a/b", .parent = 10});
    add({.pid = 12, .exe = "/srv/a/c", .parent = 12});
    EXPECT_THAT(apps(), IsEmpty());
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

TEST_F(LinuxApps, TheProcessesThatWereShownAndStillAreItsOwnAreAskedToQuit) {
    addEntry("org.example.One", "One", "one");
    const std::string scope = unit("app-gnome-org.example.One-10.scope");
    add({.pid = 10, .group = scope, .pages = 10});
    add({.pid = 11, .group = scope, .pages = 10});
    add({.pid = 12, .group = scope, .pages = 10, .started = 300});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].starts, ElementsAre(100U, 100U, 300U));
    std::filesystem::remove_all(home.place("/proc/11"));
    std::filesystem::remove_all(home.place("/proc/12"));
    add({.pid = 12, .group = scope, .pages = 10, .started = 900}); // another one, with the number of the old
    add({.pid = 13, .group = scope, .pages = 10});                 // a second instance, with content of its own
    EngineContext context = home.context();
    const MemoryApp living = withLivingProcesses(context, found[0]);
    EXPECT_THAT(living.pids, ElementsAre(10));
    EXPECT_THAT(living.starts, ElementsAre(100U));
}

TEST_F(LinuxApps, AnApplicationThatWasStartedAnewIsNotTheOneThatWasShown) {
    addEntry("org.example.One", "One", "one");
    add({.pid = 10, .group = unit("app-gnome-org.example.One-10.scope"), .pages = 10});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    std::filesystem::remove_all(home.place("/proc/10"));
    add({.pid = 20, .group = unit("app-gnome-org.example.One-20.scope"), .pages = 10, .started = 900});
    EngineContext context = home.context();
    EXPECT_THAT(withLivingProcesses(context, found[0]).pids, IsEmpty());
}

TEST_F(LinuxApps, ANumberThatBelongsToAnotherProcessByNowIsNotAsked) {
    addEntry("org.example.One", "One", "one");
    addEntry("org.example.Two", "Two", "two");
    add({.pid = 10, .group = unit("app-gnome-org.example.One-10.scope"), .pages = 10});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    std::filesystem::remove_all(home.place("/proc/10"));
    add({.pid = 10, .group = unit("app-gnome-org.example.Two-10.scope"), .pages = 10});
    EngineContext context = home.context();
    const MemoryApp current = withLivingProcesses(context, found[0]);
    EXPECT_EQ(current.id, found[0].id);
    EXPECT_THAT(current.pids, IsEmpty());
}

} // namespace
} // namespace vellmoor
