#include "desktop/DesktopEntries.h"

#include "EngineHome.h"
#include "desktop/ExecLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;

std::vector<std::string> words(std::string_view exec) {
    return execWords(exec).value_or(std::vector<std::string>{"(broken)"});
}

std::string program(std::string_view exec) {
    return execProgram(words(exec));
}

std::string flatpak(std::string_view exec) {
    return flatpakApplication(words(exec));
}

class DesktopEntries : public ::testing::Test {
protected:
    EngineHome home{System::Linux};

    void entry(const Path& path, std::string_view keys) const {
        home.text(path, "[Desktop Entry]\nType=Application\n" + std::string(keys));
    }
    [[nodiscard]] std::vector<InstalledEntry> read() const {
        EngineContext context = home.context();
        return installedEntries(context);
    }
    [[nodiscard]] std::vector<std::string> ids() const {
        std::vector<std::string> all;
        for (const InstalledEntry& found : read()) {
            all.push_back(found.id);
        }
        return all;
    }
    [[nodiscard]] InstalledEntry only() const {
        const std::vector<InstalledEntry> all = read();
        EXPECT_THAT(all, SizeIs(1));
        return all.empty() ? InstalledEntry{} : all.front();
    }
};

// The Exec key

TEST(ExecWords, BlanksSeparateWords) {
    EXPECT_THAT(words("  a\tb   c "), ElementsAre("a", "b", "c"));
}

TEST(ExecWords, QuotesKeepBlanksAndEscapedCharacters) {
    EXPECT_THAT(words(R"("/opt/my app/run" "a \"b\" \$c \\" 'x y')"),
                ElementsAre("/opt/my app/run", R"(a "b" $c \)", "x y"));
}

TEST(ExecWords, ABackslashInQuotesStaysBeforeOtherCharacters) {
    EXPECT_THAT(words(R"("a\nb")"), ElementsAre(R"(a\nb)"));
}

TEST(ExecWords, AnEmptyQuotedArgumentIsAWord) {
    EXPECT_THAT(words(R"(a "" b)"), ElementsAre("a", "", "b"));
}

