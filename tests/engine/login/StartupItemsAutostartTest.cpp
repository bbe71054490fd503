#include "found/ScanSnapshot.h"
#include "login/StartupFixture.h"

#include <set>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

class Autostart : public ::testing::Test {
protected:
    EngineHome home{System::Linux};

    Path entry(const Path& path, const std::string& keys) const {
        return home.text(path, "[Desktop Entry]\nType=Application\n" + keys);
    }
    Path autostart(const std::string& name, const std::string& keys) const {
        return entry(Path(".config/autostart") / name, keys);
    }
    Path application(const std::string& name, const std::string& keys) const {
        return entry(Path("/usr/share/applications") / name, keys);
    }
    void useDesktops(std::vector<std::string> names) {
        home.environment.desktops = std::move(names);
        home.useEnvironment();
    }
    [[nodiscard]] bool starts(const std::string& keys) const {
        autostart("a.desktop", keys);
        return onlyItem(home).startsAtLogin;
    }
};

// Files as desktops write them

TEST_F(Autostart, AFileOfGnomeTweaks) {
    const Path file = autostart("org.gnome.Terminal.desktop",
                                "Name=Terminal\nName[zh_CN]=终端\nComment=Use the command line\nExec=gnome-terminal\n"
                                "Icon=org.gnome.Terminal\nCategories=GNOME;GTK;\nStartupNotify=true\n"
                                "X-GNOME-SingleWindow=false\nX-GNOME-Autostart-enabled=true\n");
    const StartupItem item = onlyItem(home);
    EXPECT_EQ(item.id, file.string());
    EXPECT_EQ(item.name, "Terminal");
    EXPECT_EQ(item.label, "org.gnome.Terminal");
    EXPECT_EQ(item.description, "gnome-terminal");
    EXPECT_EQ(item.plistURL, file);
    EXPECT_THAT(item.program, Optional(std::string("gnome-terminal")));
    EXPECT_TRUE(item.isEnabled);
    EXPECT_TRUE(item.startsAtLogin);
}

TEST_F(Autostart, AFileOfKdesSystemSettings) {
    autostart("script.sh.desktop", "Exec=" + home.place("bin/script.sh").string() +
                                       "\nIcon=application-x-shellscript\nName=script.sh\nTerminal=false\n"
                                       "X-KDE-AutostartScript=true\nX-KDE-autostart-after=panel\n");
    const StartupItem item = onlyItem(home);
    EXPECT_EQ(item.label, "script.sh");
    EXPECT_EQ(item.name, "script.sh");
    EXPECT_EQ(item.description, "~/bin/script.sh");
    EXPECT_TRUE(item.startsAtLogin);
}

TEST_F(Autostart, AFileOfXfcesSessionSettings) {
    home.text(".config/autostart/My Tool.desktop",
              "[Desktop Entry]\nEncoding=UTF-8\nVersion=0.9.4\nType=Application\n"
              "Name=My Tool\nComment=\nExec=env LANG=C \"/opt/my tool/run\" --tray\n"
              "OnlyShowIn=XFCE;\nRunHook=0\nStartupNotify=false\n"
              "Terminal=false\nHidden=false\n");
    const StartupItem item = onlyItem(home);
    EXPECT_EQ(item.label, "My Tool");
    EXPECT_THAT(item.program, Optional(std::string("/opt/my tool/run")));
    EXPECT_FALSE(item.startsAtLogin);
    useDesktops({"XFCE"});
    EXPECT_TRUE(onlyItem(home).startsAtLogin);
}

// Which are listed

TEST_F(Autostart, DeletedEntriesAreListedInNeitherFolder) {
    autostart("a.desktop", "Name=A\nExec=a\nHidden=true\n");
    entry(".config/autostart.disabled/b.desktop", "Name=B\nExec=b\nHidden=true\n");
    EXPECT_THAT(startup(home), IsEmpty());
}

TEST_F(Autostart, TheSwitchOfGnomeCountsOnDesktopsThatHonourIt) {
    autostart("a.desktop", "Name=A\nExec=a\nX-GNOME-Autostart-enabled=false\n");
    for (const char* desktop : {"GNOME", "Unity", "Budgie", "X-Cinnamon", "MATE", "Pantheon"}) {
        useDesktops({"ubuntu", desktop});
        EXPECT_THAT(startup(home), IsEmpty()) << desktop;
    }
    for (const char* desktop : {"KDE", "XFCE", "LXQt", "gnome"}) {
        useDesktops({desktop});
        EXPECT_THAT(startup(home), SizeIs(1)) << desktop;
    }
}

