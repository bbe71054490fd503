#include "ProtectedPaths.h"

#include "EngineHome.h"
#include "ScopedMount.h"

#include <gmock/gmock.h>

#include <vector>

namespace vellmoor {
namespace {

using test::EngineHome;
using test::System;

class Guard : public ::testing::TestWithParam<System> {
protected:
    [[nodiscard]] bool refuses(const Path& path) const {
        return PathGuard(home_.platform, home_.layout).refusalReason(path).has_value();
    }

    EngineHome home_{GetParam()};
};

TEST_P(Guard, RefusesTheRootTheHomeAndAllAboveIt) {
    EXPECT_TRUE(refuses("/"));
    EXPECT_TRUE(refuses("//"));
    EXPECT_TRUE(refuses("/."));
    for (Path path = home_.home; path != "/"; path = path.parent_path()) {
        EXPECT_TRUE(refuses(path)) << path;
        EXPECT_TRUE(refuses(path / "")) << path;
    }
}

TEST_P(Guard, RefusesWhatIsNoPlainAbsolutePath) {
    EXPECT_TRUE(refuses(""));
    EXPECT_TRUE(refuses("."));
    EXPECT_TRUE(refuses("relative/file"));
    EXPECT_TRUE(refuses("~/.cache/file"));
    EXPECT_TRUE(refuses(home_.home / ".cache/x/.."));
    EXPECT_TRUE(refuses(home_.home / "Downloads/../.ssh"));
    EXPECT_TRUE(refuses(std::string("/tmp/a\0b", 8)));
}

TEST_P(Guard, RefusesEveryProtectedFolderWhetherItExistsOrNot) {
    const PathGuard guard(home_.platform, home_.layout);
    ASSERT_GT(guard.folders().size(), 80U);
    for (const Path& path : guard.folders()) {
        EXPECT_TRUE(guard.refusalReason(path)) << path;
        EXPECT_TRUE(guard.refusalReason(path.native() + "//.")) << path;
        EXPECT_TRUE(guard.refusalReason(path.parent_path())) << path;
    }
}

TEST_P(Guard, KeepsItsOwnListWhenTheLayoutHasNone) {
    home_.layout.protectedPaths.clear();
    home_.layout.trash.homeFolder.clear();
    home_.layout.largeFileRoots.clear();
    for (const char* name : {"Documents", "Downloads", "Desktop", "Pictures", ".ssh", ".gnupg", ".config", ".cache",
                             ".local", ".local/share", ".local/state", "Library", "Library/Caches",
                             "Library/Application Support", "Library/Preferences", ".Trash"}) {
        EXPECT_TRUE(refuses(home_.home / name)) << name;
    }
    for (const char* path : {"/usr", "/etc", "/home", "/var", "/tmp", "/Applications", "/System", "/Users"}) {
        EXPECT_TRUE(refuses(home_.place(path))) << path;
    }
    EXPECT_TRUE(refuses(home_.home));
}

TEST_P(Guard, AllowsNamesThatAreOnlyNearToProtectedOnes) {
    for (const char* name : {".cache/mesa",
                             ".cache2",
                             ".cachet",
                             ".config-old",
                             ".configs/x",
                             "Documents/old.zip",
                             "Documents 2",
                             "documents.zip",
                             "Downloads/setup.dmg",
                             ".local2",
                             ".local/share/app/cache",
                             "Library/Caches/com.example.app",
                             "Library/Caches2",
                             "Libraryx",
                             ".ssh-old",
                             "..hidden",
                             "file",
                             " ",
                             "~",
                             ".Trash2"}) {
        EXPECT_FALSE(refuses(home_.file(Path("near") / name))) << name;
        EXPECT_FALSE(refuses(home_.home / name)) << name;
    }
    EXPECT_FALSE(refuses(home_.home.native() + "x"));
    EXPECT_FALSE(refuses(home_.home.native() + " 2"));
    EXPECT_FALSE(refuses(home_.file("caf\xe9")));
}

TEST_P(Guard, RefusesAProtectedFolderReachedThroughALink) {
    home_.link(home_.home, "alias");
    EXPECT_TRUE(refuses(home_.home / "alias/.config"));
    EXPECT_TRUE(refuses(home_.home / "alias/Library/Caches"));
    EXPECT_FALSE(refuses(home_.home / "alias/file"));
}

TEST_P(Guard, RefusesTheRealPlaceOfAProtectedFolderThatIsALink) {
    home_.folder("/data/documents");
    home_.link(home_.place("/data/documents"), "Documents");
    EXPECT_TRUE(refuses(home_.place("/data/documents")));
    EXPECT_TRUE(refuses(home_.place("/data")));
    EXPECT_FALSE(refuses(home_.file("/data/documents/file")));
}

TEST_P(Guard, AllowsALinkThatOnlyNamesAProtectedFolder) {
    EXPECT_FALSE(refuses(home_.link(home_.home, ".cache/app/link to home")));
    EXPECT_FALSE(refuses(home_.link("/nowhere", "dangling")));
}

TEST_P(Guard, RefusesAMountPointAndAllowsWhatLiesOnIt) {
    home_.platform.volumes = {{home_.folder("/Volumes/Stick"), "Stick"}};
    home_.platform.mountPoints = {home_.folder("disk")};
    EXPECT_TRUE(refuses(home_.place("/Volumes/Stick")));
    EXPECT_TRUE(refuses(home_.home / "disk"));
    EXPECT_FALSE(refuses(home_.place("/Volumes/Stick/file")));
    EXPECT_FALSE(refuses(home_.home / "disk/file"));
}

TEST_P(Guard, RefusesARealMountPoint) {
    const Path disk = home_.folder("disk");
    const test::ScopedMount mount = test::ScopedMount::memory(disk);
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_TRUE(refuses(disk));
    EXPECT_FALSE(refuses(disk / "file"));
}

TEST_P(Guard, RefusesTheProgramItself) {
    home_.platform.own = home_.file("Applications/Vellmoor.app/Contents/MacOS/vellmoor");
    EXPECT_TRUE(refuses(home_.platform.own));
    EXPECT_TRUE(refuses(home_.home / "Applications/Vellmoor.app"));
    EXPECT_FALSE(refuses(home_.home / "Applications/Other.app"));
}

TEST_P(Guard, RefusesTheProgramsOwnAppImageAndEntry) {
    if (GetParam() == System::Mac) {
        GTEST_SKIP() << "macOS has neither";
    }
    home_.environment.ownAppImage = home_.file("Downloads/Vellmoor.AppImage");
    home_.useEnvironment();
    EXPECT_TRUE(refuses(home_.home / "Downloads/Vellmoor.AppImage"));
    EXPECT_TRUE(refuses(home_.file(".local/share/applications/org.vellmoor.Vellmoor.desktop")));
    EXPECT_FALSE(refuses(home_.file("Downloads/Other.AppImage")));
}

TEST_P(Guard, RefusesTheUsersOwnFoldersWhateverTheirNames) {
    home_.platform.folders.downloads = home_.folder("下载");
    EXPECT_EQ(refuses(home_.home / "下载"), GetParam() == System::Linux); // macOS names none
    EXPECT_FALSE(refuses(home_.home / "下载/setup.deb"));
    home_.platform.folders.templates = home_.folder("模板");
    EXPECT_EQ(refuses(home_.home / "模板"), GetParam() == System::Linux);
}

TEST_P(Guard, TellsAReason) {
    EXPECT_EQ(PathGuard(home_.platform, home_.layout).refusalReason(home_.home), "Operation not permitted");
    EXPECT_EQ(PathGuard(home_.platform, home_.layout).refusalReason("relative"), "Invalid argument");
}

TEST_P(Guard, LetsEveryWholeFolderOfTheJunkTablesPass) {
    for (const JunkCategory& category : home_.layout.junk) {
        for (const RootPattern& root : category.roots) {
            if (root.below.find_first_of("*#|@{") == std::string::npos) {
                EXPECT_FALSE(refuses(root.base / root.below)) << root.base / root.below;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothSystems, Guard, ::testing::Values(System::Mac, System::Linux),
                         [](const auto& instance) { return instance.param == System::Mac ? "Mac" : "Linux"; });

} // namespace
} // namespace vellmoor
