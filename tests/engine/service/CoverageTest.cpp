// A Smart Scan counts each path once.
#include "service/Coverage.h"

#include "EngineHome.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Coverage : public testing::Test {
protected:
    EngineHome home{System::Linux};
    std::vector<CleanupItem> rows;

    CleanupItem& add(CleanerModule module, const std::vector<std::pair<std::string, std::int64_t>>& targets) {
        CleanupItem row;
        row.module = module;
        row.title = "row " + std::to_string(rows.size());
        row.isCleanable = true;
        for (const auto& [path, bytes] : targets) {
            CleanupTarget target;
            target.url = home.place(path);
            target.bytes = bytes;
            target.files = 1;
            row.bytes += bytes;
            row.files += 1;
            row.targets.edit().push_back(target);
        }
        rows.push_back(row);
        return rows.back();
    }
    [[nodiscard]] std::vector<CleanupItem> listed() {
        markCovered(home.platform, rows);
        return countedOnce(rows);
    }
    static std::vector<std::string> titles(const std::vector<CleanupItem>& items) {
        std::vector<std::string> out;
        for (const CleanupItem& item : items) {
            out.push_back(item.title);
        }
        return out;
    }
};

TEST_F(Coverage, APathThatAnEarlierRowCountsIsLeftOut) {
    add(CleanerModule::systemJunk, {{"Downloads/a.iso", 300}});
    add(CleanerModule::largeFiles, {{"Downloads/a.iso", 300}});
    EXPECT_THAT(titles(listed()), ElementsAre("row 0"));
}

TEST_F(Coverage, APathBelowOneThatAnEarlierRowCountsIsLeftOut) {
    add(CleanerModule::systemJunk, {{".cache/chromium", 100}});
    add(CleanerModule::privacy, {{".cache/chromium/Default/Cache", 60}, {".config/chromium/Default/GPUCache", 5}});
    const auto items = listed();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[1].bytes, 5);
    EXPECT_EQ(items[1].files, 1);
    ASSERT_EQ(items[1].targets.size(), 1U);
    EXPECT_EQ(items[1].targets[0].url, home.place(".config/chromium/Default/GPUCache"));
}

TEST_F(Coverage, AFolderThatHoldsEarlierPathsCountsWithoutTheirs) {
    add(CleanerModule::systemJunk, {{".var/app/org.example.App/cache", 40}});
    add(CleanerModule::appUninstaller, {{".var/app/org.example.App", 100}});
    const auto items = listed();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[1].bytes, 60);
    EXPECT_EQ(items[1].targets[0].bytes, 60);
    EXPECT_EQ(items[1].targets[0].files, 0);
}

TEST_F(Coverage, WhatAFolderHeldForAnotherIsNotTakenOffTwice) {
    add(CleanerModule::systemJunk, {{"x/y/z", 10}});
    add(CleanerModule::privacy, {{"x/y", 30}});
    add(CleanerModule::appUninstaller, {{"x", 100}});
    const auto items = listed();
    ASSERT_EQ(items.size(), 3U);
    EXPECT_EQ(items[1].bytes, 20);
    EXPECT_EQ(items[2].bytes, 70);
}

TEST_F(Coverage, WhatTheFoldersFigureLeavesOutIsNotTakenOff) {
    add(CleanerModule::systemJunk, {{"snap/tool/common/.cache", 40}});
    add(CleanerModule::appUninstaller, {{"snap/tool", 100}});
    EXPECT_EQ(listed()[1].bytes, 100);
}

TEST_F(Coverage, TheBodyOfAnApplicationCoversTheEarlierRow) {
    add(CleanerModule::largeFiles, {{"Desktop/Tool.AppImage", 300}});
    CleanupItem& app = add(CleanerModule::appUninstaller, {{"Desktop/Tool.AppImage", 300}, {".config/tool", 5}});
    app.appInfo = AppCleanupInfo{.bundleIdentifier = {},
                                 .appPath = home.place("Desktop/Tool.AppImage"),
                                 .appBytes = 300,
                                 .residualBytes = 5,
                                 .residualCount = 1,
                                 .isRunning = false};
    const auto items = listed();
    ASSERT_THAT(titles(items), ElementsAre("row 1"));
    EXPECT_EQ(items[0].bytes, 305);
}

TEST_F(Coverage, TheLeftoversOfAnApplicationMayBeCovered) {
    add(CleanerModule::systemJunk, {{".cache/tool", 7}});
    CleanupItem& app = add(CleanerModule::appUninstaller, {{"Applications/Tool", 300}, {".cache/tool", 7}});
    app.appInfo = AppCleanupInfo{.bundleIdentifier = {},
                                 .appPath = home.place("Applications/Tool"),
                                 .appBytes = 300,
                                 .residualBytes = 7,
                                 .residualCount = 1,
                                 .isRunning = false};
    const auto items = listed();
    ASSERT_EQ(items.size(), 2U);
    EXPECT_EQ(items[1].appInfo->residualBytes, 0);
    EXPECT_EQ(items[1].appInfo->residualCount, 0);
    EXPECT_EQ(items[1].appInfo->appBytes, 300);
}

TEST_F(Coverage, RowsThatAreNotCleanableNeitherCoverNorLose) {
    add(CleanerModule::systemJunk, {{".cache/a", 10}}).isCleanable = false;
    add(CleanerModule::privacy, {{".cache/a", 10}});
    add(CleanerModule::performance, {{".cache/a", 10}}).isCleanable = false;
    EXPECT_THAT(titles(listed()), ElementsAre("row 0", "row 1", "row 2"));
}

TEST_F(Coverage, ARowKeepsWhatItsOwnScannerListsTwice) {
    add(CleanerModule::systemJunk, {{"logs", 10}, {"logs/a", 4}});
    EXPECT_EQ(listed()[0].bytes, 14);
}

TEST_F(Coverage, TwoSpellingsOfOnePlaceAreOne) {
    home.file("disk/caches/tool/a");
    home.link(home.place("disk/caches"), ".cache");
    add(CleanerModule::systemJunk, {{".cache/tool", 10}});
    add(CleanerModule::privacy, {{"disk/caches/tool", 10}});
    EXPECT_THAT(titles(listed()), ElementsAre("row 0"));
}

TEST_F(Coverage, ARowLosesItsTickWithItsLastTickedPath) {
    add(CleanerModule::systemJunk, {{"a", 1}});
    CleanupItem& row = add(CleanerModule::performance, {{"a", 1}, {"b", 1}});
    row.isSelected = true;
    row.targets.edit()[0].isSelected = true;
    EXPECT_FALSE(listed()[1].isSelected);
}

TEST_F(Coverage, TheMarksLeaveTheRowsThemselvesAsTheyWere) {
    add(CleanerModule::systemJunk, {{"a", 1}});
    add(CleanerModule::privacy, {{"a", 1}});
    markCovered(home.platform, rows);
    EXPECT_EQ(rows[1].bytes, 1);
    EXPECT_EQ(rows[1].targets.size(), 1U);
    EXPECT_TRUE(rows[1].targets[0].isCovered);
    EXPECT_THAT(countedOnce({}), IsEmpty());
}

} // namespace
} // namespace vellmoor::test
