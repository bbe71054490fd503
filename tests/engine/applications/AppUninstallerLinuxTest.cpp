#include "applications/Applications.h"
#include "applications/AppsFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

constexpr std::string_view appImageHead{"\x7F"
                                        "ELF\x02\x01\x01\x00"
                                        "AI\x02",
                                        11};

class LinuxApplications : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
};

// Flatpaks

TEST_F(LinuxApplications, AFlatpakOfTheUserIsListed) {
    const Path body = flatpak(home, "org.example.Painter", "Painter", 40960);
    flatpakProgram(home);
    const auto rows = applications(home);
    ASSERT_THAT(rows, SizeIs(1));
    const CleanupItem& row = rows.front();
    EXPECT_EQ(row.title, "Painter");
    EXPECT_EQ(row.description, "No obvious leftovers found, app id: org.example.Painter, "
                               "will be uninstalled by Flatpak directly, not via the Trash");
    EXPECT_EQ(row.symbol, "app.dashed");
    EXPECT_EQ(row.tint, Tint::orange);
    EXPECT_EQ(row.risk, CleanupRisk::high);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_EQ(row.targets.front().url, body);
    EXPECT_GE(row.bytes, 40960);
    EXPECT_THAT(row.appInfo->bundleIdentifier, Optional(std::string("org.example.Painter")));
}

