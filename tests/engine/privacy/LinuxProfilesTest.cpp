// Which profiles are found, and of which files each family's categories consist.
#include "privacy/PrivacyFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

// Categories

/// A category, and everything that it may consist of, in order.
struct CategoryRow {
    std::string title;
    std::string description;
    CleanupRisk risk;
    std::vector<std::string> paths;
};

void PrintTo(const CategoryRow& row, std::ostream* out) {
    *out << row.title;
}

std::string testName(const testing::TestParamInfo<CategoryRow>& info) {
    std::string name = info.param.title;
    std::erase(name, ' ');
    return name;
}

/// The rows of a browser whose every file exists.
class CategoryTable : public testing::TestWithParam<CategoryRow> {
protected:
    CategoryTable(const std::vector<CategoryRow>& rows, const std::string& mark) {
        home_.file(mark);
        for (const CategoryRow& row : rows) {
            for (const std::string& path : row.paths) {
                home_.file(path + "/data");
            }
        }
    }
    [[nodiscard]] CleanupItem row() const { return rowOf(privacyRows(home_), GetParam().title); }

    void expectTheRowOfTheTable() const {
        const CleanupItem found = row();
        EXPECT_THAT(targetPaths(home_, found), ElementsAreArray(GetParam().paths));
        EXPECT_EQ(found.description, GetParam().description);
        EXPECT_EQ(found.risk, GetParam().risk);
    }

    EngineHome home_{System::Linux};
};

std::vector<CategoryRow> chromiumRows() {
    const std::string profile = ".config/google-chrome/Default";
    const std::string cache = ".cache/google-chrome/Default";
    std::vector<std::string> caches = below(cache, {"Cache", "Code Cache", "GPUCache"});
    for (const std::string& path : below(profile, {"GPUCache", "DawnGraphiteCache", "DawnWebGPUCache"})) {
        caches.push_back(path);
    }
    return {
        {"Chrome History", "Browsing history database, unchecked by default", CleanupRisk::high,
         below(profile, {"History", "History-journal"})},
        {"Chrome Downloads", "Download metadata and records, unchecked by default", CleanupRisk::cautious,
         below(profile, {"DownloadMetadata"})},
        {"Chrome Cookies", "Login sessions and site cookies (of all sites), unchecked by default", CleanupRisk::high,
         below(profile, {"Cookies", "Cookies-journal", "Network/Cookies", "Network/Cookies-journal"})},
        {"Chrome Cache", "Web cache and regenerable resources, unchecked by default", CleanupRisk::cautious, caches},
        {"Chrome Local Storage",
         "Site local storage, sessions and IndexedDB (sites and extensions share one database), unchecked by default",
         CleanupRisk::high,
         below(profile, {"Local Storage", "Session Storage", "IndexedDB/http_localhost_8080.indexeddb.blob",
                         "IndexedDB/https_example.org_0.indexeddb.leveldb"})},
    };
}

class ChromiumCategories : public CategoryTable {
protected:
    ChromiumCategories() : CategoryTable(chromiumRows(), ".config/google-chrome/Default/Preferences") {}
};

TEST_P(ChromiumCategories, TheRowIsThatOfTheTable) {
    expectTheRowOfTheTable();
}
INSTANTIATE_TEST_SUITE_P(Rows, ChromiumCategories, testing::ValuesIn(chromiumRows()), testName);

std::vector<CategoryRow> firefoxRows() {
    const std::string profile = ".mozilla/firefox/k3x9.default";
    const std::string cache = ".cache/mozilla/firefox/k3x9.default";
    return {
        {"Firefox History", "Firefox keeps history and bookmarks in one database. Clear the history inside the browser",
         CleanupRisk::previewOnly, below(profile, {"places.sqlite", "places.sqlite-wal", "places.sqlite-shm"})},
        {"Firefox Downloads", "Download list records, unchecked by default", CleanupRisk::cautious,
         below(profile, {"downloads.json"})},
        {"Firefox Cookies", "Login sessions and site cookies (of all sites), unchecked by default", CleanupRisk::high,
         below(profile, {"cookies.sqlite", "cookies.sqlite-wal", "cookies.sqlite-shm"})},
        {"Firefox Cache", "Web cache and regenerable resources, unchecked by default", CleanupRisk::cautious,
         below(cache, {"cache2", "startupCache", "thumbnails", "OfflineCache"})},
        {"Firefox Local Storage", "Site local databases and offline data, unchecked by default", CleanupRisk::high,
         below(profile, {"storage/default/http+++localhost", "storage/default/https+++example.org", "storage/temporary",
                         "storage/ls-archive.sqlite", "webappsstore.sqlite", "webappsstore.sqlite-wal",
                         "webappsstore.sqlite-shm"})},
    };
}

