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

TEST_F(LinuxLeftovers, TheFoldersAreSearchedInOrder) {
    flatpak(home, "org.example.Painter", "Ab");
    const std::vector<std::string> places{".config/org.example.Painter",
                                          ".cache/org.example.Painter",
                                          ".local/share/org.example.Painter",
                                          ".local/state/org.example.Painter",
                                          ".var/app/org.example.Painter",
                                          ".config/autostart/org.example.Painter.desktop",
                                          ".config/autostart.disabled/org.example.Painter.desktop",
                                          ".config/systemd/user/org.example.Painter.service",
                                          ".local/share/applications/org.example.Painter.desktop",
                                          ".local/share/flatpak/overrides/org.example.Painter"};
    files(places);
    EXPECT_EQ(leftovers(home, "Ab"), places);
}

TEST_F(LinuxLeftovers, TheFoldersFollowTheBaseDirectories) {
    home.environment.config = home.home / "conf";
    home.useEnvironment();
    flatpak(home, "org.example.Painter", "Ab");
    files({"conf/org.example.Painter", ".config/org.example.Painter"});
    EXPECT_THAT(leftovers(home, "Ab"), ElementsAre("conf/org.example.Painter"));
}

TEST_F(LinuxLeftovers, ANameIsFoundToo) {
    flatpak(home, "org.example.Painter", "Fancy Painter");
    files({".config/FancyPainter", ".cache/fancy-painter.d", ".config/painter", ".config/fancy"});
    EXPECT_THAT(leftovers(home, "Fancy Painter"), ElementsAre(".config/FancyPainter", ".cache/fancy-painter.d"));
}

TEST_F(LinuxLeftovers, AnIdWithoutDotIsTreatedAsAName) {
    appImage("X", "code");
    appImage("Y", "vim");
    files({".config/Code", ".config/co-de", ".cache/unicode-data", ".config/vimrc", ".cache/vim"});
    EXPECT_THAT(leftovers(home, "X"), UnorderedElementsAre(".config/Code", ".config/co-de", ".cache/unicode-data",
                                                           ".local/share/applications/code.desktop"));
    EXPECT_THAT(leftovers(home, "Y"), IsEmpty());
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
                                         "vellmoor",
                                         "Vellmoor.conf"};
    for (const std::string& name : names) {
        const std::string stem = Path(name).stem().string();
        home.file("Applications/" + stem + ".AppImage");
        home.file(Path(".config") / name / "data");
        home.file(Path(".local/share") / name / "data");
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
    flatpak(home, "org.example.Painter", "Fancy Painter");
    desktopFile(home, "/usr/share/applications/com.fancypainter.Pro.desktop", "Name=Other\nExec=other\n");
    files({".config/com.fancypainter.Pro", ".config/fancypainter"});
    EXPECT_THAT(leftovers(home, "Fancy Painter"), ElementsAre(".config/fancypainter"));
}

TEST_F(LinuxLeftovers, WhatAnotherApplicationMatchesByALongerNameBelongsToThatOne) {
    flatpak(home, "org.example.One", "Studio");
    flatpak(home, "org.example.Two", "Studio Pro");
    desktopFile(home, "/usr/share/applications/x.desktop", "Name=Studio Light\nExec=x\n");
    files({".config/studio", ".config/studiopro", ".config/studiolight", ".cache/studio-lightning"});
    EXPECT_THAT(leftovers(home, "Studio"), ElementsAre(".config/studio"));
    EXPECT_THAT(leftovers(home, "Studio Pro"), ElementsAre(".config/studiopro"));
}

TEST_F(LinuxLeftovers, AnIdGoesBeforeANameOfAnother) {
    flatpak(home, "org.example.Painter", "Ab");
    desktopFile(home, "/usr/share/applications/x.desktop", "Name=Example Painter Deluxe\nExec=x\n");
    files({".config/org.example.Painter"});
    EXPECT_THAT(leftovers(home, "Ab"), ElementsAre(".config/org.example.Painter"));
}

TEST_F(LinuxLeftovers, WhatASystemPackageSharesStays) {
    flatpak(home, "org.example.Painter", "Painter");
    desktopFile(home, "/usr/share/applications/painter.desktop", "Name=Painter\nExec=painter\n");
    desktopFile(home, "/var/lib/flatpak/exports/share/applications/org.example.Painter.desktop",
                "Name=Painter\nExec=flatpak run org.example.Painter\n");
    files({".config/painter", ".var/app/org.example.Painter/config/x"});
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
}

