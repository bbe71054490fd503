// Which folders of caches go on Linux, and which stay because they are none or are in use.
#include "junk/JunkFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace vellmoor {
namespace {

using test::LinuxJunk;
using test::row;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

TEST_F(LinuxJunk, TheDescriptionNamesTheRealCacheFolder) {
    home.file(".cache/thumbnails/a");
    auto items = scan();
    ASSERT_NE(row(items, "User Caches"), nullptr);
    EXPECT_EQ(row(items, "User Caches")->description, "Regenerable caches in ~/.cache");
    home.environment.cache = home.home / "fast/cache";
    home.useEnvironment();
    home.file("fast/cache/x/a");
    items = scan();
    EXPECT_EQ(row(items, "User Caches")->description, "Regenerable caches in ~/fast/cache");
    EXPECT_EQ(row(items, "Developer Caches")->description,
              "Download and build caches of npm, pip, Cargo, Go, Gradle and other tools; no items found");
}

TEST_F(LinuxJunk, EveryNameThatIsNoCacheStays) {
    for (const char* name :
         {"rclone",   "sessions",  "keyring-X1",  "ssh",       "gnupg", "ibus",     "fcitx5",    "at-spi",
          "dconf",    "tracker3",  "localsearch", "evolution", "mu",    "borg",     "restic",    "duplicity",
          "deja-dup", "bash",      "zsh",         "fish",      "vim",   "nvim",     "emacs",     "less",
          "mc",       "keepassxc", "cliphist",    "wal",       "obexd", "vellmoor", "vellmoor-x"}) {
        home.file(Path(".cache") / name / "a");
    }
    for (const char* name : {"thumbnails", "rclone2", "mu2", "walrus", "lesspipe"}) {
        home.file(Path(".cache") / name / "a");
    }
    EXPECT_THAT(targets("User Caches"), UnorderedElementsAre(".cache/thumbnails", ".cache/rclone2", ".cache/mu2",
                                                             ".cache/walrus", ".cache/lesspipe"));
}

TEST_F(LinuxJunk, ARelocatedOrHiddenCacheIsNoTarget) {
    home.file("disk/big/a");
    home.link(home.place("disk/big"), ".cache/big");
    home.file(".cache/.hidden/a");
    home.file(".cache/plain", 4096);
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/plain"));
}

TEST_F(LinuxJunk, FlatpakAndSnapCachesAreUserCaches) {
    home.file(".var/app/org.example.App/cache/a");
    home.file(".var/app/org.example.App/data/a");
    home.file(".var/app/com.jetbrains.Idea/cache/a");
    home.file(".var/app/com.google.AndroidStudio/cache/a");
    home.file("snap/tool/common/.cache/a");
    home.file("snap/tool/17/.cache/a");
    home.file("snap/tool/16/.cache/a");
    home.link("17", "snap/tool/current");
    EXPECT_THAT(targets("User Caches"), UnorderedElementsAre(".var/app/org.example.App/cache",
                                                             "snap/tool/common/.cache", "snap/tool/17/.cache"));
}

TEST_F(LinuxJunk, TheCacheOfARunningFlatpakOrSnapIsLeftAlone) {
    home.file(".var/app/org.example.App/cache/a");
    home.file("snap/tool/common/.cache/a");
    home.file(".cache/thumbnails/a");
    runUnit("app-flatpak-org.example.App-31.scope", 501);
    runUnit("snap.tool.tool-0f.scope", 502);
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails"));
}

TEST_F(LinuxJunk, TheCacheOfARunningBrowserIsLeftAlone) {
    home.file(".cache/mozilla/a");
    home.file(".cache/google-chrome/a");
    home.file(".cache/google-chrome-beta/a");
    EXPECT_THAT(targets("User Caches"),
                UnorderedElementsAre(".cache/mozilla", ".cache/google-chrome", ".cache/google-chrome-beta"));
    run("/opt/google/chrome/chrome");
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/mozilla"));
}

TEST_F(LinuxJunk, TheCacheOfEveryRunningBrowserIsLeftAlone) {
    const std::vector<std::pair<std::string, Path>> browsers{{"mozilla", "/usr/lib/firefox/firefox"},
                                                             {"google-chrome-beta", "/opt/google/chrome/chrome"},
                                                             {"chromium", "/usr/lib/chromium/chromium"},
                                                             {"microsoft-edge-dev", "/opt/microsoft/msedge"},
                                                             {"BraveSoftware", "/opt/brave.com/brave"},
                                                             {"vivaldi-snapshot", "/opt/vivaldi/vivaldi-bin"},
                                                             {"opera-beta", "/usr/lib/opera/opera"},
                                                             {"librewolf", "/usr/share/librewolf/librewolf"},
                                                             {"waterfox", "/opt/waterfox/waterfox-bin"},
                                                             {"zen", "/opt/zen/zen-bin"},
                                                             {"floorp", "/opt/floorp/floorp"},
                                                             {"epiphany", "/usr/bin/epiphany"},
                                                             {"thunderbird", "/usr/lib/thunderbird/thunderbird-bin"}};
    for (const auto& [cache, program] : browsers) {
        home.file(".cache/" + cache + "/a");
    }
    EXPECT_EQ(targets("User Caches").size(), browsers.size());
    int pid = 700;
    for (const auto& [cache, program] : browsers) {
        run(program, ++pid);
        EXPECT_THAT(targets("User Caches"), Not(Contains(".cache/" + cache)));
    }
}

TEST_F(LinuxJunk, AHomeThatDoesNotExistGivesRowsForInformationOnly) {
    std::filesystem::remove_all(home.home);
    const auto items = scan();
    EXPECT_FALSE(items.empty());
    for (const CleanupItem& item : items) {
        EXPECT_FALSE(item.isCleanable);
        EXPECT_THAT(item.targets, IsEmpty());
    }
}

} // namespace
} // namespace vellmoor
