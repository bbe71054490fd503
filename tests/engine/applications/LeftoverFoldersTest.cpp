// Where leftovers are looked for on the Linux layout: below the home only, and never in a folder of the user's own.
#include "applications/AppsFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LeftoverFolders : public ::testing::Test {
protected:
    EngineHome home{System::Linux};

    void SetUp() override { flatpakProgram(home); }
    void files(const std::vector<std::string>& paths) const {
        for (const std::string& path : paths) {
            home.file(path);
        }
    }
};

TEST_F(LeftoverFolders, TheFoldersAreSearchedInOrder) {
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

TEST_F(LeftoverFolders, TheFoldersFollowTheBaseDirectories) {
    home.environment.config = home.home / "conf";
    home.useEnvironment();
    flatpak(home, "org.example.Painter", "Ab");
    files({"conf/org.example.Painter", ".config/org.example.Painter"});
    EXPECT_THAT(leftovers(home, "Ab"), ElementsAre("conf/org.example.Painter"));
}

TEST_F(LeftoverFolders, NothingOutsideTheHomeIsALeftover) {
    home.environment.data = home.place("/srv/data");
    home.useEnvironment();
    home.file("Applications/Painter.AppImage");
    files({"/etc/painter/conf", "/var/cache/painter/x", "/usr/share/painter/x", "/opt/painter/x", "/srv/data/painter"});
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
}

TEST_F(LeftoverFolders, AFolderThatIsALinkOutOfTheHomeIsNotSearched) {
    const Path image = home.file("Applications/Painter.AppImage");
    home.link(image, "/srv/bin/painter");
    home.link(home.place("/srv/bin"), ".local/bin");
    home.file("/srv/cache/painter/x");
    home.link(home.place("/srv/cache"), ".cache");
    EXPECT_THAT(leftovers(home, "Painter"), IsEmpty());
}

TEST_F(LeftoverFolders, ABaseFolderThatHoldsTheHomeOrAUserFolderIsNotSearched) {
    home.file("Applications/Painter.AppImage");
    files({"Downloads/painter/thesis", "work/papers/painter/x", "work/painter/x", "painter/x"});
    home.platform.folders.documents = home.place("work/papers");
    for (const char* base : {"", "Downloads", "work", "work/papers", "work/papers/.."}) {
        home.environment.config = home.home / base;
        home.useEnvironment();
        EXPECT_THAT(leftovers(home, "Painter"), IsEmpty()) << base;
    }
}

TEST_F(LeftoverFolders, WhatHoldsAUserFolderIsNoLeftover) {
    home.file("Applications/Painter.AppImage");
    files({".local/share/painter/papers/thesis", ".config/painter"});
    home.platform.folders.documents = home.place(".local/share/painter/papers");
    EXPECT_THAT(leftovers(home, "Painter"), ElementsAre(".config/painter"));
    home.link(home.place(".local/share/painter/papers"), "docs");
    home.platform.folders.documents = home.place("docs");
    EXPECT_THAT(leftovers(home, "Painter"), ElementsAre(".config/painter"));
}

} // namespace
} // namespace vellmoor::test