TEST_F(LinuxLeftovers, AnEntryWhoseProgramIsGoneClaimsNothing) {
    flatpak(home, "org.example.Painter", "Painter");
    desktopFile(home, ".local/share/applications/old-painter.desktop", "Name=Painter\nExec=/gone/painter\n");
    files({".config/painter"});
    EXPECT_THAT(leftovers(home, "Painter"),
                ElementsAre(".config/painter", ".local/share/applications/old-painter.desktop"));
}

TEST_F(LinuxLeftovers, SandboxDataIsFoundByTheExactIdOnly) {
    flatpak(home, "org.example.Painter", "Painter");
    files({".var/app/org.example.Painter/x", ".var/app/org.example.Painter.Plugin/x", ".var/app/painter/x",
           ".var/app/org.example.painter/x"});
    EXPECT_THAT(leftovers(home, "Painter"), ElementsAre(".var/app/org.example.Painter"));
}

TEST_F(LinuxLeftovers, LinksIntoTheApplicationBelongToIt) {
    home.script("opt/editor/bin/edit", "#!/bin/sh\n");
    home.link("../../opt/editor/bin/edit", ".local/bin/edit");
    home.link(home.place("opt/editor"), ".local/bin/whole");
    home.link("/usr/bin/true", ".local/bin/other");
    home.link("nowhere", ".local/bin/dangling");
    home.link("loop", ".local/bin/loop");
    home.script("opt/editor2/edit", "#!/bin/sh\n");
    home.link("../../opt/editor2/edit", ".local/bin/edit2");
    EXPECT_THAT(leftovers(home, "editor"), UnorderedElementsAre(".local/bin/edit", ".local/bin/whole"));
}

TEST_F(LinuxLeftovers, ADottedNameInTheHomeFolderIsFoundExactly) {
    home.script("opt/painter/run", "#!/bin/sh\n");
    files({".painter/x", ".painterly", ".Painter", "painter"});
    EXPECT_THAT(leftovers(home, "painter"), ElementsAre(".painter"));
}

TEST_F(LinuxLeftovers, FoldersThatHoldEverythingAreNeverFoundByTheirDottedName) {
    for (const char* name :
         {"config", "cache", "local", "mozilla", "cargo", "thunderbird", "gnupg", "profile", "bashrc"}) {
        home.script(Path("opt") / name / "run", "#!/bin/sh\n");
        home.file(Path("." + std::string(name)) / "data");
    }
    for (const CleanupItem& row : applications(home)) {
        EXPECT_THAT(row.targets, ::testing::SizeIs(1)) << row.title;
    }
}

TEST_F(LinuxLeftovers, TheSearchedFoldersAndOtherApplicationsAreNoLeftovers) {
    home.script("opt/disabled/run", "#!/bin/sh\n");
    home.script("opt/autostart.disabled/run", "#!/bin/sh\n");
    home.script("opt/toolbox/run", "#!/bin/sh\n");
    home.environment.config = home.home / "opt"; // a base folder that holds applications
    home.useEnvironment();
    files({"opt/autostart.disabled/x.desktop", "opt/toolbox-data/x"});
    for (const CleanupItem& row : applications(home)) {
        for (std::size_t i = 1; i < row.targets.size(); ++i) {
            EXPECT_EQ(row.targets[i].url, home.place("opt/toolbox-data")) << row.title;
        }
    }
}

TEST_F(LinuxLeftovers, NothingOutsideTheHomeIsALeftover) {
    flatpak(home, "org.example.Painter", "Painter");
    files({"/etc/painter/conf", "/var/cache/painter/x", "/usr/share/painter/x", "/opt/painter/x"});
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
}

TEST_F(LinuxLeftovers, NamesOfAnyBytesAreCompared) {
    flatpak(home, "org.example.Painter", "Painter");
    files({".config/painter\n2", ".config/painter\xff", ".config/\x01painter\""});
    EXPECT_THAT(leftovers(home, "Painter"),
                UnorderedElementsAre(".config/painter\n2", ".config/painter\xff", ".config/\x01painter\""));
}

} // namespace
} // namespace vellmoor::test
