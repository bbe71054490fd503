// The parts of the browser table that no privacy row shows.
#include "layouts/LinuxBrowsers.h"

#include "layouts/LinuxEnvironment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace vellmoor {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

const LinuxEnvironment environment = linuxEnvironmentOf("/home/u");

std::vector<RootPattern> crashReportsBelow(const std::string& folder) {
    std::vector<RootPattern> patterns = browserCrashReports(environment);
    std::erase_if(patterns, [&](const RootPattern& pattern) { return pattern.base != folder + "/Crash Reports"; });
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
            EXPECT_THAT(browser.tokens, ElementsAre(StartsWith("flatpak:"))) << browser.name;
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

TEST(LinuxBrowsers, TheCacheNamesOfEveryNativeBrowserAreKnown) {
    std::vector<std::string> names;
    for (const BusyNames& busy : browserCacheNames()) {
        names.insert(names.end(), busy.names.begin(), busy.names.end());
    }
    EXPECT_THAT(names, ElementsAre("mozilla", "google-chrome*", "chromium", "microsoft-edge*", "BraveSoftware",
                                   "vivaldi*", "opera*", "epiphany"));
}

TEST(LinuxBrowsers, ACacheNameIsInUseWhileItsNativeBrowserRuns) {
    EXPECT_THAT(browserCacheNames(),
                Contains(AllOf(Field(&BusyNames::names, ElementsAre("mozilla")),
                               Field(&BusyNames::owners, ElementsAre("firefox", "firefox-esr", "firefox-bin")))));
}

TEST(LinuxBrowsers, FirefoxReportsAreThoseThatWaitOrWereSent) {
    const auto patterns = crashReportsBelow("/home/u/.mozilla/firefox");
    ASSERT_EQ(patterns.size(), 1U);
    EXPECT_THAT(patterns[0].components, ElementsAre("pending|submitted", "*"));
    EXPECT_THAT(patterns[0].owners, Contains("firefox"));
}

TEST(LinuxBrowsers, ChromiumReportsAreThoseOfItsFourFolders) {
    const auto patterns = crashReportsBelow("/home/u/.var/app/com.google.Chrome/config/google-chrome");
    ASSERT_EQ(patterns.size(), 1U);
    EXPECT_THAT(patterns[0].components, ElementsAre("completed|pending|new|attachments", "*"));
    EXPECT_THAT(patterns[0].owners, ElementsAre("flatpak:com.google.Chrome"));
}

TEST(LinuxBrowsers, GnomeWebKeepsNoCrashReports) {
    EXPECT_THAT(crashReportsBelow("/home/u/.local/share/epiphany"), IsEmpty());
}

TEST(LinuxBrowsers, SnapDataMayBeHidden) {
    EXPECT_THAT(snapDataFolders(environment), ElementsAre("/home/u/snap", "/home/u/.snap/data"));
}

} // namespace
} // namespace vellmoor
