// Who uses a path right now.
#include "clean/RunningOwners.h"

#include "privacy/PrivacyFixture.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace vellmoor::test {
namespace {

class LinuxRunningOwners : public testing::Test {
protected:
    EngineHome home{System::Linux};
    EngineContext context = home.context();

    [[nodiscard]] std::optional<std::string> owner(const Path& path) {
        return RunningOwners(context).ownerOf(home.place(path));
    }
    void runChromium() const { runProcess(home, 41, "/usr/lib/chromium/chromium"); }
};

TEST_F(LinuxRunningOwners, NobodyUsesTheFilesOfABrowserThatDoesNotRun) {
    home.file(".config/chromium/Default/Preferences");
    runProcess(home, 41, "/usr/bin/gedit");
    EXPECT_EQ(owner(".config/chromium/Default/Cookies"), std::nullopt);
    EXPECT_EQ(owner(".cache/chromium"), std::nullopt);
}

TEST_F(LinuxRunningOwners, ARunningBrowserUsesItsProfilesAndItsCaches) {
    runChromium();
    EXPECT_EQ(owner(".config/chromium/Default/Cookies"), "Chromium");
    EXPECT_EQ(owner(".cache/chromium"), "Chromium");
    EXPECT_EQ(owner(".cache/chromium/Default/Cache"), "Chromium");
    EXPECT_EQ(owner(".config/google-chrome/Default/Cookies"), std::nullopt);
}

TEST_F(LinuxRunningOwners, ItUsesAFolderThatHoldsItsOwn) {
    runProcess(home, 41, "/usr/lib/firefox/firefox");
    EXPECT_EQ(owner(".cache/mozilla"), "Firefox");
    EXPECT_EQ(owner(".cache/mozillas"), std::nullopt);
}

TEST_F(LinuxRunningOwners, ItUsesAProfileThatLiesElsewhere) {
    home.text(".mozilla/firefox/profiles.ini",
              "[Profile0]\nIsRelative=0\nPath=" + (home.home / "work").string() + "\n");
    home.file("work/cookies.sqlite");
    runProcess(home, 41, "/usr/lib/firefox/firefox");
    EXPECT_EQ(owner("work/cookies.sqlite"), "Firefox");
}

TEST_F(LinuxRunningOwners, ARelocatedProfileIsKnownInEveryForm) {
    home.file("disk/chromium/Default/Cookies");
    home.folder(".config");
    home.link(home.place("disk/chromium"), ".config/chromium");
    runChromium();
    EXPECT_EQ(owner("disk/chromium/Default/Cookies"), "Chromium");
    EXPECT_EQ(owner(".config/chromium/Default/Cookies"), "Chromium");
}

TEST_F(LinuxRunningOwners, AFlatpakUsesItsOwnFolderAndIsNamedByItsEntry) {
    home.text(".local/share/flatpak/exports/share/applications/org.gnome.Maps.desktop",
              "[Desktop Entry]\nType=Application\nName=Maps\nExec=flatpak run org.gnome.Maps\n");
    runProcess(home, 41, "/app/bin/maps", "app-flatpak-org.gnome.Maps-31.scope");
    runProcess(home, 42, "/app/bin/tool", "app-flatpak-org.example.Tool-32.scope");
    EXPECT_EQ(owner(".var/app/org.gnome.Maps/cache"), "Maps");
    EXPECT_EQ(owner(".var/app/org.example.Tool/data/x"), "org.example.Tool");
    EXPECT_EQ(owner(".var/app/org.example.Other/cache"), std::nullopt);
}

TEST_F(LinuxRunningOwners, ABrowserInAFlatpakIsNamedAsItsRows) {
    runProcess(home, 41, "/app/lib/firefox/firefox", "app-flatpak-org.mozilla.firefox-31.scope");
    EXPECT_EQ(owner(".var/app/org.mozilla.firefox/cache"), "Firefox (Flatpak)");
    EXPECT_EQ(owner(".mozilla/firefox/a.default/cookies.sqlite"), std::nullopt);
}

TEST_F(LinuxRunningOwners, ASnapUsesItsOwnFolder) {
    runProcess(home, 41, "/snap/vlc/7/usr/bin/vlc", "snap.vlc.vlc-1b2c3d4e-0000-4000-8000-123456789abc.scope");
    EXPECT_EQ(owner("snap/vlc/common/.cache"), "vlc");
    EXPECT_EQ(owner(".snap/data/vlc/7/.cache"), "vlc");
    EXPECT_EQ(owner("snap/other/common/.cache"), std::nullopt);
}

TEST_F(LinuxRunningOwners, AfterARefreshTheSystemIsAskedAgain) {
    RunningOwners owners(context);
    const Path cookies = home.place(".config/chromium/Default/Cookies");
    EXPECT_EQ(owners.ownerOf(cookies), std::nullopt);
    runChromium();
    owners.refresh();
    EXPECT_EQ(owners.ownerOf(cookies), "Chromium");
    std::filesystem::remove_all(home.place("/proc/41"));
    owners.refresh();
    EXPECT_EQ(owners.ownerOf(cookies), std::nullopt);
}

TEST(MacRunningOwners, ARunningBrowserUsesItsTracesAndNothingElseOfTheLibrary) {
    EngineHome home(System::Mac);
    listProcesses(home, "/Applications/Safari.app/Contents/MacOS/Safari\n");
    EngineContext context = home.context();
    RunningOwners owners(context);
    EXPECT_EQ(owners.ownerOf(home.home / "Library/Safari/History.db"), "Safari");
    EXPECT_EQ(owners.ownerOf(home.home / "Library/Caches/com.example"), std::nullopt);
}

} // namespace
} // namespace vellmoor::test
