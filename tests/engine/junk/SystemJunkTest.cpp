#include "junk/SystemJunk.h"

#include "Paths.h"
#include "junk/JunkFixture.h"

namespace vellmoor {
namespace {

using test::days;
using test::EngineHome;
using test::LinuxJunk;
using test::names;
using test::row;
using test::System;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::UnorderedElementsAre;

class MacJunk : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
    std::vector<CleanupItem> scan() {
        EngineContext context = home.context();
        return systemJunkItems(context);
    }
};

TEST_F(MacJunk, TheFourCategoriesComeInTheirOrderWithTheirLooks) {
    home.file("Library/Caches/com.example/data");
    home.file("Library/Logs/app.log");
    home.file("Library/Developer/Xcode/DerivedData/a");
    home.file("Downloads/old.dmg", 4096, days(8));
    const auto items = scan();
    ASSERT_EQ(items.size(), 4U);
    EXPECT_EQ(items[0].title, "User Caches");
    EXPECT_EQ(items[0].description, "Regenerable caches in ~/Library/Caches");
    EXPECT_EQ(items[0].symbol, "externaldrive.badge.timemachine");
    EXPECT_EQ(items[0].tint, Tint::teal);
    EXPECT_EQ(items[0].risk, CleanupRisk::safe);
    EXPECT_EQ(items[1].title, "System Logs");
    EXPECT_EQ(items[1].description, "Diagnostic reports, crash logs and old log files");
    EXPECT_EQ(items[1].symbol, "doc.text.magnifyingglass");
    EXPECT_EQ(items[1].tint, Tint::orange);
    EXPECT_EQ(items[1].risk, CleanupRisk::safe);
    EXPECT_EQ(items[2].title, "Developer Caches");
    EXPECT_EQ(items[2].description, "Xcode DerivedData, simulator caches and old archives");
    EXPECT_EQ(items[2].symbol, "hammer");
    EXPECT_EQ(items[2].tint, Tint::indigo);
    EXPECT_EQ(items[2].risk, CleanupRisk::cautious);
    EXPECT_EQ(items[3].title, "Download Leftovers");
    EXPECT_EQ(items[3].description, "Old installers, disk images and archives in Downloads");
    EXPECT_EQ(items[3].symbol, "arrow.down.doc");
    EXPECT_EQ(items[3].tint, Tint::pink);
    EXPECT_EQ(items[3].risk, CleanupRisk::cautious);
    for (const CleanupItem& item : items) {
        EXPECT_EQ(item.module, CleanerModule::systemJunk);
        EXPECT_TRUE(item.isCleanable) << item.title;
        const bool safe = item.risk == CleanupRisk::safe;
        EXPECT_EQ(item.isSelected, safe) << item.title;
        for (const CleanupTarget& target : item.targets) {
            EXPECT_EQ(target.isSelected, safe) << item.title;
        }
    }
}

TEST_F(MacJunk, AHomeWithoutDeveloperFolderShowsItsRowForInformation) {
    home.file("Library/Caches/a");
    const auto items = scan();
    const CleanupItem* developer = row(items, "Developer Caches");
    ASSERT_NE(developer, nullptr);
    EXPECT_FALSE(developer->isCleanable);
    EXPECT_FALSE(developer->isSelected);
    EXPECT_EQ(developer->risk, CleanupRisk::previewOnly);
    EXPECT_EQ(developer->description, "Xcode DerivedData, simulator caches and old archives; no items found");
}

TEST_F(MacJunk, AnEmptyCacheFolderMakesTheRowDisappear) {
    home.folder("Library/Caches");
    EXPECT_EQ(row(scan(), "User Caches"), nullptr);
}

TEST_F(MacJunk, AMissingCacheFolderLeavesARowThatCannotBeCleaned) {
    const auto items = scan();
    const CleanupItem* caches = row(items, "User Caches");
    ASSERT_NE(caches, nullptr);
    EXPECT_FALSE(caches->isCleanable);
    EXPECT_EQ(caches->description, "Regenerable caches in ~/Library/Caches; no items found");
}

TEST_F(MacJunk, ACategoryWhoseTargetsHoldNothingDisappears) {
    home.folder("Library/Caches/empty");
    EXPECT_EQ(row(scan(), "User Caches"), nullptr);
}

TEST_F(MacJunk, AHiddenFileDirectlyInTheCachesIsNeverATarget) {
    home.file("Library/Caches/.hidden");
    home.file("Library/Caches/shown");
    EXPECT_THAT(names(row(scan(), "User Caches")), ElementsAre("shown"));
}

TEST_F(MacJunk, DiagnosticReportsAreListedWholeAndOneByOne) {
    home.file("Library/Logs/DiagnosticReports/crash.ips", 4096);
    const auto items = scan();
    const CleanupItem* logs = row(items, "System Logs");
    ASSERT_NE(logs, nullptr);
    EXPECT_THAT(names(logs), ElementsAre("DiagnosticReports", "crash.ips"));
    EXPECT_EQ(logs->bytes, 8192);
    EXPECT_EQ(logs->files, 2);
}

TEST_F(MacJunk, DeveloperFoldersAreWholeTargetsInTheirOrder) {
    home.file("Library/Developer/Xcode/Archives/a");
    home.file("Library/Developer/Xcode/DerivedData/a");
    home.file("Library/Developer/CoreSimulator/Caches/a");
    EXPECT_THAT(names(row(scan(), "Developer Caches")), ElementsAre("DerivedData", "Caches", "Archives"));
}

TEST_F(MacJunk, OnlyDownloadsOlderThanSevenDaysAreLeftovers) {
    home.file("Downloads/six.dmg", 4096, days(6));
    home.file("Downloads/eight.dmg", 4096, days(8));
    home.file("Downloads/Setup.DMG", 4096, days(9));
    home.file("Downloads/edge.dmg", 4096, days(7));
    home.file("Downloads/.hidden.dmg", 4096, days(9));
    EXPECT_THAT(names(row(scan(), "Download Leftovers")), UnorderedElementsAre("eight.dmg", "Setup.DMG"));
}

TEST_F(MacJunk, OnlyTheNamedExtensionsAreLeftovers) {
    for (const char* name :
         {"a.dmg", "a.pkg", "a.zip", "a.xip", "a.ipsw", "a.iso", "a.rar", "a.7z", "a.tar", "a.deb", "a"}) {
        home.file(Path("Downloads") / name, 4096, days(30));
    }
    EXPECT_THAT(names(row(scan(), "Download Leftovers")),
                UnorderedElementsAre("a.dmg", "a.pkg", "a.zip", "a.xip", "a.ipsw", "a.iso"));
}

TEST_F(MacJunk, AFolderNamedLikeAnInstallerIsALeftover) {
    home.file("Downloads/Tool.pkg/inside", 4096);
    home.setAge("Downloads/Tool.pkg", days(30));
    EXPECT_THAT(names(row(scan(), "Download Leftovers")), ElementsAre("Tool.pkg"));
}

TEST_F(MacJunk, ACancelledScanRaisesTheCancellation) {
    home.token.cancel();
    EXPECT_THROW(scan(), ScanCancelled);
}

TEST_F(MacJunk, NothingIsRemovedByScanning) {
    home.file("Library/Caches/a");
    home.file("Downloads/old.dmg", 4096, days(30));
    scan();
    EXPECT_TRUE(home.has("Library/Caches/a"));
    EXPECT_TRUE(home.has("Downloads/old.dmg"));
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

// --- Linux

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

TEST_F(LinuxJunk, NothingStandsInBothTheCacheRowAndTheDeveloperRow) {
    for (const char* name : {"yarn",
                             "pnpm",
                             "deno",
                             "pip",
                             "uv",
                             "pypoetry/cache",
                             "pypoetry/virtualenvs",
                             "pipenv",
                             "pre-commit",
                             "go-build",
                             "ccache",
                             "sccache",
                             "bazel",
                             "bazelisk",
                             "vcpkg",
                             "composer",
                             "gem",
                             "JetBrains/IdeaIC2024.1/caches",
                             "Google/AndroidStudio2024/index",
                             "node-gyp",
                             "electron",
                             "electron-builder",
                             "typescript",
                             "Cypress",
                             "ms-playwright",
                             "puppeteer",
                             "prisma",
                             "zig",
                             "rebar3",
                             "cabal",
                             "org.swift.swiftpm",
                             "coursier",
                             "helm",
                             "R",
                             "huggingface/hub",
                             "torch",
                             "whisper",
                             "gpt4all",
                             "lm-studio",
                             "modelscope",
                             "kagglehub"}) {
        home.file(Path(".cache") / name / "a");
    }
    home.file(".cache/thumbnails/a");
    EXPECT_THAT(targets("User Caches"), ElementsAre(".cache/thumbnails"));
    const auto developer = targets("Developer Caches");
    EXPECT_THAT(developer, Contains(".cache/pip"));
    EXPECT_THAT(developer, Contains(".cache/JetBrains/IdeaIC2024.1/caches"));
    EXPECT_THAT(developer, Contains(".cache/Google/AndroidStudio2024/index"));
    EXPECT_THAT(developer, Contains(".cache/kagglehub"));
    EXPECT_THAT(developer, Not(Contains(".cache/pypoetry/virtualenvs")));
}

TEST_F(LinuxJunk, EveryDeveloperCacheOfTheTableIsFoundInItsOrder) {
    const std::vector<std::string> folders{".npm/_cacache",
                                           ".npm/_npx",
                                           ".cache/yarn",
                                           ".yarn/berry/cache",
                                           ".local/share/pnpm/store",
                                           ".cache/pnpm",
                                           ".bun/install/cache",
                                           ".cache/deno",
                                           ".cache/pip",
                                           ".cache/uv",
                                           ".cache/pypoetry/cache",
                                           ".cache/pypoetry/artifacts",
                                           ".cache/pipenv",
                                           ".cache/pre-commit",
                                           ".cargo/registry/index",
                                           ".cargo/registry/cache",
                                           ".cargo/registry/src",
                                           ".cargo/git/db",
                                           ".cargo/git/checkouts",
                                           ".cache/go-build",
                                           "go/pkg/mod",
                                           ".gradle/caches",
                                           ".gradle/wrapper/dists",
                                           ".gradle/daemon",
                                           ".m2/wrapper/dists",
                                           ".cache/ccache",
                                           ".cache/sccache",
                                           ".cache/bazel",
                                           ".cache/bazelisk",
                                           ".cache/vcpkg",
                                           ".nuget/packages",
                                           ".local/share/NuGet/v3-cache",
                                           ".local/share/NuGet/http-cache",
                                           ".local/share/NuGet/plugins-cache",
                                           ".cache/composer",
                                           ".composer/cache",
                                           ".bundle/cache",
                                           ".gem/specs",
                                           ".cache/gem",
                                           ".config/Code/Cache",
                                           ".config/Code/CachedData",
                                           ".config/Code/CachedExtensionVSIXs",
                                           ".config/Code/Code Cache",
                                           ".config/Code/GPUCache",
                                           ".config/Code/DawnGraphiteCache",
                                           ".config/Code/DawnWebGPUCache",
                                           ".config/Code - Insiders/Cache",
                                           ".config/Code - OSS/Cache",
                                           ".config/VSCodium/Cache",
                                           ".config/Cursor/Cache",
                                           ".android/cache",
                                           ".android/build-cache",
                                           ".cache/node-gyp",
                                           ".cache/electron",
                                           ".cache/electron-builder",
                                           ".cache/typescript",
                                           ".cache/Cypress",
                                           ".cache/ms-playwright",
                                           ".cache/puppeteer",
                                           ".cache/prisma",
                                           ".cache/zig",
                                           ".cache/rebar3",
                                           ".cache/cabal",
                                           ".cache/org.swift.swiftpm",
                                           ".cache/coursier",
                                           ".cache/helm",
                                           ".cache/R",
                                           ".ivy2/cache",
                                           ".pub-cache/hosted",
                                           ".cache/huggingface/hub",
                                           ".cache/huggingface/datasets",
                                           ".cache/huggingface/xet",
                                           ".cache/huggingface/assets",
                                           ".cache/torch",
                                           ".cache/whisper",
                                           ".cache/gpt4all",
                                           ".cache/lm-studio",
                                           ".cache/modelscope",
                                           ".cache/kagglehub"};
    for (const std::string& folder : folders) {
        home.file(Path(folder) / "a");
    }
    EXPECT_EQ(targets("Developer Caches"), folders);
}

TEST_F(LinuxJunk, WhatOnlyLooksLikeADeveloperCacheStays) {
    for (const char* path : {".local/share/virtualenvs/a/x",
                             ".local/share/pipx/x",
                             ".local/share/uv/x",
                             ".rustup/x",
                             ".cargo/bin/x",
                             ".nvm/x",
                             ".pyenv/x",
                             ".sdkman/x",
                             ".cache/JetBrains/Idea/LocalHistory/x",
                             ".cache/huggingface/token",
                             ".cache/huggingface/stored_tokens",
                             ".m2/repository/x",
                             ".conan/x",
                             ".conan2/x",
                             ".config/Code/User/x",
                             ".config/Code/Backups/x",
                             ".config/Code/Workspaces/x",
                             ".android/avd/x",
                             ".android/adbkey",
                             ".android/debug.keystore",
                             ".ollama/x",
                             ".terraform.d/x",
                             ".cache/pypoetry/virtualenvs/x"}) {
        home.file(path);
    }
    for (const CleanupItem& item : scan()) {
        EXPECT_THAT(item.targets, IsEmpty()) << item.title;
    }
}

TEST_F(LinuxJunk, AToolsVariableIsProbedBesideItsDefault) {
    home.environment.toolFolders["CARGO_HOME"] = home.home / "cargo";
    home.useEnvironment();
    home.file("cargo/registry/cache/a");
    home.file(".cargo/registry/cache/a");
    EXPECT_THAT(targets("Developer Caches"), UnorderedElementsAre("cargo/registry/cache", ".cargo/registry/cache"));
}

TEST_F(LinuxJunk, AVariableThatNamesTheDefaultCountsOnce) {
    home.environment.toolFolders["PIP_CACHE_DIR"] = home.home / ".cache/pip";
    home.useEnvironment();
    home.file(".cache/pip/a");
    EXPECT_THAT(targets("Developer Caches"), ElementsAre(".cache/pip"));
}

TEST_F(LinuxJunk, OldCcacheFoldersAreListedOneByOne) {
    home.file(".ccache/0/a");
    home.file(".ccache/f/a");
    home.file(".ccache/tmp/a");
    home.file(".ccache/ccache.conf");
    EXPECT_THAT(targets("Developer Caches"), UnorderedElementsAre(".ccache/0", ".ccache/f", ".ccache/tmp"));
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

TEST_F(LinuxJunk, LogsOfTheTableAreFoundAndNothingElse) {
    const std::vector<std::string> wanted{".xsession-errors",
                                          ".xsession-errors.old",
                                          ".local/share/xorg/Xorg.0.log",
                                          ".local/share/xorg/Xorg.0.log.old",
                                          ".local/share/sddm/xorg-session.log",
                                          ".local/state/a.log",
                                          ".local/state/app/b.log.1",
                                          ".local/state/app/x/c.log.gz",
                                          ".local/state/app/d.log.old",
                                          ".config/Editor/logs",
                                          ".npm/_logs",
                                          ".cache/JetBrains/Idea/log",
                                          ".cache/Google/AndroidStudio1/log",
                                          ".local/share/JetBrains/Toolbox/logs",
                                          ".local/share/Steam/logs"};
    for (const std::string& path : wanted) {
        home.file(path.ends_with("logs") || path.ends_with("/log") ? Path(path) / "a" : Path(path));
    }
    home.folder(".config/Editor/Code Cache");
    for (const char* path :
         {".config/hexchat/logs/chat", ".purple/logs/chat", ".local/state/weechat/w.log",
          ".local/state/profanity/p.log", ".local/state/a/b/c/too-deep.log", ".local/state/app/notes.txt",
          ".local/state/app/x.log.abc", ".local/share/xorg/other.txt", ".config/irc/logs/a"}) {
        home.file(path);
    }
    EXPECT_THAT(targets("System Logs"), ::testing::UnorderedElementsAreArray(wanted));
}

TEST_F(LinuxJunk, ALogThatIsALinkIsNoTarget) {
    home.file("real.log");
    home.link(home.place("real.log"), ".local/state/app/a.log");
    home.file(".local/state/app/b.log");
    EXPECT_THAT(targets("System Logs"), ElementsAre(".local/state/app/b.log"));
}

TEST_F(LinuxJunk, CrashReportsFollowTheLogs) {
    home.file(".xsession-errors");
    home.file("hs_err_pid1.log");
    home.file("replay_pid2.log");
    home.file("java_error_in_idea.hprof");
    home.file("hs_err_pid1.txt");
    EXPECT_THAT(targets("System Logs"),
                ::testing::AllOf(Contains(".xsession-errors"), Contains("hs_err_pid1.log"), Contains("replay_pid2.log"),
                                 Contains("java_error_in_idea.hprof"), Not(Contains("hs_err_pid1.txt"))));
    EXPECT_EQ(targets("System Logs").front(), ".xsession-errors");
}

TEST_F(LinuxJunk, SystemCrashReportsOfTheUserAreFound) {
    home.file("/var/crash/tool.1000.crash");
    home.file("/var/crash/tool.1000.upload");
    home.file("/var/crash/notes.txt");
    const auto items = scan();
    EXPECT_THAT(names(row(items, "System Logs")), UnorderedElementsAre("tool.1000.crash", "tool.1000.upload"));
}

TEST_F(LinuxJunk, CrashReportsOfAClosedBrowserAreFound) {
    home.file(".config/google-chrome/Crash Reports/completed/a.dmp");
    home.file(".config/google-chrome/Crash Reports/settings.dat");
    home.file(".mozilla/firefox/Crash Reports/pending/b.dmp");
    home.file(".mozilla/firefox/Crash Reports/InstallTime1");
    EXPECT_THAT(targets("System Logs"), UnorderedElementsAre(".config/google-chrome/Crash Reports/completed/a.dmp",
                                                             ".mozilla/firefox/Crash Reports/pending/b.dmp"));
    run("/usr/lib/firefox/firefox");
    EXPECT_THAT(targets("System Logs"), ElementsAre(".config/google-chrome/Crash Reports/completed/a.dmp"));
}

TEST_F(LinuxJunk, LinuxInstallersAreDownloadLeftovers) {
    for (const char* name : {"a.deb", "a.rpm", "a.AppImage", "a.flatpak", "a.flatpakref", "a.flatpakrepo", "a.snap",
                             "a.run", "a.bundle", "a.img", "a.msi", "a.exe", "a.zip", "a.tar.gz"}) {
        home.file(Path("Downloads") / name, 4096, days(8));
    }
    const auto found = targets("Download Leftovers");
    EXPECT_EQ(found.size(), 13U);
    EXPECT_THAT(found, Not(Contains("Downloads/a.tar.gz")));
}

TEST_F(LinuxJunk, TheDesktopsOwnDownloadFolderIsUsed) {
    home.file("下载/old.deb", 4096, days(8));
    home.file("Downloads/old.deb", 4096, days(8));
    home.platform.folders.downloads = home.place("下载");
    EXPECT_THAT(targets("Download Leftovers"), ElementsAre("下载/old.deb"));
}

TEST_F(LinuxJunk, ASwitchedOffDownloadFolderHasNoLeftovers) {
    home.file("old.deb", 4096, days(8));
    for (const Path& folder : {home.home, home.home / "", home.home.parent_path(), Path("/")}) {
        home.platform.folders.downloads = folder;
        EXPECT_THAT(targets("Download Leftovers"), IsEmpty()) << folder;
    }
}

TEST_F(LinuxJunk, AHomeThatDoesNotExistGivesRowsForInformationOnly) {
    std::filesystem::remove_all(home.home);
    for (const CleanupItem& item : scan()) {
        EXPECT_FALSE(item.isCleanable);
        EXPECT_THAT(item.targets, IsEmpty());
    }
}

} // namespace
} // namespace vellmoor
