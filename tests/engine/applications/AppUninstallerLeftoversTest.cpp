// Leftovers on the Linux layout, and the guards that keep shared folders and other applications' data out of them.
#include "applications/AppsFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class LinuxLeftovers : public ::testing::Test {
protected:
    EngineHome home{System::Linux};

    void SetUp() override { flatpakProgram(home); }
    void files(const std::vector<std::string>& paths) const {
        for (const std::string& path : paths) {
            home.file(path);
        }
    }
    /// An AppImage that an entry of that ID starts.
    Path appImage(const std::string& name, const std::string& id) const {
        const Path image = home.file("Applications/" + name + ".AppImage");
        desktopFile(home, ".local/share/applications/" + id + ".desktop",
                    "Name=" + name + "\nExec=" + image.string() + "\n");
        return image;
    }
};

// Names: what another program may have made is nobody's

TEST_F(LinuxLeftovers, ANameFitsOnlyTheWholeNameOfAFile) {
    appImage("Fancy Painter", "x1");
    files({".config/FancyPainter", ".config/fancy-painter.conf", ".config/painter", ".config/fancy",
           ".cache/fancy-painter-tools", ".cache/Fancy Painter 2.1", ".local/share/myfancypainter"});
    EXPECT_THAT(leftovers(home, "Fancy Painter"),
                UnorderedElementsAre(".config/FancyPainter", ".config/fancy-painter.conf", ".cache/Fancy Painter 2.1"));
}

TEST_F(LinuxLeftovers, AnIdWithoutDotIsAName) {
    appImage("X", "code");
    appImage("Y", "vim");
    files({".config/Code", ".config/code-flags.conf", ".cache/code-updater", ".config/opencode", ".config/codeium",
           ".config/Code - OSS", ".cache/unicode-data", ".config/vimrc", ".cache/vim"});
    EXPECT_THAT(leftovers(home, "X"),
                UnorderedElementsAre(".config/Code", ".config/code-flags.conf", ".cache/code-updater",
                                     ".local/share/applications/code.desktop"));
    EXPECT_THAT(leftovers(home, "Y"), IsEmpty());
}

TEST_F(LinuxLeftovers, AnAppImageTakesNothingThatOnlyBeginsLikeIt) {
    home.file("Applications/Note.AppImage");
    files({".config/notepadqq", ".config/Notepadqq", ".config/note"});
    EXPECT_THAT(leftovers(home, "Note"), ElementsAre(".config/note"));
}

TEST_F(LinuxLeftovers, AnIdMayNotBeTouchedByALetterOrDigit) {
    appImage("Abc", "com.valvesoftware.Steam");
    files({".config/com.valvesoftware.Steam", ".config/com.valvesoftware.Steam-tray",
           ".config/com.valvesoftware.SteamLink", ".config/com.valvesoftware.Steam2",
           ".config/xcom.valvesoftware.Steam", ".config/com.valvesoftware.Steamé"});
    EXPECT_THAT(leftovers(home, "Abc"),
                UnorderedElementsAre(".config/com.valvesoftware.Steam", ".config/com.valvesoftware.Steam-tray",
                                     ".local/share/applications/com.valvesoftware.Steam.desktop"));
}

TEST_F(LinuxLeftovers, AFlatpakIsFoundByItsIdAlone) {
    flatpak(home, "org.example.Rhythm", "Rhythm");
    files({".config/rhythm", ".cache/Rhythm", ".local/share/rhythm", ".rhythm", ".config/org.example.Rhythm",
           ".config/org.example.Rhythm.Tray", ".config/my.org.example.Rhythm", ".config/org.example.RhythmBox",
           ".config/org.example.rhythm"});
    EXPECT_THAT(leftovers(home, "Rhythm"),
                UnorderedElementsAre(".config/org.example.Rhythm", ".config/org.example.Rhythm.Tray"));
}

TEST_F(LinuxLeftovers, MailOfTheHostNeverGoesWithAnApplicationOfThatName) {
    flatpak(home, "org.gnome.Evolution", "Evolution");
    appImage("Evolution", "evolution");
    files({".config/evolution/x", ".local/share/evolution/mail", ".cache/evolution/x", ".evolution/x"});
    for (const CleanupItem& row : applications(home)) {
        for (std::size_t i = 1; i < row.targets.size(); ++i) {
            EXPECT_EQ(row.targets[i].url, home.place(".local/share/applications/evolution.desktop")) << row.title;
        }
    }
}