TEST(ExecWords, AQuoteThatIsNotClosedBreaksTheLine) {
    EXPECT_EQ(execWords(R"(run "half)"), std::nullopt);
    EXPECT_EQ(execWords("run 'half"), std::nullopt);
}

TEST(ExecWords, ALoneBackslashAtTheEndIsKept) {
    EXPECT_THAT(words("a\\"), ElementsAre("a\\"));
}

TEST(ExecWords, NothingHasNoWords) {
    EXPECT_THAT(words(""), IsEmpty());
    EXPECT_THAT(words(" \n"), IsEmpty());
}

TEST(ExecProgram, IsTheFirstWord) {
    EXPECT_EQ(program("/usr/bin/gimp-2.10 %U"), "/usr/bin/gimp-2.10");
    EXPECT_EQ(program("\"/home/u/My Apps/x.AppImage\" --no-sandbox"), "/home/u/My Apps/x.AppImage");
}

TEST(ExecProgram, EnvAndItsOptionsAndVariablesAreSkipped) {
    EXPECT_EQ(program("env BAMF_DESKTOP_FILE_HINT=/x.desktop /snap/bin/firefox %u"), "/snap/bin/firefox");
    EXPECT_EQ(program("/usr/bin/env -u LANG --chdir / -i A=b run"), "run");
    EXPECT_EQ(program("GDK_BACKEND=x11 run"), "run");
}

TEST(ExecProgram, AWordWithAnEqualsSignThatIsNoVariableIsTheProgram) {
    EXPECT_EQ(program("/opt/a=b/run"), "/opt/a=b/run");
    EXPECT_EQ(program("=x"), "=x");
    EXPECT_EQ(program("1A=x"), "1A=x");
}

TEST(ExecProgram, NothingIsStartedByVariablesAlone) {
    EXPECT_EQ(program("env A=b"), "");
    EXPECT_EQ(program(""), "");
}

TEST(FlatpakApplication, IsTheFirstArgumentOfRunThatIsAnId) {
    EXPECT_EQ(flatpak("/usr/bin/flatpak run --branch=stable --arch=x86_64 --command=firefox --file-forwarding "
                      "org.mozilla.firefox @@u %u @@"),
              "org.mozilla.firefox");
    EXPECT_EQ(flatpak("flatpak --user run org.gimp.GIMP//stable"), "org.gimp.GIMP");
    EXPECT_EQ(flatpak("env A=b flatpak run --command sh org.gimp.GIMP"), "org.gimp.GIMP");
}

TEST(FlatpakApplication, OtherLinesRunNone) {
    EXPECT_EQ(flatpak("flatpak install org.gimp.GIMP"), "");
    EXPECT_EQ(flatpak("flatpak run"), "");
    EXPECT_EQ(flatpak("flatpak run ../../x.y.z"), "");
    EXPECT_EQ(flatpak("/usr/bin/gimp run org.gimp.GIMP"), "");
    EXPECT_EQ(flatpak(""), "");
}

// One entry

TEST_F(DesktopEntries, TheKeysOfAnEntryAreRead) {
    entry(".local/share/applications/org.example.Tool.desktop",
          "Name=Tool\nExec=env A=b /usr/bin/tool %U\nTryExec=tool\nIcon=tool-icon\nNoDisplay=true\n"
          "OnlyShowIn=GNOME;KDE;\nNotShowIn=XFCE;\n");
    const InstalledEntry found = only();
    EXPECT_EQ(found.id, "org.example.Tool");
    EXPECT_EQ(found.path, home.place(".local/share/applications/org.example.Tool.desktop"));
    EXPECT_EQ(found.name, "Tool");
    EXPECT_EQ(found.exec, "env A=b /usr/bin/tool %U");
    EXPECT_EQ(found.execProgram, "/usr/bin/tool");
    EXPECT_EQ(found.tryExec, "tool");
    EXPECT_EQ(found.icon, "tool-icon");
    EXPECT_TRUE(found.noDisplay);
    EXPECT_FALSE(found.hidden);
    EXPECT_THAT(found.onlyShowIn, ElementsAre("GNOME", "KDE"));
    EXPECT_THAT(found.notShowIn, ElementsAre("XFCE"));
    EXPECT_EQ(found.flatpakId, "");
}

TEST_F(DesktopEntries, TheNameIsInTheInterfaceLanguage) {
    entry(".local/share/applications/a.desktop", "Name=Files\nName[de]=Dateien\nName[zh_CN]=文件\nExec=a\n");
    EXPECT_EQ(only().name, "Files");
    L::setLanguage(AppLanguage::chinese);
    EXPECT_EQ(only().name, "文件");
    L::setLanguage(AppLanguage::english);
}

TEST_F(DesktopEntries, TheNameWithoutLanguageStandsInForAMissingOne) {
    entry(".local/share/applications/a.desktop", "Name=Files\nName[de]=Dateien\nExec=a\n");
    L::setLanguage(AppLanguage::chinese);
    EXPECT_EQ(only().name, "Files");
    L::setLanguage(AppLanguage::english);
}

TEST_F(DesktopEntries, ALineThatCannotBeSplitStartsNoProgram) {
    entry(".local/share/applications/a.desktop", "Name=A\nExec=run \"half\n");
    EXPECT_EQ(only().exec, "run \"half");
    EXPECT_EQ(only().execProgram, "");
}

TEST_F(DesktopEntries, LinksAndDirectoriesAreNoApplications) {
    home.text(".local/share/applications/link.desktop", "[Desktop Entry]\nType=Link\nName=L\nURL=http://x\n");
    home.text(".local/share/applications/none.desktop", "[Desktop Entry]\nName=N\nExec=n\n");
    EXPECT_THAT(ids(), IsEmpty());
}

// The folders

TEST_F(DesktopEntries, TheUsersFoldersComeFirst) {
    entry("/usr/share/applications/c.desktop", "Name=C\nExec=c\n");
    entry("/usr/local/share/applications/b.desktop", "Name=B\nExec=b\n");
    entry(".local/share/flatpak/exports/share/applications/org.x.Y.desktop", "Name=Y\nExec=flatpak run org.x.Y\n");
    entry("/var/lib/flatpak/exports/share/applications/org.x.Z.desktop", "Name=Z\nExec=flatpak run org.x.Z\n");
    entry("/var/lib/snapd/desktop/applications/s_s.desktop", "Name=S\nExec=/snap/bin/s\n");
    entry(".local/share/applications/a.desktop", "Name=A\nExec=a\n");
    EXPECT_THAT(ids(), ElementsAre("a", "org.x.Y", "b", "c", "org.x.Z", "s_s"));
}

TEST_F(DesktopEntries, TheFoldersFollowTheVariables) {
    home.environment.data = home.folder("data");
    home.environment.dataDirs = {"/opt/share", home.home / "more"};
    home.environment.toolFolders["FLATPAK_USER_DIR"] = home.home / "paks";
    home.useEnvironment();
    entry("data/applications/a.desktop", "Name=A\nExec=a\n");
    entry("paks/exports/share/applications/org.x.Y.desktop", "Name=Y\nExec=flatpak run org.x.Y\n");
    entry("/opt/share/applications/b.desktop", "Name=B\nExec=b\n");
    entry("more/applications/c.desktop", "Name=C\nExec=c\n");
    entry("/usr/share/applications/unread.desktop", "Name=U\nExec=u\n");
    EXPECT_THAT(ids(), ElementsAre("a", "org.x.Y", "b", "c"));
}

TEST_F(DesktopEntries, AFolderThatIsNamedTwiceIsReadOnce) {
    home.environment.dataDirs = {"/var/lib/flatpak/exports/share", "/usr/share"};
    home.useEnvironment();
    entry("/var/lib/flatpak/exports/share/applications/org.x.Z.desktop", "Name=Z\nExec=z\n");
    EXPECT_THAT(ids(), ElementsAre("org.x.Z"));
}

TEST_F(DesktopEntries, FoldersBelowBelongToTheId) {
    entry(".local/share/applications/wine/Programs/notepad.desktop", "Name=N\nExec=wine x\n");
    EXPECT_THAT(ids(), ElementsAre("wine-Programs-notepad"));
}

TEST_F(DesktopEntries, AnEntryThatAnEarlierFolderReplacesIsShadowed) {
    entry(".local/share/applications/a.desktop", "Name=Mine\nExec=a\nHidden=true\n");
    entry("/usr/share/applications/a.desktop", "Name=Theirs\nExec=a\n");
    const auto all = read();
    ASSERT_THAT(all, SizeIs(2));
    EXPECT_FALSE(all[0].shadowed);
    EXPECT_TRUE(all[0].hidden);
    EXPECT_TRUE(all[1].shadowed);
}

TEST_F(DesktopEntries, LinkedEntriesAreReadAsFlatpakExportsThem) {
    entry(".local/share/flatpak/app/org.x.Y/current/active/export/share/applications/org.x.Y.desktop",
          "Name=Y\nExec=/usr/bin/flatpak run --branch=stable org.x.Y\n");
    home.link("../../../app/org.x.Y/current/active/export/share/applications/org.x.Y.desktop",
              ".local/share/flatpak/exports/share/applications/org.x.Y.desktop");
    EXPECT_EQ(only().flatpakId, "org.x.Y");
}

TEST_F(DesktopEntries, AContextReadsTheFoldersOnce) {
    entry(".local/share/applications/a.desktop", "Name=A\nExec=a\n");
    EngineContext context = home.context();
    EXPECT_THAT(installedEntries(context), SizeIs(1));
    entry(".local/share/applications/b.desktop", "Name=B\nExec=b\n");
    EXPECT_THAT(installedEntries(context), SizeIs(1));
}

// Bad input

TEST_F(DesktopEntries, WhatIsNoEntryIsPassedOver) {
    const Path folder = ".local/share/applications";
    home.text(folder / "empty.desktop", "");
    home.text(folder / "cut.desktop", "[Desktop Ent");
    home.text(folder / "cut2.desktop", "[Desktop Entry]\nType=Applica");
    home.text(folder / "binary.desktop", std::string("\x00\xff\xfe[Desktop Entry]", 18));
    home.text(folder / "text.desktop", "hello\nworld\n");
    home.text(folder / "group.desktop", "[Other]\nType=Application\nName=A\n");
    home.text(folder / "a.txt", "[Desktop Entry]\nType=Application\nName=A\nExec=a\n");
    home.folder(folder / "folder.desktop");
    home.fifo(folder / "fifo.desktop");
    home.link("fifo.desktop", folder / "tofifo.desktop");
    home.link("nowhere", folder / "dangling.desktop");
    home.link("loop.desktop", folder / "loop.desktop");
    home.link("..", folder / "up");
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(DesktopEntries, AnEntryOfTenMegabytesIsNotRead) {
    entry(".local/share/applications/big.desktop",
          "Name=A\nExec=a\nComment=" + std::string(std::size_t{10} << 20U, 'x') + "\n");
    EXPECT_THAT(ids(), IsEmpty());
}

TEST_F(DesktopEntries, NamesOfAnyBytesAreKept) {
    const std::vector<std::string> names{"a\nb", "quote\"d", "ctl\x01x", "bad\xff\xfe", "%s%@%d"};
    for (const std::string& name : names) {
        entry(Path(".local/share/applications") / (name + ".desktop"), "Name=A\nExec=a\n");
    }
    EXPECT_THAT(ids(), ::testing::UnorderedElementsAreArray(names));
}

TEST_F(DesktopEntries, ANameOfInvalidUtf8HarmsNoOtherEntry) {
    entry(".local/share/applications/bad.desktop", "Name=\xff\xfe\nExec=a\n");
    entry(".local/share/applications/good.desktop", "Name=Good\nExec=a\n");
    EXPECT_THAT(ids(), ::testing::Contains("good"));
}

TEST_F(DesktopEntries, FoldersInDeepFoldersEndSomewhere) {
    Path folder = ".local/share/applications";
    for (int i = 0; i < 40; ++i) {
        folder /= "d";
    }
    entry(folder / "a.desktop", "Name=A\nExec=a\n");
    EXPECT_THAT(ids(), IsEmpty());
}

// Programs

TEST_F(DesktopEntries, ABareProgramIsLookedForInTheProgramFolders) {
    EngineContext context = home.context();
    EXPECT_EQ(programPath(context, "tool"), std::nullopt);
    const Path system = home.script("/usr/bin/tool", "#!/bin/sh\n");
    EXPECT_THAT(programPath(context, "tool"), Optional(system));
    const Path own = home.script(".local/bin/tool", "#!/bin/sh\n");
    EXPECT_THAT(programPath(context, "tool"), Optional(own));
}

TEST_F(DesktopEntries, AnAbsoluteProgramLiesInTheHomeOrBelowTheRoot) {
    EngineContext context = home.context();
    const Path own = home.script("opt/tool", "#!/bin/sh\n");
    const Path system = home.script("/usr/lib/tool", "#!/bin/sh\n");
    EXPECT_THAT(programPath(context, own.string()), Optional(own));
    EXPECT_THAT(programPath(context, "/usr/lib/tool"), Optional(system));
}

TEST_F(DesktopEntries, OnlyAnExecutableFileIsAProgram) {
    EngineContext context = home.context();
    home.folder(".local/bin/folder");
    home.text(".local/bin/text", "no program");
    home.link("nowhere", ".local/bin/dangling");
    for (const char* name : {"folder", "text", "dangling", "", "sub/tool", "../bin/text"}) {
        EXPECT_EQ(programPath(context, name), std::nullopt) << name;
    }
}

TEST(ListValue, EmptyPartsAreDropped) {
    EXPECT_THAT(listValue("a;b;"), ElementsAre("a", "b"));
    EXPECT_THAT(listValue(";;a"), ElementsAre("a"));
    EXPECT_THAT(listValue(""), IsEmpty());
}

} // namespace
} // namespace vellmoor::test
