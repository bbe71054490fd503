// What the user keeps, as every module of a scan shows it.
#include "EngineHome.h"
#include "ScopedUnprivileged.h"
#include "applications/AppsFixture.h"
#include "keep/KeptPaths.h"
#include "scan/Offers.h"
#include "service/SystemCleanerService.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

constexpr std::int64_t kilobyte = 4096;
constexpr std::int64_t large = 262'144'000;

class KeptInScans : public ::testing::Test {
protected:
    void keepPath(const Path& path) { ASSERT_TRUE(keep(home.platform, home.layout, home.place(path))); }

    ScanSnapshot scanned(CleanerModule module) {
        SystemCleanerService service(home.platform, home.layout);
        return service.scan(module, [](const ScanProgressUpdate&) {}, CancelToken());
    }
    CleanupItem row(CleanerModule module, const std::string& key) {
        const ScanSnapshot snapshot = scanned(module);
        const auto found = std::ranges::find(snapshot.cleanupItems, key, &CleanupItem::key);
        return found == snapshot.cleanupItems.end() ? CleanupItem() : *found;
    }
    CleanupItem caches() { return row(CleanerModule::systemJunk, "systemJunk/userCaches"); }
    std::vector<std::string> paths(const CleanupItem& item) {
        std::vector<std::string> all;
        for (const CleanupTarget& target : item.targets) {
            all.push_back(target.url.path().lexically_relative(home.home).string());
        }
        return all;
    }

    EngineHome home{System::Linux};
};

TEST_F(KeptInScans, AKeptPathIsNeitherListedNorMeasured) {
    home.file(".cache/kept/data", 100 * kilobyte);
    home.file(".cache/other/data", kilobyte);
    keepPath(".cache/kept");
    EXPECT_THAT(paths(caches()), ElementsAre(".cache/other"));
    EXPECT_EQ(caches().bytes, kilobyte);
}

TEST_F(KeptInScans, AFolderThatIsBelowAKeptPathIsNeitherListedNorMeasured) {
    home.file(".var/app/org.one/cache/data");
    home.file(".var/app/org.two/cache/data", kilobyte);
    keepPath(".var/app/org.one");
    EXPECT_THAT(paths(caches()), ElementsAre(".var/app/org.two/cache"));
    EXPECT_EQ(caches().bytes, kilobyte);
}

TEST_F(KeptInScans, AFolderThatHoldsAKeptPathIsSplitAlongThatPathOnly) {
    home.file(".cache/app/kept/data", 100 * kilobyte);
    home.file(".cache/app/deep/kept/data", 100 * kilobyte);
    home.file(".cache/app/deep/goes", kilobyte);
    home.file(".cache/app/.hidden", kilobyte);
    home.file(".cache/app/untouched/a/b", kilobyte);
    keepPath(".cache/app/kept");
    keepPath(".cache/app/deep/kept");
    const CleanupItem item = caches();
    EXPECT_THAT(paths(item),
                UnorderedElementsAre(".cache/app/deep/goes", ".cache/app/.hidden", ".cache/app/untouched"));
    EXPECT_EQ(item.bytes, 3 * kilobyte);
    EXPECT_TRUE(std::ranges::all_of(item.targets, &CleanupTarget::isSelected));
    EXPECT_TRUE(
        std::ranges::all_of(item.targets, [](const CleanupTarget& target) { return target.identity.has_value(); }));
}

TEST_F(KeptInScans, APathThatIsKeptByAnotherNameIsKept) {
    home.file("disk/caches/app/kept/data");
    home.file("disk/caches/app/goes");
    home.link(home.place("disk/caches"), ".cache");
    keepPath("disk/caches/app/kept");
    EXPECT_THAT(paths(caches()), ElementsAre(".cache/app/goes"));
}