TEST_F(LinuxLeftovers, SharedFoldersAreNeverLeftovers) {
    const std::vector<std::string> names{"applications",
                                         "autostart",
                                         "systemd",
                                         "dconf",
                                         "fontconfig",
                                         "fonts",
                                         "icons",
                                         "themes",
                                         "gtk-2.0",
                                         "gtk-3.0",
                                         "gtk-4.0",
                                         "mime",
                                         "keyrings",
                                         "kwalletd",
                                         "Trash",
                                         "flatpak",
                                         "containers",
                                         "pulse",
                                         "pipewire",
                                         "wireplumber",
                                         "ibus",
                                         "fcitx5",
                                         "fcitx",
                                         "gvfs-metadata",
                                         "user-dirs.dirs",
                                         "user-dirs.locale",
                                         "mimeapps.list",
                                         "kdeglobals",
                                         "recently-used.xbel",
                                         "JetBrains",
                                         "Google",
                                         "mozilla",
                                         "BraveSoftware",
                                         "evolution",
                                         "Evolution",
                                         "gnome-shell",
                                         "gnome-boxes",
                                         "kde.org",
                                         "kdeconnect",
                                         "plasma-workspace",
                                         "plasmarc",
                                         "xfce4",
                                         "lxqt",
                                         "lxsession",
                                         "cinnamon",
                                         "cinnamon-session",
                                         "mate",
                                         "mate-session",
                                         "secrets",
                                         "vellmoor",
                                         "Vellmoor.conf"};
    for (const std::string& name : names) {
        const std::string stem = Path(name).stem().string();
        home.file("Applications/" + stem + ".AppImage");
        home.file(Path(".config") / name / "data");
        home.file(Path(".local/share") / name / "data");
        home.file("." + name + "/data");
    }
    for (const CleanupItem& row : applications(home)) {
        EXPECT_THAT(row.targets, ::testing::SizeIs(1)) << row.title;
    }
}

TEST_F(LinuxLeftovers, AnEntrysOwnIdIsNoOtherApplication) {
    const Path image = appImage("Painter", "painter");
    desktopFile(home, ".local/share/applications/painter-handler.desktop",
                "Name=Painter\nNoDisplay=true\nExec=" + image.string() + " --url %u\n");
    files({".config/painter"});
    EXPECT_THAT(leftovers(home, "Painter"), ::testing::Contains(".config/painter"));
}

TEST_F(LinuxLeftovers, WhatAnotherApplicationMatchesByIdBelongsToThatOne) {
    appImage("com.fancypainter.Pro", "x1");
    desktopFile(home, "/usr/share/applications/com.fancypainter.Pro.desktop", "Name=Other\nExec=other\n");
    files({".config/com.fancypainter.Pro", ".cache/com.fancypainter.Pro.log"});
    EXPECT_THAT(leftovers(home, "com.fancypainter.Pro"), IsEmpty());
}

TEST_F(LinuxLeftovers, WhatAnotherApplicationMatchesByALongerNameBelongsToThatOne) {
    appImage("Studio", "x1");
    appImage("Studio Conf", "x2");
    desktopFile(home, "/usr/share/applications/x.desktop", "Name=Studio Light\nExec=x\n");
    files({".config/studio", ".config/studio.conf", ".config/studio.light", ".cache/studio.log"});
    EXPECT_THAT(leftovers(home, "Studio"), ElementsAre(".config/studio", ".cache/studio.log"));
    EXPECT_THAT(leftovers(home, "Studio Conf"), ElementsAre(".config/studio.conf"));
}

TEST_F(LinuxLeftovers, WhatTwoFitEquallyWellIsNobodys) {
    appImage("Studio", "x1");
    home.file("bin/studio.AppImage");
    files({".config/studio"});
    for (const CleanupItem& row : applications(home)) {
        EXPECT_THAT(row.targets, ::testing::SizeIs(1)) << row.title;
    }
}

TEST_F(LinuxLeftovers, AnIdGoesBeforeANameOfAnother) {
    appImage("Abc", "org.example.Painter");
    desktopFile(home, "/usr/share/applications/x.desktop", "Name=org example Painter\nExec=x\n");
    files({".config/org.example.Painter"});
    EXPECT_THAT(leftovers(home, "Abc"), ::testing::Contains(".config/org.example.Painter"));
}