TEST_F(Autostart, DisabledOnesComeFromTheFolderBeside) {
    autostart("a.desktop", "Name=Zebra\nExec=a\n");
    entry(".config/autostart.disabled/b.desktop", "Name=Ant\nExec=b\n");
    EXPECT_THAT(labels(home), ElementsAre("a", "b"));
    EXPECT_FALSE(startup(home)[1].isEnabled);
    EXPECT_TRUE(startup(home)[1].startsAtLogin);
}

TEST_F(Autostart, TheSystemsFolderIsNotListed) {
    entry("/etc/xdg/autostart/a.desktop", "Name=A\nExec=a\n");
    EXPECT_THAT(startup(home), IsEmpty());
}

TEST_F(Autostart, TheFolderFollowsTheConfigFolder) {
    home.environment.config = home.home / "conf";
    home.useEnvironment();
    entry("conf/autostart/a.desktop", "Name=A\nExec=a\n");
    autostart("b.desktop", "Name=B\nExec=b\n");
    EXPECT_THAT(labels(home), ElementsAre("a"));
}

TEST_F(Autostart, ALinkedEntryIsListed) {
    application("a.desktop", "Name=A\nExec=a\n");
    home.link(home.place("/usr/share/applications/a.desktop"), ".config/autostart/a.desktop");
    EXPECT_THAT(labels(home), ElementsAre("a"));
}

// Whether the desktop would start it

TEST_F(Autostart, WithoutCommandNothingStarts) {
    EXPECT_FALSE(starts("Name=A\n"));
    EXPECT_FALSE(starts("Name=A\nExec=\n"));
    EXPECT_EQ(onlyItem(home).program, std::nullopt);
    EXPECT_EQ(onlyItem(home).description, "a.desktop");
}

TEST_F(Autostart, OnlyShowInNeedsOneOfTheDesktops) {
    useDesktops({"ubuntu", "GNOME"});
    EXPECT_TRUE(starts("Exec=a\nOnlyShowIn=KDE;GNOME;\n"));
    EXPECT_FALSE(starts("Exec=a\nOnlyShowIn=KDE;\n"));
    EXPECT_FALSE(starts("Exec=a\nOnlyShowIn=GNOME-Classic;\n"));
}

TEST_F(Autostart, NotShowInExcludesADesktop) {
    useDesktops({"ubuntu", "GNOME"});
    EXPECT_FALSE(starts("Exec=a\nNotShowIn=GNOME;\n"));
    EXPECT_TRUE(starts("Exec=a\nNotShowIn=KDE;\n"));
}

TEST_F(Autostart, TheFirstDesktopThatIsNamedDecides) {
    useDesktops({"ubuntu", "GNOME"});
    EXPECT_TRUE(starts("Exec=a\nOnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n"));
    EXPECT_FALSE(starts("Exec=a\nOnlyShowIn=GNOME;\nNotShowIn=ubuntu;\n"));
}

TEST_F(Autostart, WithoutADesktopOnlyUnrestrictedEntriesStart) {
    EXPECT_TRUE(starts("Exec=a\n"));
    EXPECT_TRUE(starts("Exec=a\nNotShowIn=GNOME;\n"));
    EXPECT_FALSE(starts("Exec=a\nOnlyShowIn=GNOME;\n"));
}

TEST_F(Autostart, TryExecMustBeFound) {
    EXPECT_FALSE(starts("Exec=a\nTryExec=tool\n"));
    EXPECT_FALSE(starts("Exec=a\nTryExec=/opt/tool\n"));
    home.script("/usr/bin/tool", "#!/bin/sh\n");
    home.script("/opt/tool", "#!/bin/sh\n");
    EXPECT_TRUE(starts("Exec=a\nTryExec=tool\n"));
    EXPECT_TRUE(starts("Exec=a\nTryExec=/opt/tool\n"));
}

// The application of an entry