class FirefoxCategories : public CategoryTable {
protected:
    FirefoxCategories() : CategoryTable(firefoxRows(), ".mozilla/firefox/k3x9.default/prefs.js") {}
};

TEST_P(FirefoxCategories, TheRowIsThatOfTheTable) {
    expectTheRowOfTheTable();
}
INSTANTIATE_TEST_SUITE_P(Rows, FirefoxCategories, testing::ValuesIn(firefoxRows()), testName);

std::vector<CategoryRow> gnomeWebRows() {
    const std::string profile = ".local/share/epiphany";
    return {
        {"GNOME Web History", "Browsing history database, unchecked by default", CleanupRisk::high,
         below(profile, {"ephy-history.db", "ephy-history.db-wal", "ephy-history.db-shm"})},
        {"GNOME Web Cookies", "Login sessions and site cookies (of all sites), unchecked by default", CleanupRisk::high,
         below(profile, {"cookies.sqlite", "cookies.sqlite-wal", "cookies.sqlite-shm"})},
        {"GNOME Web Cache", "Web cache and regenerable resources, unchecked by default", CleanupRisk::cautious,
         below(".cache/epiphany", {"WebKitCache", "CacheStorage", "icondatabase"})},
        {"GNOME Web Local Storage", "Site local databases and offline data, unchecked by default", CleanupRisk::high,
         below(profile, {"databases", "localstorage", "storage", "serviceworkers"})},
    };
}

class GnomeWebCategories : public CategoryTable {
protected:
    GnomeWebCategories() : CategoryTable(gnomeWebRows(), ".local/share/epiphany/session_state.xml") {}
};

TEST_P(GnomeWebCategories, TheRowIsThatOfTheTable) {
    expectTheRowOfTheTable();
}
INSTANTIATE_TEST_SUITE_P(Rows, GnomeWebCategories, testing::ValuesIn(gnomeWebRows()), testName);

TEST(LinuxPrivacyRows, GnomeWebHasNoDownloads) {
    const EngineHome home(System::Linux);
    home.file(".local/share/epiphany/ephy-history.db");
    EXPECT_THAT(titles(privacyRows(home)), ElementsAre("GNOME Web History"));
}

TEST(LinuxPrivacyRows, FirefoxHistoryIsNeverCleanable) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".mozilla/firefox/a.default", {"prefs.js", "places.sqlite"}));
    EXPECT_FALSE(rowOf(privacyRows(home), "Firefox History").isCleanable);
}

TEST(LinuxPrivacyRows, ARunningFirefoxStillExplainsItsHistoryRow) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".var/app/org.mozilla.firefox/.mozilla/firefox/a.default", {"prefs.js", "places.sqlite"}));
    runProcess(home, 77, "/app/lib/firefox/firefox", "app-flatpak-org.mozilla.firefox-31.scope");
    EXPECT_EQ(rowOf(privacyRows(home), "Firefox (Flatpak) History").description,
              "Firefox (Flatpak) keeps history and bookmarks in one database. Clear the history inside the browser");
}

TEST(LinuxPrivacyRows, AChromiumOutsideTheConfigurationFolderKeepsCachesInTheProfile) {
    const EngineHome home(System::Linux);
    const std::string profile = "snap/chromium/common/chromium/Default";
    makeFiles(home,
              {profile + "/Preferences", profile + "/Cache/Cache_Data/f_000001", profile + "/Code Cache/js/index"});
    EXPECT_THAT(targetsOf(home, "Chromium (Snap) Cache"), ElementsAreArray(below(profile, {"Cache", "Code Cache"})));
}

TEST(LinuxPrivacyRows, AChromiumInTheConfigurationFolderDoesNot) {
    const EngineHome home(System::Linux);
    const std::string profile = ".config/chromium/Default";
    makeFiles(home, {profile + "/Preferences", profile + "/Cache/Cache_Data/f_000001"});
    EXPECT_THAT(targetsOf(home, "Chromium Cache"), IsEmpty());
}

// Profiles of the Chromium family

/// Chromium profiles of that name, each with a history.
void makeChromiumProfiles(const EngineHome& home, const std::vector<std::string>& names) {
    for (const std::string& name : names) {
        makeFiles(home, below(".config/chromium/" + name, {"Preferences", "History"}));
    }
}