TEST_F(KeptInScans, AModuleCacheThatHoldsAKeptPathStaysWholeAndSaysWhy) {
    home.file("go/pkg/mod/kept@v1/file", kilobyte);
    home.file("go/pkg/mod/other@v1/file", kilobyte);
    home.file(".cache/go-build/file", kilobyte);
    keepPath("go/pkg/mod/kept@v1");
    CleanupItem item = row(CleanerModule::systemJunk, "systemJunk/developerCaches");
    ASSERT_THAT(paths(item), UnorderedElementsAre("go/pkg/mod", ".cache/go-build"));
    const CleanupTarget& modules =
        *std::ranges::find(item.targets, SharedPath(home.place("go/pkg/mod")), &CleanupTarget::url);
    EXPECT_EQ(modules.heldBack, "holds something that you keep, and can only go as a whole");
    EXPECT_EQ(modules.bytes, kilobyte) << "what is kept is not measured";
    EXPECT_EQ(item.cleanableBytes(), kilobyte);
    item.selectAll(true);
    EXPECT_EQ(item.selectedBytes(), kilobyte);
    EXPECT_FALSE(
        std::ranges::find(item.targets, SharedPath(home.place("go/pkg/mod")), &CleanupTarget::url)->isSelected);
}

TEST_F(KeptInScans, ARowOfWhichNothingMayGoIsShownOnly) {
    home.file("go/pkg/mod/kept@v1/file", kilobyte);
    home.file("go/pkg/mod/other@v1/file", kilobyte);
    keepPath("go/pkg/mod/kept@v1");
    const CleanupItem item = row(CleanerModule::systemJunk, "systemJunk/developerCaches");
    EXPECT_FALSE(item.isCleanable);
    EXPECT_EQ(item.risk, CleanupRisk::previewOnly);
    EXPECT_EQ(item.cleanableBytes(), 0);
    EXPECT_THAT(item.description, Not(HasSubstr("no items")));
}

TEST_F(KeptInScans, AFolderAroundAWholeOneIsSplitDownToIt) {
    home.file(".cache/pre-commit/repo/kept", kilobyte);
    home.file(".cache/pre-commit/db.db", kilobyte);
    EngineContext context = home.context();
    keepPath(".cache/pre-commit/repo/kept");
    const std::vector<Offer> offers = offersOf(context, home.place(".cache"), Splitting::Along);
    ASSERT_THAT(offers, Contains(::testing::Field(&Offer::path, home.place(".cache/pre-commit"))));
    EXPECT_THAT(offers.front().heldBack, Not(IsEmpty()));
}

TEST_F(KeptInScans, AClosedFolderThatHoldsAKeptPathStays) {
    home.file(".cache/app/kept");
    keepPath(".cache/app/kept");
    const ScopedUnprivileged asAnybody;
    home.setMode(".cache/app", 0300);
    const CleanupItem item = caches();
    home.setMode(".cache/app", 0700);
    ASSERT_THAT(item.targets, SizeIs(1));
    EXPECT_FALSE(item.targets.front().mayGo());
}

TEST_F(KeptInScans, AKeptLargeFileIsNotListed) {
    home.file("Videos/kept.iso", large);
    home.file("Videos/other.iso", large);
    keepPath("Videos/kept.iso");
    const ScanSnapshot snapshot = scanned(CleanerModule::largeFiles);
    ASSERT_THAT(snapshot.cleanupItems, SizeIs(1));
    EXPECT_EQ(snapshot.cleanupItems.front().key, home.place("Videos/other.iso"));
    EXPECT_THAT(snapshot.fileCandidates, SizeIs(1));
}

TEST_F(KeptInScans, ALargeFileInAKeptFolderIsNotListed) {
    home.file("Videos/holiday/kept.iso", large);
    keepPath("Videos/holiday");
    EXPECT_THAT(scanned(CleanerModule::largeFiles).cleanupItems, IsEmpty());
}