TEST_F(Autostart, AnEntryOfTheSameIdIsTheApplication) {
    const Path file = application("org.x.Chat.desktop", "Name=Chat\nExec=chat\n");
    autostart("org.x.Chat.desktop", "Name=Start Chat in background\nExec=/opt/chat --hidden\n");
    const StartupItem item = onlyItem(home);
    EXPECT_THAT(item.appURL, Optional(file));
    EXPECT_EQ(item.name, "Start Chat in background");
}

TEST_F(Autostart, AnEntryWithTheSameProgramIsTheApplication) {
    home.script("/opt/chat/chat", "#!/bin/sh\n");
    home.link(home.place("/opt/chat/chat"), "/usr/bin/chat");
    const Path file = application("org.x.Chat.desktop", "Name=Chat\nExec=chat %U\n");
    autostart("autostart-chat.desktop", "Name=Background\nExec=env A=b /opt/chat/chat --hidden\n");
    EXPECT_THAT(onlyItem(home).appURL, Optional(file));
    EXPECT_EQ(onlyItem(home).label, "autostart-chat");
}

TEST_F(Autostart, AFlatpakIsFoundByItsId) {
    application("org.x.Other.desktop", "Name=Other\nExec=/usr/bin/flatpak run org.x.Other\n");
    const Path file = application("org.x.Chat.desktop", "Name=Chat\nExec=/usr/bin/flatpak run org.x.Chat\n");
    autostart("chat.desktop", "Name=Background\nExec=flatpak run --command=chat org.x.Chat --hidden\n");
    EXPECT_THAT(onlyItem(home).appURL, Optional(file));
}

TEST_F(Autostart, AShellIsNobodysProgram) {
    home.script("/usr/bin/sh", "#!/bin/sh\n");
    application("other.desktop", "Name=Other\nExec=sh -c other\n");
    autostart("mine.desktop", "Name=Mine\nExec=sh -c mine\n");
    EXPECT_EQ(onlyItem(home).appURL, std::nullopt);
    EXPECT_EQ(onlyItem(home).name, "Mine");
}

TEST_F(Autostart, SnapsAreNotOneProgram) {
    home.script("/usr/bin/snap", "#!/bin/sh\n");
    home.link(home.place("/usr/bin/snap"), "/snap/bin/one");
    home.link(home.place("/usr/bin/snap"), "/snap/bin/two");
    application("one_one.desktop", "Name=One\nExec=/snap/bin/one\n");
    autostart("two.desktop", "Name=Two\nExec=/snap/bin/two\n");
    EXPECT_EQ(onlyItem(home).appURL, std::nullopt);
}

TEST_F(Autostart, WithoutApplicationAndNameTheLabelIsMadeFriendly) {
    autostart("com.example.update-agent.desktop", "Exec=/opt/agent\n");
    EXPECT_EQ(onlyItem(home).name, "update agent");
}

TEST_F(Autostart, ADeletedEntryIsNoApplication) {
    application("a.desktop", "Name=Gone\nExec=a\nHidden=true\n");
    autostart("a.desktop", "Name=Mine\nExec=a\n");
    EXPECT_EQ(onlyItem(home).name, "Mine");
}

TEST_F(Autostart, AnEntryWithoutNameIsCalledAsItsApplication) {
    home.script("/usr/bin/chat", "#!/bin/sh\n");
    application("org.x.Chat.desktop", "Name=Chat\nExec=chat\n");
    autostart("mine.desktop", "Exec=chat\n");
    EXPECT_EQ(onlyItem(home).name, "Chat");
}

TEST_F(Autostart, EntriesOfOneApplicationAreToldApart) {
    home.script("/usr/bin/xterm", "#!/bin/sh\n");
    application("xterm.desktop", "Name=XTerm\nExec=xterm\n");
    autostart("logs.desktop", "Name=Log window\nExec=xterm -e logs\n");
    autostart("one.desktop", "Name=XTerm\nExec=xterm -e one\n");
    autostart("two.desktop", "Name=xterm\nExec=xterm -e two\n");
    entry(".config/autostart.disabled/one.desktop", "Name=XTerm\nExec=xterm -e one\n");
    std::vector<std::string> names;
    std::set<std::string> ids;
    for (const StartupItem& item : startup(home)) {
        names.push_back(item.name);
        ids.insert(item.id);
    }
    EXPECT_THAT(
        names, UnorderedElementsAre("Log window", "XTerm (one.desktop)", "xterm (two.desktop)", "XTerm (one.desktop)"));
    EXPECT_THAT(ids, SizeIs(4));
}