TEST(ChromiumProfiles, AllAreMergedIntoOneRowInProfileOrder) {
    const EngineHome home(System::Linux);
    makeChromiumProfiles(home, {"Profile 10", "Profile 2", "Default", "Profile 1"});
    EXPECT_THAT(targetsOf(home, "Chromium History"),
                ElementsAreArray(below(".config/chromium", {"Default/History", "Profile 1/History", "Profile 2/History",
                                                            "Profile 10/History"})));
}

TEST(ChromiumProfiles, TheLocationShowsTheProfile) {
    const EngineHome home(System::Linux);
    makeChromiumProfiles(home, {"Profile 1"});
    EXPECT_EQ(privacyRows(home).front().targets.front().location, "~/.config/chromium/Profile 1");
}

TEST(ChromiumProfiles, SeveralUserDataFoldersOfOneBrowserAreMerged) {
    const EngineHome home(System::Linux);
    for (const std::string folder : {"google-chrome-unstable", "google-chrome", "google-chrome-beta"}) {
        makeFiles(home, below(".config/" + folder + "/Default", {"Preferences", "History"}));
    }
    EXPECT_THAT(targetsOf(home, "Chrome History"),
                ElementsAre(".config/google-chrome/Default/History", ".config/google-chrome-beta/Default/History",
                            ".config/google-chrome-unstable/Default/History"));
}

