// What variables and odd base folders must not make of a user's files, and which rows stay when nothing is found.
#include "junk/JunkFixture.h"

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What a variable names, and what it must not name

TEST_F(LinuxJunk, NoVariableMakesAPathCountTwice) {
    home.environment.toolFolders["GOMODCACHE"] = home.home / "go/pkg/mod";
    home.environment.toolFolders["COMPOSER_CACHE_DIR"] = home.home / ".composer/cache";
    home.environment.toolFolders["CCACHE_DIR"] = home.home / ".ccache";
    home.useEnvironment();
    home.file("go/pkg/mod/a");
    home.file(".composer/cache/a");
    home.file(".ccache/0/a");
    home.file(".ccache/tmp/a");
    EXPECT_THAT(targets("Developer Caches"), ElementsAre("go/pkg/mod", ".ccache", ".composer/cache"));
}

TEST_F(LinuxJunk, AFolderBelowAnotherListedOneIsCountedWithIt) {
    home.environment.toolFolders["SCCACHE_DIR"] = home.home / ".cache/pip/sccache";
    home.useEnvironment();
    home.file(".cache/pip/sccache/a");
    home.file(".cache/pip/http/a");
    EXPECT_THAT(targets("Developer Caches"), ElementsAre(".cache/pip"));
}

TEST_F(LinuxJunk, TwoWaysToOneFolderCountOnce) {
    home.file("disk/cargo/registry/cache/a");
    home.link(home.place("disk/cargo"), ".cargo");
    home.environment.toolFolders["CARGO_HOME"] = home.home / "disk/cargo";
    home.useEnvironment();
    EXPECT_THAT(targets("Developer Caches"), ElementsAre("disk/cargo/registry/cache"));
}

TEST_F(LinuxJunk, TheModuleCacheOfGoWinsOverItsFolder) {
    home.environment.toolFolders["GOMODCACHE"] = home.home / "mods";
    home.environment.toolFolders["GOPATH"] = home.home / "work";
    home.useEnvironment();
    home.file("mods/a");
    home.file("work/pkg/mod/a");
    home.file("go/pkg/mod/a");
    EXPECT_THAT(targets("Developer Caches"), ElementsAre("mods", "go/pkg/mod"));
}

TEST_F(LinuxJunk, AToolsFolderBelowTheCachesIsADeveloperCacheOnly) {
    home.environment.toolFolders["PIP_CACHE_DIR"] = home.home / ".cache/tools/pip";
    home.useEnvironment();
    home.file(".cache/tools/pip/a");
    home.file(".cache/thumbnails/a");
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails"));
    EXPECT_THAT(targets("Developer Caches"), ElementsAre(".cache/tools/pip"));
}

TEST_F(LinuxJunk, AToolsVariableThatNamesSomethingOfTheUsersIsNotUsed) {
    home.platform.folders.documents = home.place("Work/Papers");
    home.file("Work/Papers/pip/thesis.odt");
    home.file("Work/registry/cache/a");
    home.file(".cargo/registry/cache/a");
    home.file(".cache/thumbnails/a");
    for (const char* folder : {"", "..", "Work", "Work/Papers", "Work/Papers/pip", ".cache", ".config", ".local"}) {
        home.environment.toolFolders["PIP_CACHE_DIR"] = (home.home / folder).lexically_normal();
        home.environment.toolFolders["CARGO_HOME"] = (home.home / folder).lexically_normal();
        home.useEnvironment();
        EXPECT_THAT(targets("Developer Caches"), ElementsAre(".cargo/registry/cache")) << folder;
        EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails")) << folder;
    }
}

/// A base folder where it must not be listed; relative to the home folder.
struct OddBase {
    const char* name;
    const char* folder;
};
void PrintTo(const OddBase& base, std::ostream* out) {
    *out << base.folder;
}

class OddBaseFolder : public LinuxJunk, public ::testing::WithParamInterface<OddBase> {
protected:
    OddBaseFolder() {
        home.file("Documents/Letters/a.odt");
        home.file("Documents/notes.log");
        home.file(".config/app/settings");
        home.file(".config/app.log");
        home.file(".local/share/app/data");
        home.file(".local/share/app.log");
        home.file("letters/private.log");
        folder = Path(std::string(GetParam().folder)).is_absolute() ? home.root : home.home / GetParam().folder;
        folder = folder.lexically_normal();
        if (!folder.has_filename()) {
            folder = folder.parent_path();
        }
    }
    Path folder;
};

