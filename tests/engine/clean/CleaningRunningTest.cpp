// Applications that started between the scan and the clean, or while it runs.
#include "clean/CleaningFixture.h"
#include "junk/SystemJunk.h"
#include "privacy/Privacy.h"
#include "privacy/PrivacyFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;

std::vector<CleanupItem> ticked(std::vector<CleanupItem> rows) {
    for (CleanupItem& row : rows) {
        row.isSelected = row.isCleanable;
        for (CleanupTarget& target : row.targets.edit()) {
            target.isSelected = row.isCleanable;
        }
    }
    return rows;
}

class CleaningWhileBrowsersRun : public ::testing::Test {
protected:
    CleaningWhileBrowsersRun() {
        makeFiles(home,
                  {".config/chromium/Default/Preferences", ".config/chromium/Default/Cookies",
                   ".config/chromium/Default/History", ".cache/chromium/Default/Cache/data", ".cache/other/data"});
    }
    void startBrowser() const { runProcess(home, 4242, "/usr/lib/chromium/chromium"); }

    EngineHome home{System::Linux};
};

TEST_F(CleaningWhileBrowsersRun, NothingOfABrowserThatStartedSinceTheScanMoves) {
    EngineContext context = home.context();
    const std::vector<CleanupItem> rows = ticked(privacyItems(context));
    startBrowser();
    const CleanupReport report = clean(home, rows);
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_GE(report.keptCount, 3);
    EXPECT_EQ(report.keptCount, report.attemptedCount);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_THAT(report.notes, Contains("Cookies: Chromium is running and was kept"));
    EXPECT_TRUE(home.has(".config/chromium/Default/Cookies"));
}

TEST_F(CleaningWhileBrowsersRun, ABrowserThatStartsDuringTheCleanKeepsTheRowsThatFollow) {
    EngineContext context = home.context();
    const std::vector<CleanupItem> rows = ticked(privacyItems(context));
    ASSERT_GE(rows.size(), 3U);
    home.platform.beforeChange = [&](Operation, const Path&) {
        if (!home.has("/proc/4242/comm")) {
            startBrowser();
        }
    };
    const CleanupReport report = clean(home, rows);
    EXPECT_GE(report.removedCount, 1); // of the first row, which had begun
    EXPECT_GE(report.keptCount, 1);
    EXPECT_EQ(report.outcomes.back().fate, CleanupFate::Kept);
}

TEST_F(CleaningWhileBrowsersRun, ItsCacheStaysAmongThoseOfOthersThatGo) {
    EngineContext context = home.context();
    const std::vector<CleanupItem> rows = ticked(systemJunkItems(context));
    startBrowser();
    const CleanupReport report = clean(home, rows);
    EXPECT_TRUE(home.has(".cache/chromium/Default/Cache/data"));
    EXPECT_FALSE(home.has(".cache/other"));
    EXPECT_THAT(report.notes, ElementsAre("chromium: Chromium is running and was kept"));
}

TEST(CleaningWhileAnApplicationRuns, ItAndItsLeftoversStay) {
    EngineHome home(System::Mac);
    const Path body = home.folder("/Applications/Tool.app");
    const Path leftover = home.file("Library/Preferences/org.example.tool.plist");
    CleanupItem row = shownRow(home, {body, leftover}, CleanerModule::appUninstaller);
    row.title = "Tool";
    row.appInfo = AppCleanupInfo{.bundleIdentifier = "org.example.tool", .appPath = body.string()};
    home.platform.running = {{.pid = 1, .name = "Tool", .bundleIdentifier = {}, .bundlePath = body}};
    const CleanupReport report = clean(home, std::vector{row});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_EQ(report.keptCount, 2);
    EXPECT_THAT(report.notes, Each(EndsWith(": Tool is running and was kept")));
}

} // namespace
} // namespace vellmoor::test