TEST(ChromiumProfiles, TheBrowsersOwnProfilesAreLeftOut) {
    const EngineHome home(System::Linux);
    makeChromiumProfiles(home, {"System Profile", "Guest Profile"});
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(ChromiumProfiles, AFolderWithoutPreferencesIsNoProfile) {
    const EngineHome home(System::Linux);
    home.file(".config/chromium/Crashpad/History");
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(ChromiumProfiles, AFolderNamedPreferencesMakesNoProfile) {
    const EngineHome home(System::Linux);
    home.folder(".config/chromium/Default/Preferences");
    home.file(".config/chromium/Default/History");
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(ChromiumProfiles, ALinkedProfileIsNotFollowed) {
    const EngineHome home(System::Linux);
    makeFiles(home, below("elsewhere/Default", {"Preferences", "History"}));
    home.folder(".config/chromium");
    home.link(home.home / "elsewhere/Default", ".config/chromium/Default");
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(ChromiumProfiles, OnlyOperaKeepsOneInTheUserDataFolderItself) {
    const EngineHome home(System::Linux);
    makeFiles(home, {".config/google-chrome/Preferences", ".config/google-chrome/History",
                     ".config/vivaldi/Preferences", ".config/vivaldi/History"});
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(ChromiumProfiles, DatabasesOfExtensionsAreLeftOut) {
    const EngineHome home(System::Linux);
    const std::string databases = ".config/chromium/Default/IndexedDB/";
    makeFiles(home, {".config/chromium/Default/Preferences",
                     databases + "chrome-extension_cjpalhdlnbpafiamejdnhcphjbkeiagm_0.indexeddb.leveldb/000003.log"});
    EXPECT_THAT(privacyRows(home), IsEmpty());
    home.file(databases + "https_example.org_0.indexeddb.leveldb/000003.log");
    EXPECT_THAT(targetsOf(home, "Chromium Local Storage"),
                ElementsAre(databases + "https_example.org_0.indexeddb.leveldb"));
}

TEST(ChromiumProfiles, OperaMayKeepItInTheUserDataFolderItself) {
    const EngineHome home(System::Linux);
    makeFiles(home, {".config/opera/Preferences", ".config/opera/History", ".cache/opera/Cache/Cache_Data/f_000001",
                     ".config/opera/Default/Preferences", ".config/opera/Default/History"});
    EXPECT_THAT(targetsOf(home, "Opera History"),
                ElementsAre(".config/opera/History", ".config/opera/Default/History"));
    EXPECT_THAT(targetsOf(home, "Opera Cache"), ElementsAre(".cache/opera/Cache"));
}

// Profiles of Firefox

const std::string firefox = ".mozilla/firefox/";

void makeFirefoxProfile(const EngineHome& home, const std::string& folder, bool started = true) {
    home.file(folder + "/cookies.sqlite");
    if (started) {
        home.file(folder + "/prefs.js");
    }
}

TEST(FirefoxProfiles, ProfilesIniNamesThemRelativeToItself) {
    const EngineHome home(System::Linux);
    home.text(firefox + "profiles.ini", "[Profile0]\nName=default\nIsRelative=1\nPath=Profiles/a.default\n");
    makeFirefoxProfile(home, firefox + "Profiles/a.default", false);
    EXPECT_THAT(targetsOf(home, "Firefox Cookies"), ElementsAre(firefox + "Profiles/a.default/cookies.sqlite"));
}

TEST(FirefoxProfiles, ProfilesIniNamesThemAbsolutely) {
    const EngineHome home(System::Linux);
    home.text(firefox + "profiles.ini",
              "[Profile0]\nIsRelative=0\nPath=" + (home.home / "work profile").string() + "\n");
    makeFirefoxProfile(home, "work profile", false);
    EXPECT_THAT(targetsOf(home, "Firefox Cookies"), ElementsAre("work profile/cookies.sqlite"));
}

TEST(FirefoxProfiles, AProfileOutsideTheRootKeepsItsCacheItself) {
    const EngineHome home(System::Linux);
    home.text(firefox + "profiles.ini", "[Profile0]\nIsRelative=0\nPath=" + (home.home / "work").string() + "\n");
    home.file("work/cache2/entries/A1");
    EXPECT_THAT(targetsOf(home, "Firefox Cache"), ElementsAre("work/cache2"));
}

TEST(FirefoxProfiles, AProfileInsideTheRootDoesNot) {
    const EngineHome home(System::Linux);
    makeFirefoxProfile(home, firefox + "a.default");
    home.file(firefox + "a.default/cache2/entries/A1");
    EXPECT_THAT(targetsOf(home, "Firefox Cache"), IsEmpty());
}

TEST(FirefoxProfiles, AFolderWithPrefsIsOneWithoutStandingInProfilesIni) {
    const EngineHome home(System::Linux);
    home.text(firefox + "profiles.ini", "[Profile0]\nIsRelative=1\nPath=z.default\n[General]\nVersion=2\n");
    makeFirefoxProfile(home, firefox + "z.default");
    makeFirefoxProfile(home, firefox + "a.new");
    EXPECT_THAT(targetsOf(home, "Firefox Cookies"),
                ElementsAreArray(below(".mozilla/firefox", {"z.default/cookies.sqlite", "a.new/cookies.sqlite"})));
}

TEST(FirefoxProfiles, TheyComeInTheOrderOfProfilesIni) {
    const EngineHome home(System::Linux);
    std::string ini;
    std::vector<std::string> expected;
    for (int index = 0; index < 12; ++index) {
        const std::string name = "p" + std::to_string(20 - index);
        ini += "[Profile" + std::to_string(index) + "]\nIsRelative=1\nPath=" + name + "\n";
        makeFirefoxProfile(home, firefox + name);
        expected.push_back(firefox + name + "/cookies.sqlite");
    }
    home.text(firefox + "profiles.ini", ini);
    EXPECT_THAT(targetsOf(home, "Firefox Cookies"), ElementsAreArray(expected));
}

TEST(FirefoxProfiles, OtherGroupsNameNone) {
    const EngineHome home(System::Linux);
    home.text(firefox + "profiles.ini", "[Install4F96D1932A9F858E]\nDefault=a.default\nPath=a.default\nIsRelative=1\n");
    makeFirefoxProfile(home, firefox + "a.default", false);
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(FirefoxProfiles, AGroupWithoutUsablePathNamesNone) {
    const EngineHome home(System::Linux);
    home.text(firefox + "profiles.ini", "[Profile0]\nIsRelative=1\n[Profile1]\nIsRelative=1\nPath=\n"
                                        "[Profile2]\nIsRelative=0\nPath=a.default\n[Profile3]\nIsRelative=0\nPath=/\n"
                                        "[Profile4]\nIsRelative=1\nPath=missing\n");
    makeFirefoxProfile(home, firefox + "a.default", false);
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(FirefoxProfiles, AFolderWithoutPrefsThatNobodyNamesIsNone) {
    const EngineHome home(System::Linux);
    makeFirefoxProfile(home, firefox + "Crash Reports", false);
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(FirefoxProfiles, BothRootsAreSearchedAndShareTheCacheFolder) {
    const EngineHome home(System::Linux);
    makeFirefoxProfile(home, ".config/mozilla/firefox/a.default");
    makeFirefoxProfile(home, ".mozilla/firefox/a.default");
    home.file(".cache/mozilla/firefox/a.default/cache2/entries/A1");
    EXPECT_THAT(targetsOf(home, "Firefox Cookies"), ElementsAre(".config/mozilla/firefox/a.default/cookies.sqlite",
                                                                ".mozilla/firefox/a.default/cookies.sqlite"));
    EXPECT_THAT(targetsOf(home, "Firefox Cache"), ElementsAre(".cache/mozilla/firefox/a.default/cache2"));
}

} // namespace
} // namespace vellmoor::test