TEST_P(OddBaseFolder, AsCachesNothingOfItIsListed) {
    home.environment.cache = folder;
    home.useEnvironment();
    home.file(folder / "pip/a");
    home.file(folder / "JetBrains/Idea/caches/a");
    for (const CleanupItem& item : scan()) {
        EXPECT_THAT(names(&item), IsEmpty()) << item.title;
    }
}

TEST_P(OddBaseFolder, AsStateNoLogOfItIsListed) {
    home.environment.state = folder;
    home.useEnvironment();
    EXPECT_THAT(targets("System Logs"), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Places, OddBaseFolder,
                         ::testing::Values(OddBase{"Home", "."}, OddBase{"AboveHome", ".."},
                                           OddBase{"Documents", "Documents"},
                                           OddBase{"InDocuments", "Documents/Letters"}, OddBase{"Config", ".config"},
                                           OddBase{"Data", ".local/share"}, OddBase{"InData", ".local/share/app"},
                                           OddBase{"InConfig", ".config/app"}, OddBase{"HoldsData", ".local"}),
                         [](const auto& test) { return test.param.name; });

TEST_F(LinuxJunk, CachesAndStateInOneFolderAreNotListed) {
    home.environment.cache = home.home / "both";
    home.environment.state = home.home / "both";
    home.useEnvironment();
    home.file("both/app/a.log");
    EXPECT_THAT(targets("User Caches"), IsEmpty());
    EXPECT_THAT(targets("System Logs"), IsEmpty());
}

TEST_F(LinuxJunk, CachesThatAreALinkToTheDocumentsAreNotListed) {
    home.file("Documents/Letters/a.odt");
    home.link(home.place("Documents"), ".cache");
    EXPECT_THAT(targets("User Caches"), IsEmpty());
}

TEST_F(LinuxJunk, RelocatedCachesAreListed) {
    home.file("disk/caches/thumbnails/a");
    home.link(home.place("disk/caches"), ".cache");
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails"));
}

TEST_F(LinuxJunk, AUserFolderAmongTheCachesIsNoTargetNorInsideOne) {
    home.platform.folders.pictures = home.place(".cache/viewer/Pictures");
    home.platform.folders.templates = home.place(".cache/Templates");
    home.file(".cache/viewer/Pictures/a.png");
    home.file(".cache/Templates/a");
    home.file(".cache/thumbnails/a");
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails"));
}

TEST_F(LinuxJunk, ALogInAUserFolderIsNoTarget) {
    home.platform.folders.documents = home.place(".local/state/papers");
    home.file(".local/state/papers/lab.log");
    home.file(".local/state/app/b.log");
    EXPECT_THAT(targets("System Logs"), ElementsAre(".local/state/app/b.log"));
}

TEST_F(LinuxJunk, NoLinkIsFollowedBelowATool) {
    home.file("elsewhere/cache/a");
    home.folder(".cargo");
    home.link(home.place("elsewhere"), ".cargo/registry");
    EXPECT_THAT(targets("Developer Caches"), IsEmpty());
}

// Which rows stay when nothing is found

TEST_F(LinuxJunk, ABareFolderOfAToolLeavesTheDeveloperRow) {
    home.folder(".cache/JetBrains");
    const auto items = scan();
    const CleanupItem* developer = row(items, "Developer Caches");
    ASSERT_NE(developer, nullptr);
    EXPECT_TRUE(developer->description.ends_with("; no items found"));
}

TEST_F(LinuxJunk, EmptyFoldersOfToolsMakeTheDeveloperRowDisappear) {
    home.folder(".cache/pip");
    EXPECT_EQ(row(scan(), "Developer Caches"), nullptr);
}

TEST_F(LinuxJunk, AnEmptyCacheFolderMakesTheRowDisappearAndAMissingOneDoesNot) {
    EXPECT_NE(row(scan(), "User Caches"), nullptr);
    home.folder(".cache");
    EXPECT_EQ(row(scan(), "User Caches"), nullptr);
}

TEST_F(LinuxJunk, LogsDisappearWhenTheirFoldersAreEmptyAndStayWhenTheyAreMissing) {
    EXPECT_NE(row(scan(), "System Logs"), nullptr);
    home.folder(".local/state");
    EXPECT_EQ(row(scan(), "System Logs"), nullptr);
    home.folder(".local/share/xorg");
    EXPECT_EQ(row(scan(), "System Logs"), nullptr);
    home.file(".local/state/app/data");
    EXPECT_NE(row(scan(), "System Logs"), nullptr);
}

} // namespace
} // namespace vellmoor::test