TEST_F(LinuxLeftovers, WhatASystemPackageSharesStays) {
    appImage("Painter", "x1");
    flatpak(home, "org.example.Painter", "Flat");
    desktopFile(home, "/usr/share/applications/painter.desktop", "Name=Paint Program\nExec=/usr/bin/pp\n");
    desktopFile(home, "/var/lib/flatpak/exports/share/applications/org.example.Painter.desktop",
                "Name=Painter\nExec=flatpak run org.example.Painter\n");
    files({".config/painter", ".var/app/org.example.Painter/config/x"});
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
    EXPECT_THAT(leftovers(home, "Flat"), IsEmpty());
}

TEST_F(LinuxLeftovers, ASystemProgramProtectsItsFolderInEveryLanguage) {
    appImage("Painter", "x1");
    desktopFile(home, "/usr/share/applications/org.x.Paint.desktop", "Name=Painter\nName[zh_CN]=画家\nExec=pp\n");
    files({".config/painter", ".config/画家之家"});
    for (const AppLanguage language : {AppLanguage::english, AppLanguage::chinese}) {
        L::setLanguage(language);
        EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
    }
    L::setLanguage(AppLanguage::english);
}

TEST_F(LinuxLeftovers, ASystemProgramProtectsTheFolderOfItsLocalisedNameToo) {
    appImage("我的画家", "x1");
    desktopFile(home, "/usr/share/applications/org.x.Paint.desktop", "Name=Paint\nName[zh_CN]=我的画家\nExec=pp\n");
    files({".config/我的画家"});
    EXPECT_THAT(leftovers(home, "我的画家"), ElementsAre(".config/我的画家"));
    L::setLanguage(AppLanguage::chinese);
    EXPECT_THAT(leftovers(home, "我的画家"), IsEmpty());
    L::setLanguage(AppLanguage::english);
}

TEST_F(LinuxLeftovers, WhatIsFoundDoesNotChangeWithTheLanguage) {
    const Path image = home.file("Applications/Tool.AppImage");
    desktopFile(home, ".local/share/applications/x1.desktop",
                "Name=Painter\nName[zh_CN]=画家\nExec=" + image.string() + "\n");
    files({".config/painter"});
    EXPECT_THAT(leftovers(home, "Painter"), ElementsAre(".config/painter"));
    L::setLanguage(AppLanguage::chinese);
    EXPECT_THAT(leftovers(home, "画家"), ElementsAre(".config/painter"));
    L::setLanguage(AppLanguage::english);
}

TEST_F(LinuxLeftovers, AProgramWithoutEntryClaimsTheFilesOfItsName) {
    appImage("Painter", "x1");
    appImage("Writer", "x2");
    appImage("Reader", "x3");
    home.script("/usr/bin/painter", "#!/bin/sh\n");
    home.script("bin/writer.sh", "#!/bin/sh\n");
    home.text("/usr/bin/reader", "not executable");
    files({".config/painter", ".config/writer", ".config/reader"});
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
    EXPECT_THAT(leftovers(home, "Writer"), IsEmpty());
    EXPECT_THAT(leftovers(home, "Reader"), ElementsAre(".config/reader"));
}

TEST_F(LinuxLeftovers, TheProgramsAreThoseOfThePathVariable) {
    home.environment.programPath = {"/opt/tools/bin"};
    home.useEnvironment();
    appImage("Painter", "x1");
    appImage("Writer", "x2");
    home.script("/opt/tools/bin/painter", "#!/bin/sh\n");
    home.script("/usr/bin/writer", "#!/bin/sh\n");
    files({".config/painter", ".config/writer"});
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
    EXPECT_THAT(leftovers(home, "Writer"), ElementsAre(".config/writer"));
}

TEST_F(LinuxLeftovers, TheApplicationItselfAndALinkToItAreNoOtherProgram) {
    home.script(".local/bin/painter.AppImage", "x");
    elf(home, "opt/writer/bin/writer");
    home.link("../../opt/writer/bin/writer", ".local/bin/writer");
    files({".config/painter", ".config/writer"});
    EXPECT_THAT(leftovers(home, "painter"), ElementsAre(".config/painter"));
    EXPECT_THAT(leftovers(home, "writer"), ElementsAre(".config/writer", ".local/bin/writer"));
}

