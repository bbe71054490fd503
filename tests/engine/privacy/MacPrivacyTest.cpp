#include "privacy/PrivacyFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

const std::string chrome = "Library/Application Support/Google/Chrome/Default";
const std::string chromeCache = "Library/Caches/Google/Chrome/Default";
const std::string edge = "Library/Application Support/Microsoft Edge/Default";
const std::string edgeCache = "Library/Caches/Microsoft Edge/Default";
const std::string safariContainer = "Library/Containers/com.apple.Safari/Data/Library";

/// A row of the table; everything named in `paths` is there.
struct TableRow {
    std::string title;
    std::string description;
    CleanupRisk risk;
    Tint tint;
    std::string symbol;
    std::vector<std::string> paths;
};

void PrintTo(const TableRow& row, std::ostream* out) {
    *out << row.title;
}

std::vector<TableRow> safariRows() {
    const auto row = [](const char* title, const char* description, CleanupRisk risk, std::vector<std::string> paths) {
        return TableRow{title, description, risk, Tint::pink, "safari", std::move(paths)};
    };
    return {
        row("Safari History", "History database and temporary logs", CleanupRisk::high,
            {"Library/Safari/History.db", "Library/Safari/History.db-shm", "Library/Safari/History.db-wal"}),
        row("Safari Downloads", "Download list records", CleanupRisk::cautious, {"Library/Safari/Downloads.plist"}),
        row("Safari Cookies", "Login sessions and site cookies", CleanupRisk::high,
            {"Library/Cookies/Cookies.binarycookies", safariContainer + "/Cookies/Cookies.binarycookies"}),
        row("Safari Cache", "Web cache and regenerable resources", CleanupRisk::cautious,
            {safariContainer + "/Caches"}),
        row("Safari Local Storage", "Site local databases and offline data", CleanupRisk::high,
            {"Library/Safari/LocalStorage", "Library/WebKit/com.apple.Safari"}),
    };
}

std::vector<TableRow> chromiumRows(const std::string& name, const std::string& symbol, Tint tint,
                                   const std::string& profile, const std::string& cache) {
    const auto row = [&](const char* title, const char* description, CleanupRisk risk, std::vector<std::string> paths) {
        return TableRow{name + " " + title, description, risk, tint, symbol, std::move(paths)};
    };
    return {
        row("History", "Browsing history database", CleanupRisk::high, below(profile, {"History", "History-journal"})),
        row("Downloads", "Download metadata and records", CleanupRisk::cautious, {profile + "/DownloadMetadata"}),
        row("Cookies", "Login sessions and site cookies", CleanupRisk::high,
            below(profile, {"Network/Cookies", "Network/Cookies-journal"})),
        row("Cache", "Web cache and regenerable resources", CleanupRisk::cautious,
            below(cache, {"Cache", "Cache/Cache_Data", "Code Cache", "GPUCache"})),
        row("Local Storage", "Site local storage, sessions and IndexedDB", CleanupRisk::high,
            below(profile, {"Local Storage", "Session Storage", "IndexedDB"})),
    };
}

std::vector<TableRow> allRows() {
    std::vector<TableRow> rows = safariRows();
    for (const auto& browser : {chromiumRows("Chrome", "circle.hexagongrid", Tint::orange, chrome, chromeCache),
                                chromiumRows("Edge", "globe", Tint::indigo, edge, edgeCache)}) {
        rows.insert(rows.end(), browser.begin(), browser.end());
    }
    return rows;
}

/// A file in everything that the table names, so that each is a folder or a file as the parents demand.
void makeEverything(const EngineHome& home) {
    for (const TableRow& row : allRows()) {
        for (const std::string& path : row.paths) {
            home.file(path + "/data");
        }
    }
}

class MacPrivacyTable : public testing::TestWithParam<TableRow> {
protected:
    MacPrivacyTable() { makeEverything(home_); }

    EngineHome home_{System::Mac};
};

TEST_P(MacPrivacyTable, TheRowIsThatOfTheTable) {
    const auto row = rowOf(privacyRows(home_), GetParam().title);
    EXPECT_THAT(targetPaths(home_, row), ElementsAreArray(GetParam().paths));
    EXPECT_EQ(row.description, GetParam().description + ", unchecked by default");
    EXPECT_EQ(row.risk, GetParam().risk);
    EXPECT_EQ(row.symbol, GetParam().symbol);
    EXPECT_EQ(row.tint, GetParam().tint);
    EXPECT_EQ(row.module, CleanerModule::privacy);
}