TEST_F(LinuxApplications, AFlatpakWithoutAnActiveVersionIsNone) {
    home.file(".local/share/flatpak/app/org.example.Half/x86_64/stable/1/files/x");
    flatpak(home, ".hidden.example.App", "Hidden");
    home.file(".local/share/flatpak/app/file");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(LinuxApplications, AFlatpakWithoutEntryIsCalledByItsId) {
    const Path body = ".local/share/flatpak/app/org.example.Tool";
    home.link("1", body / "x86_64/stable/active");
    home.link("x86_64/stable", body / "current");
    EXPECT_THAT(titles(home), ElementsAre("org.example.Tool"));
}

TEST_F(LinuxApplications, TheFlatpakFolderFollowsItsVariable) {
    home.environment.toolFolders["FLATPAK_USER_DIR"] = home.home / "paks";
    home.useEnvironment();
    home.link("1", "paks/app/org.example.Tool/x86_64/stable/active");
    home.link("x86_64/stable", "paks/app/org.example.Tool/current");
    EXPECT_THAT(titles(home), ElementsAre("org.example.Tool"));
}

TEST_F(LinuxApplications, WithoutTheFlatpakProgramItCannotBeRemoved) {
    flatpak(home, "org.example.Painter", "Painter");
    const CleanupItem row = application(home, "Painter");
    EXPECT_FALSE(row.isCleanable);
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
}

TEST_F(LinuxApplications, ARunningFlatpakIsKnownByItsControlGroup) {
    flatpak(home, "org.example.Painter", "Painter");
    flatpak(home, "org.example.Writer", "Writer");
    flatpakProgram(home);
    const std::string manager = "/user.slice/user@" + std::to_string(home.platform.user) + ".service/app.slice/";
    process(home, 31, "/app/bin/program", "", manager + "app-flatpak-org.example.Painter-31.scope");
    const CleanupItem row = application(home, "Painter");
    EXPECT_EQ(row.description,
              "No obvious leftovers found, app id: org.example.Painter, the app is running, please quit it first, "
              "will be uninstalled by Flatpak directly, not via the Trash");
    EXPECT_FALSE(row.isCleanable);
    EXPECT_TRUE(row.appInfo->isRunning);
    EXPECT_TRUE(application(home, "Writer").isCleanable);
}

// AppImages

TEST_F(LinuxApplications, AppImagesAreKnownByTheirEnding) {
    home.file("Applications/One.AppImage");
    home.file("AppImages/Two.appimage");
    home.file(".local/bin/Three.APPIMAGE");
    home.file("bin/Four.AppImage");
    home.file("Desktop/Five.AppImage");
    home.file("Downloads/Not.AppImage");
    home.file("Applications/.Hidden.AppImage");
    home.folder("Applications/Folder.AppImage");
    home.link("One.AppImage", "Applications/Link.AppImage");
    EXPECT_THAT(titles(home), UnorderedElementsAre("One", "Two", "Three", "Four", "Five"));
}

TEST_F(LinuxApplications, AppImagesAreKnownByTheirFirstBytes) {
    std::string first(appImageHead);
    home.text("bin/second", first + "rest");
    first.back() = '\x01';
    home.text("bin/first", first);
    first.back() = '\x03';
    home.text("bin/unknown", first);
    home.text("bin/short", appImageHead.substr(0, 10));
    home.text("bin/plain", "\x7F"
                           "ELF\x02\x01\x01\x00\x00\x00\x00");
    home.text("bin/empty", "");
    home.fifo("bin/fifo");
    EXPECT_THAT(titles(home), UnorderedElementsAre("first", "second"));
}

TEST_F(LinuxApplications, TheDesktopFolderIsTheDesktopsOwn) {
    home.platform.folders.desktop = home.folder("桌面");
    home.file("桌面/Tool.AppImage");
    home.file("Desktop/Not.AppImage");
    EXPECT_THAT(titles(home), ElementsAre("Tool"));
}

TEST_F(LinuxApplications, ASwitchedOffDesktopFolderIsNotTheHome) {
    home.platform.folders.desktop = home.home / "";
    home.file("Not.AppImage");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(LinuxApplications, AnAppImageTakesNameAndIdFromTheEntryThatStartsIt) {
    const Path image = home.file("Applications/tool-1.2-x86_64.AppImage");
    desktopFile(home, ".local/share/applications/appimagekit_1-Tool.desktop",
                "Name=Fine Tool\nExec=env A=b \"" + image.string() + "\" %U\n");
    const CleanupItem row = application(home, "Fine Tool");
    EXPECT_THAT(row.appInfo->bundleIdentifier, Optional(std::string("appimagekit_1-Tool")));
    EXPECT_EQ(row.description, "Found 1 related leftovers, app id: appimagekit_1-Tool");
    EXPECT_THAT(leftovers(home, "Fine Tool"), ElementsAre(".local/share/applications/appimagekit_1-Tool.desktop"));
}

TEST_F(LinuxApplications, ASystemEntryGivesAnAppImageNoId) {
    const Path image = home.file("Applications/tool.AppImage");
    desktopFile(home, "/usr/share/applications/tool.desktop",
                "Name=Other\nNoDisplay=true\nExec=" + image.string() + "\n");
    EXPECT_EQ(application(home, "tool").description, "No obvious leftovers found");
}

// What is not listed

TEST_F(LinuxApplications, EntriesOfSystemProgramsAreNoApplications) {
    home.script("/usr/bin/steam", "#!/bin/sh\n");
    home.script("/opt/chrome/chrome", "#!/bin/sh\n");
    desktopFile(home, ".local/share/applications/Game.desktop", "Name=Game\nExec=steam steam://rungameid/7\n");
    desktopFile(home, ".local/share/applications/chrome-app.desktop",
                "Name=Web App\nExec=/opt/chrome/chrome --app-id=abc\n");
    desktopFile(home, ".local/share/applications/wine/Programs/n.desktop",
                "Name=N\nExec=env WINEPREFIX=/x wine n.exe\n");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(LinuxApplications, ThisProgramIsNotOffered) {
    home.platform.own = elf(home, "opt/moor/bin/vellmoor");
    home.environment.ownAppImage = home.file("Applications/Vellmoor.AppImage").string();
    home.useEnvironment();
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(LinuxApplications, AFolderThatLeadsToTheSystemIsProtected) {
    elf(home, "/opt/system/run");
    home.link(home.place("/opt"), "opt");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(LinuxApplications, ProtectedAreSystemPathsAndTheOwnFiles) {
    home.environment.ownAppImage = home.place("Applications/V.AppImage").string();
    home.useEnvironment();
    const EngineContext context = home.context();
    for (const char* path :
         {"/usr/bin/x", "/bin/x", "/sbin/x", "/lib64/x", "/lib/x", "/etc/x", "/opt/x", "/snap/x/1",
          "/var/lib/flatpak/app/x", "/var/lib/snapd/x", "/nix/store/x", "/gnu/store/x", "/run/host/x"}) {
        EXPECT_TRUE(isProtectedSystemAppPath(context, path)) << path;
        EXPECT_TRUE(isProtectedSystemAppPath(context, home.place(path))) << path;
    }
    EXPECT_TRUE(isProtectedSystemAppPath(context, home.place("Applications/V.AppImage")));
    EXPECT_TRUE(
        isProtectedSystemAppPath(context, home.place(".local/share/applications/org.vellmoor.Vellmoor.desktop")));
    for (const char* path : {"Applications/x", "opt/x", "usr/x", ".local/share/flatpak/app/x"}) {
        EXPECT_FALSE(isProtectedSystemAppPath(context, home.place(path))) << path;
    }
}

// The row about system packages

TEST_F(LinuxApplications, ALastRowCountsWhatThePackageManagersOwn) {
    home.file("Applications/Tool.AppImage");
    desktopFile(home, "/usr/share/applications/a.desktop", "Name=A\nExec=a\n");
    desktopFile(home, "/usr/share/applications/b.desktop", "Name=B\nExec=b\nNoDisplay=true\n");
    desktopFile(home, "/usr/share/applications/c.desktop", "Name=C\nExec=c\nHidden=true\n");
    desktopFile(home, "/var/lib/flatpak/exports/share/applications/org.x.Y.desktop", "Name=Y\nExec=y\n");
    desktopFile(home, "/var/lib/snapd/desktop/applications/s_s.desktop", "Name=S\nExec=s\n");
    desktopFile(home, "/usr/local/share/applications/l.desktop", "Name=L\nExec=l\n");
    const auto rows = applications(home);
    EXPECT_THAT(titles(rows), ElementsAre("Tool", "System-managed Apps"));
    const CleanupItem& row = rows.back();
    EXPECT_EQ(row.description,
              "3 apps are managed by the system's package manager. Uninstall them in the software center");
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
    EXPECT_FALSE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    EXPECT_THAT(row.targets, IsEmpty());
    EXPECT_EQ(row.bytes, 0);
    EXPECT_EQ(row.appInfo, std::nullopt);
}

TEST_F(LinuxApplications, SystemEntriesCountWhateverTheVariablesName) {
    home.environment.dataDirs = {"/opt/share"};
    home.useEnvironment();
    desktopFile(home, "/usr/share/applications/a.desktop", "Name=A\nExec=a\n");
    desktopFile(home, ".local/share/applications/a.desktop", "Name=A\nExec=a\nHidden=true\n");
    desktopFile(home, "/var/lib/snapd/desktop/applications/s_s.desktop", "Name=S\nExec=s\n");
    EXPECT_THAT(application(home, "System-managed Apps").description, ::testing::StartsWith("2 apps"));
}

TEST_F(LinuxApplications, OnlyWhatTheMenusOfThisDesktopShowIsCounted) {
    home.environment.desktops = {"ubuntu", "GNOME"};
    home.useEnvironment();
    desktopFile(home, "/usr/share/applications/a.desktop", "Name=A\nExec=a\n");
    desktopFile(home, "/usr/share/applications/g.desktop", "Name=G\nExec=g\nOnlyShowIn=GNOME;\n");
    desktopFile(home, "/usr/share/applications/screensavers/cosmos.desktop", "Name=C\nExec=c\nOnlyShowIn=MATE;\n");
    desktopFile(home, "/usr/share/applications/n.desktop", "Name=N\nExec=n\nNotShowIn=KDE;GNOME;\n");
    desktopFile(home, "/usr/share/applications/t.desktop", "Name=T\nExec=t\nTryExec=not-there\n");
    EXPECT_THAT(application(home, "System-managed Apps").description, ::testing::StartsWith("2 apps"));
}

TEST_F(LinuxApplications, WithoutSystemEntriesThereIsNoSuchRow) {
    desktopFile(home, "/usr/share/applications/b.desktop", "Name=B\nExec=b\nNoDisplay=true\n");
    EXPECT_THAT(titles(home), IsEmpty());
}

// Looking up

TEST_F(LinuxApplications, AnEntryIsFoundByItsIdTheUsersFirst) {
    const Path system = desktopFile(home, "/usr/share/applications/org.x.Y.desktop", "Name=Theirs\nExec=y\n");
    EngineContext before = home.context();
    EXPECT_THAT(appLookupByBundleID(before, "org.x.Y"), Optional(system));
    EXPECT_EQ(appLookupByBundleID(before, "org.x"), std::nullopt);
    const Path own = desktopFile(home, ".local/share/applications/org.x.Y.desktop", "Name=Mine\nExec=y\n");
    EngineContext after = home.context();
    EXPECT_THAT(appLookupByBundleID(after, "org.x.Y"), Optional(own));
    EXPECT_EQ(appDisplayName(after, own), "Mine");
    EXPECT_THAT(appIdentifier(after, own), Optional(std::string("org.x.Y")));
}

TEST_F(LinuxApplications, ACancelledScanEnds) {
    home.file("Applications/Tool.AppImage");
    home.token.cancel();
    EXPECT_THROW((void)applications(home), ScanCancelled);
}

} // namespace
} // namespace vellmoor::test