TEST_F(LinuxLeftovers, AnEntryWhoseProgramIsGoneClaimsNothing) {
    appImage("Painter", "x1");
    desktopFile(home, ".local/share/applications/painter.desktop", "Name=Painter\nExec=/gone/painter\n");
    files({".config/painter"});
    EXPECT_THAT(leftovers(home, "Painter"),
                ElementsAre(".config/painter", ".local/share/applications/painter.desktop"));
}

TEST_F(LinuxLeftovers, SandboxDataIsFoundByTheExactIdOnly) {
    flatpak(home, "org.example.Painter", "Painter");
    files({".var/app/org.example.Painter/x", ".var/app/org.example.Painter.Plugin/x", ".var/app/painter/x",
           ".var/app/org.example.painter/x"});
    EXPECT_THAT(leftovers(home, "Painter"), ElementsAre(".var/app/org.example.Painter"));
}

TEST_F(LinuxLeftovers, WhatFlatpakKeepsForAnIdIsNoOthersThanTheFlatpaks) {
    appImage("Painter", "org.example.Painter");
    files({".var/app/org.example.Painter/x", ".local/share/flatpak/overrides/org.example.Painter"});
    EXPECT_THAT(leftovers(home, "Painter"), ElementsAre(".local/share/applications/org.example.Painter.desktop"));
    flatpak(home, "org.example.Writer", "Writer");
    files({".local/share/flatpak/overrides/org.example.Writer",
           ".local/share/flatpak/overrides/org.example.Writer.Extra"});
    EXPECT_THAT(leftovers(home, "Writer"), ElementsAre(".local/share/flatpak/overrides/org.example.Writer"));
}

TEST_F(LinuxLeftovers, LinksIntoTheApplicationBelongToIt) {
    elf(home, "opt/editor/bin/edit");
    home.link("../../opt/editor/bin/edit", ".local/bin/edit");
    home.link(home.place("opt/editor"), ".local/bin/whole");
    home.link("/usr/bin/true", ".local/bin/other");
    home.link("nowhere", ".local/bin/dangling");
    home.link("loop", ".local/bin/loop");
    elf(home, "opt/editor2/edit");
    home.link("../../opt/editor2/edit", ".local/bin/edit2");
    EXPECT_THAT(leftovers(home, "editor"), UnorderedElementsAre(".local/bin/edit", ".local/bin/whole"));
}

TEST_F(LinuxLeftovers, ADottedNameInTheHomeFolderIsFoundExactly) {
    elf(home, "opt/painter/run");
    files({".painter/x", ".painterly", ".Painter", "painter"});
    EXPECT_THAT(leftovers(home, "painter"), ElementsAre(".painter"));
}

TEST_F(LinuxLeftovers, FoldersThatHoldEverythingAreNeverFoundByTheirDottedName) {
    for (const char* name :
         {"config", "cache", "local", "mozilla", "cargo", "thunderbird", "gnupg", "profile", "bashrc"}) {
        elf(home, Path("opt") / name / "run");
        home.file(Path("." + std::string(name)) / "data");
    }
    for (const CleanupItem& row : applications(home)) {
        EXPECT_THAT(row.targets, ::testing::SizeIs(1)) << row.title;
    }
}

TEST_F(LinuxLeftovers, TheSearchedFoldersAndOtherApplicationsAreNoLeftovers) {
    elf(home, "opt/disabled/run");
    elf(home, "opt/autostart.disabled/run");
    elf(home, "opt/toolbox/run");
    home.environment.config = home.home / "opt"; // a base folder that holds applications
    home.useEnvironment();
    files({"opt/autostart.disabled/x.desktop", "opt/toolbox-data/x"});
    for (const CleanupItem& row : applications(home)) {
        for (std::size_t i = 1; i < row.targets.size(); ++i) {
            EXPECT_EQ(row.targets[i].url, home.place("opt/toolbox-data")) << row.title;
        }
    }
}

TEST_F(LinuxLeftovers, NamesOfAnyBytesAreCompared) {
    home.file("Applications/Painter.AppImage");
    files({".config/painter\n", ".config/\x01painter\"", ".config/painter\xff", ".config/painter\n2x"});
    EXPECT_THAT(leftovers(home, "Painter"),
                UnorderedElementsAre(".config/painter\n", ".config/\x01painter\"", ".config/painter\xff"));
}

} // namespace
} // namespace vellmoor::test