TEST_P(MacPrivacyTable, TheRowIsCleanableButNeverPreselected) {
    const auto row = rowOf(privacyRows(home_), GetParam().title);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    EXPECT_THAT(row.selectedTargets(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Rows, MacPrivacyTable, testing::ValuesIn(allRows()), [](const auto& test) {
    std::string name = test.param.title;
    std::erase(name, ' ');
    return name;
});

TEST(MacPrivacy, BrowsersAndCategoriesComeInTableOrder) {
    const EngineHome home(System::Mac);
    makeEverything(home);
    std::vector<std::string> expected;
    for (const TableRow& row : allRows()) {
        expected.push_back(row.title);
    }
    EXPECT_THAT(titles(privacyRows(home)), ElementsAreArray(expected));
}

TEST(MacPrivacy, AHistoryRowOfChromeCoversTheDatabaseAndItsJournal) {
    const EngineHome home(System::Mac);
    makeFiles(home, below(chrome, {"History", "History-journal"}));
    EXPECT_THAT(targetsOf(home, "Chrome History"), ElementsAre(chrome + "/History", chrome + "/History-journal"));
}

TEST(MacPrivacy, OnlyExistingPathsAreTargets) {
    const EngineHome home(System::Mac);
    home.file("Library/Safari/History.db-wal");
    EXPECT_THAT(targetsOf(home, "Safari History"), ElementsAre("Library/Safari/History.db-wal"));
}

TEST(MacPrivacy, ADanglingLinkDoesNotExist) {
    const EngineHome home(System::Mac);
    home.link("nowhere", chrome + "/History");
    EXPECT_THAT(targetsOf(home, "Chrome History"), IsEmpty());
}

TEST(MacPrivacy, AProfileOtherThanTheDefaultOneIsNotCovered) {
    const EngineHome home(System::Mac);
    home.file("Library/Application Support/Google/Chrome/Profile 1/History");
    EXPECT_THAT(targetsOf(home, "Chrome History"), IsEmpty());
}

TEST(MacPrivacy, ACategoryOfWhichNothingExistsIsListedAsEmpty) {
    const EngineHome home(System::Mac);
    const auto rows = privacyRows(home);
    EXPECT_THAT(rows, SizeIs(15));
    EXPECT_EQ(rowOf(rows, "Edge Cookies").description,
              "Login sessions and site cookies, unchecked by default; no items found");
    EXPECT_EQ(rowOf(rows, "Edge Cookies").bytes, 0);
    EXPECT_FALSE(rowOf(rows, "Edge Cookies").isCleanable);
}

TEST(MacPrivacy, TheCacheCountsAFolderAndItsDataTwice) {
    const EngineHome home(System::Mac);
    home.file(chromeCache + "/Cache/Cache_Data/f_000001", 8192);
    const auto row = rowOf(privacyRows(home), "Chrome Cache");
    EXPECT_EQ(row.bytes, 16384);
    EXPECT_EQ(row.files, 2);
}

TEST(MacPrivacy, WhileSafariRunsEveryRowOfItSaysSoAndNoneIsCleanable) {
    EngineHome home(System::Mac);
    makeEverything(home);
    listProcesses(home, "/sbin/launchd\n/Applications/Safari.app/Contents/MacOS/Safari\n");
    const auto rows = privacyRows(home);
    for (const std::string category : {"History", "Downloads", "Cookies", "Cache", "Local Storage"}) {
        const auto row = rowOf(rows, "Safari " + category);
        EXPECT_EQ(row.description, "Safari is running. Quit the browser to clean " + category);
        EXPECT_FALSE(row.isCleanable);
        EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
    }
}

TEST(MacPrivacy, ARunningSafariLeavesTheOtherBrowsersCleanable) {
    EngineHome home(System::Mac);
    makeEverything(home);
    listProcesses(home, "/Applications/Safari.app/Contents/MacOS/Safari\n");
    EXPECT_TRUE(rowOf(privacyRows(home), "Chrome History").isCleanable);
    EXPECT_TRUE(rowOf(privacyRows(home), "Edge History").isCleanable);
}

TEST(MacPrivacy, ChromeRunsUnderItsExecutableName) {
    EngineHome home(System::Mac);
    makeEverything(home);
    listProcesses(home, "/Applications/Google Chrome.app/Contents/MacOS/Google Chrome\n");
    EXPECT_EQ(rowOf(privacyRows(home), "Chrome Cookies").description,
              "Chrome is running. Quit the browser to clean Cookies");
    EXPECT_TRUE(rowOf(privacyRows(home), "Edge Cookies").isCleanable);
}

TEST(MacPrivacy, EdgeRunsUnderItsExecutableName) {
    EngineHome home(System::Mac);
    makeEverything(home);
    listProcesses(home, "/Applications/Microsoft Edge.app/Contents/MacOS/Microsoft Edge\n");
    EXPECT_EQ(rowOf(privacyRows(home), "Edge Cookies").description,
              "Edge is running. Quit the browser to clean Cookies");
    EXPECT_TRUE(rowOf(privacyRows(home), "Chrome Cookies").isCleanable);
}

TEST(MacPrivacy, AProcessWhoseNameOnlyBeginsLikeTheBrowserIsNotIt) {
    EngineHome home(System::Mac);
    makeEverything(home);
    listProcesses(home, "/usr/libexec/SafariBookmarksSyncAgent\n/usr/libexec/Safari Helper\n");
    EXPECT_TRUE(rowOf(privacyRows(home), "Safari History").isCleanable);
}

TEST(MacPrivacy, TitlesAndDescriptionsFollowTheLanguage) {
    const EngineHome home(System::Mac);
    home.file("Library/Safari/History.db");
    L::setLanguage(AppLanguage::chinese);
    const auto row = privacyRows(home).front();
    L::setLanguage(AppLanguage::english);
    EXPECT_EQ(row.title, "Safari 历史记录");
    EXPECT_EQ(row.description, "历史数据库和临时日志，默认不勾选");
}

TEST(MacPrivacy, ACancelledScanEndsBetweenRows) {
    EngineHome home(System::Mac);
    home.token.cancel();
    EngineContext context = home.context();
    EXPECT_THROW(static_cast<void>(privacyItems(context)), ScanCancelled);
}

} // namespace
} // namespace vellmoor::test
