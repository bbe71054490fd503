// The parts of the browser table that no privacy row shows.
#include "layouts/linux/LinuxBrowsers.h"

#include "layouts/linux/LinuxEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <string>

namespace vellmoor {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const LinuxEnvironment environment = linuxEnvironmentOf("/home/u");

std::vector<RootPattern> crashReportsBelow(const std::string& folder) {
    std::vector<RootPattern> patterns = browserCrashReports(linuxBrowsers(environment));
    std::erase_if(patterns, [&](const RootPattern& pattern) { return pattern.base != folder; });
    return patterns;
}

TEST(LinuxBrowsers, EveryPackagingHasFoldersAndTokens) {
    EXPECT_THAT(linuxBrowsers(environment),
                Each(AllOf(Field(&LinuxBrowser::folders, Not(IsEmpty())), Field(&LinuxBrowser::tokens, Not(IsEmpty())),
                           Field(&LinuxBrowser::symbol, Not(IsEmpty())))));
}

TEST(LinuxBrowsers, NoTokenStandsForTwoBrowsers) {
    std::multiset<std::string> tokens;
    for (const LinuxBrowser& browser : linuxBrowsers(environment)) {
        tokens.insert(browser.tokens.begin(), browser.tokens.end());
    }
    const auto twice = std::ranges::find_if(tokens, [&](const std::string& token) { return tokens.count(token) > 1; });
    EXPECT_EQ(twice, tokens.end());
}

TEST(LinuxBrowsers, NoUserDataFolderBelongsToTwoBrowsers) {
    std::set<std::filesystem::path> seen;
    for (const LinuxBrowser& browser : linuxBrowsers(environment)) {
        for (const BrowserFolder& folder : browser.folders) {
            EXPECT_TRUE(seen.insert(folder.userData).second) << folder.userData;
        }
    }
}

TEST(LinuxBrowsers, AFlatpakIsKnownByItsIdOnly) {
    for (const LinuxBrowser& browser : linuxBrowsers(environment)) {
        if (browser.name.ends_with(" (Flatpak)")) {
            EXPECT_THAT(browser.tokens, Each(StartsWith("flatpak:"))) << browser.name;
        }
    }
}

TEST(LinuxBrowsers, ASnapIsKnownByItsNameOnly) {
    for (const LinuxBrowser& browser : linuxBrowsers(environment)) {
        if (browser.name.ends_with(" (Snap)")) {
            EXPECT_THAT(browser.tokens, ElementsAre(StartsWith("snap:"))) << browser.name;
        }
    }
}

/// What is owned directly below the folder by the name of the child.
std::vector<OwnedFolders> ownedChildren(const std::filesystem::path& folder) {
    std::vector<OwnedFolders> owned = linuxOwnedFolders(environment, linuxBrowsers(environment));
    std::erase_if(owned, [&](const OwnedFolders& one) { return one.folder != folder || one.names.empty(); });
    return owned;
}

TEST(LinuxBrowsers, TheCacheNamesOfEveryNativeBrowserAreKnown) {
    std::vector<std::string> names;
    std::ranges::transform(ownedChildren("/home/u/.cache"), std::back_inserter(names), &OwnedFolders::names);
    EXPECT_THAT(names,
                ElementsAre("mozilla", "google-chrome*", "chromium", "microsoft-edge*", "BraveSoftware", "vivaldi*",
                            "opera*", "librewolf", "waterfox", "zen", "floorp", "epiphany", "thunderbird"));
}

TEST(LinuxBrowsers, ThunderbirdUsesItsCacheInEveryPackaging) {
    const OwnedFolders cache = ownedChildren("/home/u/.cache").back();
    EXPECT_EQ(cache.owner, "Thunderbird");
    EXPECT_THAT(cache.tokens,
                ElementsAre("thunderbird", "thunderbird-bin", "flatpak:org.mozilla.Thunderbird", "snap:thunderbird"));
}

TEST(LinuxBrowsers, FlatpaksAndSnapsUseTheirOwnFolders) {
    EXPECT_THAT(ownedChildren("/home/u/.var/app"), ElementsAre(Field(&OwnedFolders::tokens, ElementsAre("flatpak:"))));
    EXPECT_THAT(ownedChildren("/home/u/snap"), ElementsAre(Field(&OwnedFolders::tokens, ElementsAre("snap:"))));
    EXPECT_THAT(ownedChildren("/home/u/.snap/data"), ElementsAre(Field(&OwnedFolders::tokens, ElementsAre("snap:"))));
}

TEST(LinuxBrowsers, UngoogledChromiumIsAChromiumFlatpak) {
    const std::vector<LinuxBrowser> browsers = linuxBrowsers(environment);
    const auto chromium = std::ranges::find(browsers, "Chromium (Flatpak)", &LinuxBrowser::name);
    ASSERT_NE(chromium, browsers.end());
    EXPECT_THAT(chromium->tokens, ElementsAre("flatpak:org.chromium.Chromium",
                                              "flatpak:io.github.ungoogled_software.ungoogled_chromium"));
}

TEST(LinuxBrowsers, FirefoxReportsAreThoseThatWaitOrWereSent) {
    for (const char* folder : {"/home/u/.mozilla/firefox", "/home/u/.librewolf"}) {
        const auto patterns = crashReportsBelow(folder);
        ASSERT_EQ(patterns.size(), 1U);
        EXPECT_EQ(patterns[0].below, "Crash Reports/pending|submitted/*");
    }
}

TEST(LinuxBrowsers, ChromiumReportsAreThoseOfItsFourFolders) {
    const auto patterns = crashReportsBelow("/home/u/.var/app/com.google.Chrome/config/google-chrome");
    ASSERT_EQ(patterns.size(), 1U);
    EXPECT_EQ(patterns[0].below, "Crash Reports/completed|pending|new|attachments/*");
}

TEST(LinuxBrowsers, GnomeWebKeepsNoCrashReports) {
    EXPECT_THAT(crashReportsBelow("/home/u/.local/share/epiphany"), IsEmpty());
}

TEST(LinuxBrowsers, SnapDataMayBeHidden) {
    EXPECT_THAT(snapDataFolders(environment), ElementsAre("/home/u/snap", "/home/u/.snap/data"));
}

} // namespace
} // namespace vellmoor
