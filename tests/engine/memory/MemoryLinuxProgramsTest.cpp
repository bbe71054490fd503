// Applications on Linux by the program that runs: the entry that starts it, its folder, its parent.
#include "memory/MemoryLinuxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace vellmoor {
namespace {

using test::LinuxApps;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

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

} // namespace
} // namespace vellmoor
