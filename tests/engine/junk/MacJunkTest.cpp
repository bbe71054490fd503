// System junk of a Mac. What its rows look like and when they are missing holds on both systems.
#include "EngineHome.h"
#include "junk/JunkRows.h"
#include "junk/SystemJunk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

using test::days;
using test::EngineHome;
using test::names;
using test::row;
using test::System;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
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

} // namespace
} // namespace vellmoor