TEST_F(KeptInScans, ATraceOfABrowserIsNeverSplit) {
    home.file(".config/chromium/Default/Preferences");
    home.file(".config/chromium/Default/Local Storage/leveldb/kept");
    home.file(".config/chromium/Default/Session Storage/log", kilobyte);
    keepPath(".config/chromium/Default/Local Storage/leveldb/kept");
    const CleanupItem item = row(CleanerModule::privacy, "privacy/chromium/localStorage");
    ASSERT_THAT(item.targets, SizeIs(2));
    EXPECT_FALSE(item.targets.front().mayGo());
    EXPECT_TRUE(item.targets.back().mayGo());
}

TEST_F(KeptInScans, ACategoryWhoseOnlyTraceIsKeptIsNotListed) {
    home.file(".config/chromium/Default/Preferences");
    home.file(".config/chromium/Default/Cookies");
    keepPath(".config/chromium/Default/Cookies");
    EXPECT_EQ(row(CleanerModule::privacy, "privacy/chromium/cookies").key, "");
}

TEST_F(KeptInScans, TheRowOfCookiesSaysThatAllGo) {
    home.file(".config/chromium/Default/Preferences");
    home.file(".config/chromium/Default/Cookies");
    EXPECT_THAT(row(CleanerModule::privacy, "privacy/chromium/cookies").description, HasSubstr("(of all sites)"));
}

TEST_F(KeptInScans, AnItemOfTheTrashIsNeverSplit) {
    home.file(".local/share/Trash/files/item/kept");
    home.file(".local/share/Trash/files/item/other");
    home.file(".local/share/Trash/files/loose");
    keepPath(".local/share/Trash/files/item/kept");
    const CleanupItem item = row(CleanerModule::trash, "trash/home");
    ASSERT_THAT(item.targets, SizeIs(2));
    for (const CleanupTarget& target : item.targets) {
        EXPECT_EQ(target.mayGo(), target.name == "loose");
        EXPECT_EQ(target.isSelected, target.name == "loose");
    }
}

TEST_F(KeptInScans, AKeptApplicationIsNotListed) {
    flatpak(home, "org.example.Editor", "Editor");
    flatpakProgram(home);
    ASSERT_THAT(titles(home), ElementsAre("Editor"));
    keepPath(".local/share/flatpak/app/org.example.Editor");
    EXPECT_THAT(titles(home), IsEmpty());
}

TEST_F(KeptInScans, AnApplicationThatHoldsAKeptPathIsShownOnly) {
    const Path body = flatpak(home, "org.example.Editor", "Editor");
    flatpakProgram(home);
    home.file(body / "notes");
    keepPath(body / "notes");
    const CleanupItem item = application(home, "Editor");
    EXPECT_FALSE(item.isCleanable);
    EXPECT_FALSE(item.targets.front().mayGo());
    EXPECT_THAT(item.description, HasSubstr("holds something that you keep"));
}

TEST_F(KeptInScans, ALeftoverIsSplitAlongWhatIsKeptInIt) {
    flatpak(home, "org.example.Editor", "Editor");
    flatpakProgram(home);
    home.file(".var/app/org.example.Editor/data/kept", kilobyte);
    home.file(".var/app/org.example.Editor/config/settings", kilobyte);
    keepPath(".var/app/org.example.Editor/data/kept");
    EXPECT_THAT(leftovers(home, "Editor"), ElementsAre(".var/app/org.example.Editor/config"));
    EXPECT_EQ(application(home, "Editor").appInfo->residualCount, 1);
}

TEST_F(KeptInScans, WhatIsOfferedAgainIsListedAgain) {
    home.file(".cache/one/data");
    keepPath(".cache/one");
    ASSERT_THAT(caches().targets, IsEmpty());
    ASSERT_EQ(offerAgain(home.platform, home.layout, home.place(".cache/one")), true);
    EXPECT_THAT(paths(caches()), ElementsAre(".cache/one"));
}

} // namespace
} // namespace vellmoor::test
