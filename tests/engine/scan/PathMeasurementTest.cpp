#include "scan/PathMeasurement.h"

#include "Descriptors.h"
#include "EngineHome.h"
#include "Host.h"
#include "ScopedUnprivileged.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "scan/DeepScanFilter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define VELLMOOR_COUNTS_ALLOCATIONS
#include <sanitizer/allocator_interface.h>
#endif
#endif

namespace vellmoor {
namespace {

using test::days;
using test::EngineHome;
using test::System;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// Whether a walk of everything leaves `path` out: for itself, or for a folder above it.
bool isSkipped(const EngineHome& home, const Path& path) {
    const DeepScanFilter filter(home.platform, home.layout, "/");
    for (Path place = path; place.has_relative_path(); place = place.parent_path()) {
        if (filter.excludesName(place.filename().native(), 2) || filter.excludesFolder(place)) {
            return true;
        }
    }
    return false;
}

/// Most rules are the same on both systems.
class PathMeasurementOnBoth : public ::testing::TestWithParam<System> {
protected:
    EngineHome home{GetParam()};
    EngineContext context = home.context();
};

INSTANTIATE_TEST_SUITE_P(, PathMeasurementOnBoth, ::testing::ValuesIn(test::hostedSystems()),
                         [](const auto& run) { return run.param == System::Mac ? "Mac" : "Linux"; });

TEST_P(PathMeasurementOnBoth, AFileMeasuresItsAllocatedBytesAndCountsOne) {
    const Path file = home.file("a.bin", 10'000);
    struct stat facts{};
    ASSERT_EQ(::stat(file.c_str(), &facts), 0);
    EXPECT_EQ(stats(context, file), (PathStats{.bytes = facts.st_blocks * 512, .files = 1}));
}

TEST_P(PathMeasurementOnBoth, ASparseFileMeasuresWhatItHoldsNotItsLength) {
    const Path file = home.file("sparse.bin", 0);
    ASSERT_EQ(::truncate(file.c_str(), 1L << 30), 0);
    EXPECT_LT(stats(context, file).bytes, 1 << 20);
    EXPECT_EQ(stats(context, file).files, 1);
}

TEST_P(PathMeasurementOnBoth, AFigureThatMayBeMoreSaysSoAndIsMeasuredAgain) {
    const Path tree = home.folder("tree");
    home.file("tree/a/b/file", 4096);
    EngineContext earlier = home.context();
    ASSERT_FALSE(stats(earlier, tree).isAtLeast); // opens what stays open
    {
        const test::AlmostNoDescriptors few(2);
        EXPECT_TRUE(stats(context, tree).isAtLeast);
    }
    EXPECT_EQ(stats(context, tree), (PathStats{.bytes = 4096, .files = 1}));
}

TEST_P(PathMeasurementOnBoth, ARowOfSuchAFigureSaysAtLeast) {
    const Path tree = home.folder("tree");
    home.file("tree/file", 4096);
    home.file("tree/a/b/file", 4096);
    CategorySpec spec;
    spec.title = "Trees";
    spec.roots = {tree};
    EngineContext earlier = home.context();
    ASSERT_EQ(categoryItem(earlier, spec).sizeText(), "8 KB");
    const test::AlmostNoDescriptors few(2);
    const CleanupItem item = categoryItem(context, spec);
    EXPECT_EQ(item.sizeText(), "at least 4 KB");
    EXPECT_EQ(item.targets.front().sizeText(), "at least 4 KB");
}

TEST_P(PathMeasurementOnBoth, SomethingMissingMeasuresZero) {
    EXPECT_EQ(stats(context, home.place("nothing")), PathStats{});
}

TEST_P(PathMeasurementOnBoth, ASymbolicLinkMeasuresZero) {
    const Path folder = home.folder("real");
    home.file("real/a", 8192);
    EXPECT_EQ(stats(context, home.link(folder, "link")), PathStats{});
    EXPECT_EQ(stats(context, home.link("nowhere", "dangling")), PathStats{});
}

TEST_P(PathMeasurementOnBoth, AFifoMeasuresZeroAndIsNotOpened) {
    EXPECT_EQ(stats(context, home.fifo("pipe")), PathStats{});
}

TEST_P(PathMeasurementOnBoth, AFolderAddsUpEverythingBelowIt) {
    home.file("tree/a", 4096);
    home.file("tree/one/b", 8192);
    home.file("tree/one/two/c", 4096);
    EXPECT_EQ(stats(context, home.place("tree")), (PathStats{.bytes = 16384, .files = 3}));
}

TEST_P(PathMeasurementOnBoth, AFolderHoldingOnlyHiddenFilesMeasuresZero) {
    home.file("tree/.a", 4096);
    home.file("tree/.hidden/b", 4096);
    EXPECT_EQ(stats(context, home.place("tree")), PathStats{});
}

TEST_P(PathMeasurementOnBoth, AHiddenRootIsMeasured) {
    home.file(".npm/_cacache/a", 4096);
    EXPECT_EQ(stats(context, home.place(".npm/_cacache")).files, 1);
}

TEST_P(PathMeasurementOnBoth, NodeModulesAndGitBelowTheRootAreLeftOut) {
    home.file("tree/a", 4096);
    home.file("tree/node_modules/b", 4096);
    home.file("tree/deep/.git/c", 4096);
    home.file("tree/deep/git/d", 4096);
    EXPECT_EQ(stats(context, home.place("tree")), (PathStats{.bytes = 8192, .files = 2}));
}

TEST_P(PathMeasurementOnBoth, AHardLinkCountsEachTimeItIsMet) {
    const Path file = home.file("tree/a", 4096);
    ASSERT_EQ(::link(file.c_str(), (home.place("tree") / "b").c_str()), 0);
    EXPECT_EQ(stats(context, home.place("tree")), (PathStats{.bytes = 8192, .files = 2}));
}

TEST_P(PathMeasurementOnBoth, AnUnreadableSubfolderIsPassedOver) {
    home.file("tree/a", 4096);
    home.file("tree/closed/b", 4096);
    home.setMode("tree/closed", 0);
    {
        const test::ScopedUnprivileged asAnybody;
        EXPECT_EQ(stats(context, home.place("tree")), (PathStats{.bytes = 4096, .files = 1}));
    }
    home.setMode("tree/closed", 0755);
}

TEST_P(PathMeasurementOnBoth, ACancelledMeasurementAnswersAPartAndIsNotRemembered) {
    for (int i = 0; i < 1000; ++i) {
        home.file("tree/" + std::to_string(i), 4096);
    }
    home.token.cancel();
    EngineContext cancelled = home.context();
    EXPECT_LT(stats(cancelled, home.place("tree")).files, 1000);
    EXPECT_THAT(cancelled.remembered<Measurements>().byPath, IsEmpty());
}

TEST_P(PathMeasurementOnBoth, AFolderIsMeasuredOncePerScan) {
    home.file("tree/a", 4096);
    EXPECT_EQ(stats(context, home.place("tree")).files, 1);
    home.file("tree/b", 4096);
    EXPECT_EQ(stats(context, home.place("tree")).files, 1);
    EngineContext next = home.context();
    EXPECT_EQ(stats(next, home.place("tree")).files, 2);
}

TEST_P(PathMeasurementOnBoth, DisplayPathOfTheHomeFolderIsATilde) {
    EXPECT_EQ(displayPath(home.layout, home.home), "~");
    EXPECT_EQ(displayPath(home.layout, home.home / "Downloads/file.dmg"), "~/Downloads/file.dmg");
    EXPECT_EQ(displayPath(home.layout, home.home.native() + "//Downloads/./x/../"), "~/Downloads");
}

TEST_P(PathMeasurementOnBoth, DisplayPathOfASiblingWithALongerNameStaysWhole) {
    const std::string sibling = home.home.native() + "x/file";
    EXPECT_EQ(displayPath(home.layout, sibling), sibling);
}

TEST_P(PathMeasurementOnBoth, RelativeDateOfNothingIsUnknown) {
    EXPECT_EQ(relativeDate(context, std::nullopt), "Unknown");
    L::setLanguage(AppLanguage::chinese);
    EXPECT_EQ(relativeDate(context, std::nullopt), "未知");
}

TEST_P(PathMeasurementOnBoth, RelativeDateFollowsTheLanguage) {
    EXPECT_EQ(relativeDate(context, home.now - days(2)), "2 days ago");
    L::setLanguage(AppLanguage::chinese);
    EXPECT_EQ(relativeDate(context, home.now - days(2)), "2天前");
}

TEST_P(PathMeasurementOnBoth, SymbolsFollowTheExtensionInAnyCase) {
    const auto symbol = [&](const char* name) { return symbolFor(context, home.file(name, 0)); };
    EXPECT_EQ(symbol("a.ZIP"), "doc.zipper");
    EXPECT_EQ(symbol("a.xip"), "doc.zipper");
    EXPECT_EQ(symbol("a.7z"), "doc.zipper");
    EXPECT_EQ(symbol("a.rar"), "doc.zipper");
    EXPECT_EQ(symbol("a.dmg"), "opticaldiscdrive");
    EXPECT_EQ(symbol("a.iso"), "opticaldiscdrive");
    EXPECT_EQ(symbol("a.pkg"), "shippingbox");
    EXPECT_EQ(symbol("a.mov"), "film");
    EXPECT_EQ(symbol("a.mp4"), "film");
    EXPECT_EQ(symbol("a.m4v"), "film");
    for (const char* picture : {"a.jpg", "a.jpeg", "a.png", "a.heic", "a.psd"}) {
        EXPECT_EQ(symbol(picture), "photo") << picture;
    }
    for (const char* plain : {"a.tar", "a.gz", "a.bz2", "a.avi", "a.mkv", "a.tiff", "a.raw", "a.txt", "a"}) {
        EXPECT_EQ(symbol(plain), "doc") << plain;
    }
    EXPECT_EQ(symbolFor(context, home.folder("Thing.app")), "app.dashed");
    EXPECT_EQ(symbolFor(context, home.folder("Plain")), "folder");
    EXPECT_EQ(symbolFor(context, home.place("missing")), "doc");
}

TEST_P(PathMeasurementOnBoth, ATargetCarriesTheFactsOfItsPath) {
    const Path file = home.file("Downloads/setup.dmg", 8192, days(3));
    const CleanupTarget made = target(context, file, std::nullopt, true);
    EXPECT_EQ(made.url, file);
    EXPECT_EQ(made.name, "setup.dmg");
    EXPECT_EQ(made.location, "~/Downloads");
    EXPECT_EQ(made.bytes, 8192);
    EXPECT_EQ(made.files, 1);
    EXPECT_EQ(made.modified, "3 days ago");
    EXPECT_EQ(made.modifiedAt, home.now - days(3));
    EXPECT_EQ(made.symbol, "opticaldiscdrive");
    EXPECT_TRUE(made.isSelected);
}

TEST_P(PathMeasurementOnBoth, AGivenMeasurementIsTakenAsItIs) {
    const CleanupTarget made = target(context, home.file("a", 8192), PathStats{.bytes = 5, .files = 7}, false);
    EXPECT_EQ(made.bytes, 5);
    EXPECT_EQ(made.files, 7);
    EXPECT_FALSE(made.isSelected);
}

TEST_P(PathMeasurementOnBoth, ATargetOfTheRootFolderIsNamedByItsWholePath) {
    EXPECT_EQ(target(context, "/", PathStats{}, false).name, "/");
}

CategorySpec categoryOf(std::vector<Path> roots) {
    return {.module = CleanerModule::systemJunk,
            .title = "Title",
            .description = "Description",
            .roots = std::move(roots),
            .symbol = "hammer",
            .tint = Tint::indigo,
            .risk = CleanupRisk::safe,
            .cleanable = true,
            .selected = true};
}

TEST_P(PathMeasurementOnBoth, ACategoryKeepsTheRootsThatExistInTheirOrder) {
    const Path b = home.file("b", 4096);
    const Path a = home.file("a", 8192);
    const CleanupItem item = categoryItem(context, categoryOf({b, home.place("missing"), a}));
    ASSERT_EQ(item.targets.size(), 2U);
    EXPECT_EQ(item.targets[0].url, b);
    EXPECT_EQ(item.targets[1].url, a);
    EXPECT_EQ(item.bytes, 12288);
    EXPECT_EQ(item.files, 2);
    EXPECT_EQ(item.description, "Description");
    EXPECT_TRUE(item.isCleanable);
    EXPECT_TRUE(item.isSelected);
    EXPECT_TRUE(item.targets[0].isSelected);
    EXPECT_FALSE(item.appInfo);
}

#ifdef VELLMOOR_COUNTS_ALLOCATIONS
std::atomic<std::size_t> allocated = 0; // bytes

/// What a root takes on average, in bytes, of a category that has so many of them.
std::size_t bytesForARoot(EngineHome& home, const std::string& folder, std::size_t count) {
    std::vector<Path> roots;
    for (std::size_t number = 0; number < count; ++number) {
        roots.push_back(home.file(folder + "/" + std::to_string(number), 0));
    }
    EngineContext context = home.context();
    const std::size_t before = allocated;
    EXPECT_EQ(categoryItem(context, categoryOf(roots)).targets.size(), count);
    return (allocated - before) / count;
}
#endif

TEST_P(PathMeasurementOnBoth, ARootOfManyTakesNoMoreThanOneOfFew) {
#ifdef VELLMOOR_COUNTS_ALLOCATIONS
    static const int counting = __sanitizer_install_malloc_and_free_hooks(
        [](const volatile void*, std::size_t bytes) { allocated += bytes; }, [](const volatile void*) {});
    ASSERT_NE(counting, 0);
    EXPECT_LT(bytesForARoot(home, "many", 800), 2 * bytesForARoot(home, "few", 100));
#else
    GTEST_SKIP() << "what is allocated is counted with the address sanitizer";
#endif
}

TEST_P(PathMeasurementOnBoth, ACategoryWithoutAnyRootIsNeitherCleanableNorSelected) {
    const CleanupItem item = categoryItem(context, categoryOf({home.place("missing")}));
    EXPECT_EQ(item.description, "Description; no items found");
    EXPECT_EQ(item.bytes, 0);
    EXPECT_EQ(item.files, 0);
    EXPECT_FALSE(item.isCleanable);
    EXPECT_FALSE(item.isSelected);
    EXPECT_EQ(item.risk, CleanupRisk::previewOnly);
    EXPECT_THAT(item.targets, IsEmpty());
}

TEST_P(PathMeasurementOnBoth, AnUncleanableCategoryIsPreviewOnlyAndUnselected) {
    CategorySpec spec = categoryOf({home.file("a", 4096)});
    spec.cleanable = false;
    const CleanupItem item = categoryItem(context, spec);
    EXPECT_EQ(item.risk, CleanupRisk::previewOnly);
    EXPECT_FALSE(item.isSelected);
    EXPECT_FALSE(item.isCleanable);
    EXPECT_FALSE(item.targets.front().isSelected);
    EXPECT_EQ(item.bytes, 4096);
}

TEST_P(PathMeasurementOnBoth, ACautiousOrHighCategoryIsNeverPreselected) {
    for (const CleanupRisk risk : {CleanupRisk::cautious, CleanupRisk::high}) {
        CategorySpec spec = categoryOf({home.file("a", 4096)});
        spec.risk = risk;
        const CleanupItem item = categoryItem(context, spec);
        EXPECT_EQ(item.risk, risk);
        EXPECT_TRUE(item.isCleanable);
        EXPECT_FALSE(item.isSelected);
        EXPECT_FALSE(item.targets.front().isSelected);
    }
}

TEST_P(PathMeasurementOnBoth, NamesThatAreNotUtf8AreMeasured) {
    if (!test::takesName(home.home, "caf\xe9")) {
        GTEST_SKIP() << "this file system has only names in UTF-8";
    }
    home.file(Path("tree") / "caf\xe9", 4096);
    EXPECT_EQ(stats(context, home.place("tree")).files, 1);
}

TEST_P(PathMeasurementOnBoth, TheExclusionAnswersForNamesAnywhere) {
    EXPECT_TRUE(isSkipped(home, home.home / "x/node_modules"));
    EXPECT_TRUE(isSkipped(home, home.home / "x/.git"));
    EXPECT_FALSE(isSkipped(home, home.home / "x/node_modules2"));
    EXPECT_FALSE(isSkipped(home, home.home / "x/git"));
    EXPECT_TRUE(isSkipped(home, home.home / ".Trash/a"));
    EXPECT_TRUE(isSkipped(home, "/Volumes/Disk/.Trashes/501/a"));
    EXPECT_FALSE(isSkipped(home, home.home / "Trash/a"));
}

// --- macOS

class MacMeasurement : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
    EngineContext context = home.context();
};

TEST_F(MacMeasurement, CloudFoldersAreSkippedDuringADeepScan) {
    EXPECT_TRUE(isSkipped(home, home.home / "Library/CloudStorage/Drive/a"));
    EXPECT_TRUE(isSkipped(home, home.home / "Library/Mobile Documents/a"));
    EXPECT_FALSE(isSkipped(home, home.home / "Library/Caches/a"));
    home.file("Library/CloudStorage/Drive/a", 4096);
    home.file("Library/Mobile Documents/b", 4096);
    home.file("Library/Caches/c", 4096);
    EXPECT_EQ(stats(context, home.place("Library")).files, 1);
    EXPECT_EQ(stats(context, home.place("Library/CloudStorage/Drive")).files, 0);
}

TEST_F(MacMeasurement, ATrashedFolderIsMeasuredThoughItLiesInATrash) {
    home.file(".Trash/Old/a", 4096);
    home.file(".Trash/Old/sub/b", 4096);
    EXPECT_EQ(stats(context, home.place(".Trash/Old")), (PathStats{.bytes = 8192, .files = 2}));
}

TEST_F(MacMeasurement, ATrashMetOnTheWayIsLeftOut) {
    home.file("Disk/.Trashes/501/a", 4096);
    home.file("Disk/b", 4096);
    EXPECT_EQ(stats(context, home.place("Disk")).files, 1);
}

TEST_F(MacMeasurement, KindsThatOnlyLinuxKnowsAreDocuments) {
    EXPECT_EQ(symbolFor(context, home.file("a.deb", 0)), "doc");
    EXPECT_EQ(symbolFor(context, home.file("a.img", 0)), "doc");
}

} // namespace
} // namespace vellmoor