// Bad input

TEST_F(Autostart, WhatIsNoEntryIsPassedOver) {
    const Path folder = ".config/autostart";
    home.text(folder / "empty.desktop", "");
    home.text(folder / "cut.desktop", "[Desktop Ent");
    home.text(folder / "group.desktop", "[Other]\nExec=a\n");
    home.text(folder / "huge.desktop", "[Desktop Entry]\nExec=" + std::string(std::size_t{10} << 20U, 'x') + "\n");
    home.text(folder / "binary.desktop", std::string("\x7F"
                                                     "ELF\0\0",
                                                     6));
    home.text(folder / "a.desktop.bak", "[Desktop Entry]\nExec=a\n");
    home.text(folder / ".hidden.desktop", "[Desktop Entry]\nExec=a\n");
    home.folder(folder / "folder.desktop");
    home.fifo(folder / "fifo.desktop");
    home.link("nowhere", folder / "dangling.desktop");
    home.link("loop.desktop", folder / "loop.desktop");
    EXPECT_THAT(startup(home), IsEmpty());
}

TEST_F(Autostart, ALineThatCannotBeSplitHasNoProgram) {
    autostart("a.desktop", "Name=A\nExec=\"half\n");
    EXPECT_EQ(onlyItem(home).program, std::nullopt);
    EXPECT_EQ(onlyItem(home).description, "a.desktop");
}

TEST_F(Autostart, FileNamesOfAnyBytesAreItems) {
    for (const char* name : {"a\nb.desktop", "q\"q.desktop", "bad\xff.desktop", "%@%d.desktop"}) {
        autostart(name, "Exec=a\n");
    }
    EXPECT_THAT(labels(home), UnorderedElementsAre("a\nb", "q\"q", "bad\xff", "%@%d"));
}

// The rows

TEST_F(Autostart, TheFirstRowShowsTheAutostartFolder) {
    const Path file = autostart("a.desktop", "Exec=a\n");
    EngineContext context = home.context();
    const CleanupItem row = performanceItems(context)[0];
    EXPECT_EQ(row.title, "User Autostart Entries");
    EXPECT_EQ(row.description, "Login launch configs in ~/.config/autostart");
    EXPECT_EQ(row.symbol, "power");
    EXPECT_EQ(row.tint, Tint::green);
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
    EXPECT_FALSE(row.isCleanable);
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_EQ(row.targets.front().url, file);
}

TEST_F(Autostart, TheSecondRowHoldsTheSavedSessions) {
    home.file(".cache/sessions/xfce4-session-host:0");
    home.file(".config/gnome-session/saved-session/nautilus.desktop");
    home.file(".config/mate-session/saved-session/caja.desktop");
    home.file(".config/session/konsole_10d6_1");
    EngineContext context = home.context();
    const CleanupItem row = performanceItems(context)[1];
    EXPECT_EQ(row.title, "Saved Session State");
    EXPECT_EQ(row.description, "Window restore state and temporary session files");
    EXPECT_EQ(row.risk, CleanupRisk::cautious);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    std::vector<std::string> names;
    for (const CleanupTarget& target : row.targets) {
        names.push_back(target.name);
    }
    EXPECT_THAT(names, ElementsAre("xfce4-session-host:0", "nautilus.desktop", "caja.desktop"));
}

TEST_F(Autostart, AFolderOfTheUsersIsNoPlaceOfSavedSessions) {
    home.environment.cache = home.home / "Documents";
    home.useEnvironment();
    home.file("Documents/sessions/minutes.odt");
    EngineContext context = home.context();
    EXPECT_THAT(performanceItems(context)[1].targets, SizeIs(0));
}

TEST_F(Autostart, KdesSessionsNeedItsSessionManager) {
    home.text(".config/ksmserverrc", "[General]\n");
    home.file(".config/session/konsole_10d6_1");
    home.file(".config/session/plain");
    home.file(".config/session/dotted_name.conf");
    home.folder(".config/session/folder_x");
    home.link("konsole_10d6_1", ".config/session/link_x");
    EngineContext context = home.context();
    const CleanupItem row = performanceItems(context)[1];
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_EQ(row.targets.front().name, "konsole_10d6_1");
}

} // namespace
} // namespace vellmoor::test
