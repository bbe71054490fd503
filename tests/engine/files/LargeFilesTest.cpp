#include "Host.h"
#include "ScopedUnprivileged.h"
#include "files/LargeFilesFixture.h"
#include "found/ScanSnapshot.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::SizeIs;

/// Rules that hold on both systems.
class LargeFiles : public ::testing::TestWithParam<System> {
protected:
    EngineHome home{GetParam()};

    Path big(const Path& path, std::int64_t bytes = largeFileThreshold, EngineHome::Age age = {}) const {
        return home.file(path, bytes, age);
    }
};

INSTANTIATE_TEST_SUITE_P(On, LargeFiles, ::testing::ValuesIn(test::hostedSystems()),
                         [](const auto& instance) { return instance.param == System::Mac ? "Mac" : "Linux"; });

TEST_P(LargeFiles, AFileOfExactlyTheThresholdIsListedAndASmallerOneIsNot) {
    const Path exact = fileTaking(home, "Downloads/exact.bin", largeFileThreshold);
    fileTaking(home, "Downloads/smaller.bin", largeFileThreshold - 4096);
    const auto files = foundFiles(home);
    ASSERT_THAT(files, SizeIs(1));
    EXPECT_EQ(files.front().url, exact);
    EXPECT_EQ(files.front().bytes, largeFileThreshold);
    EXPECT_EQ(files.front().files, 1);
}

TEST_P(LargeFiles, OnlyAllocatedBytesCount) {
    const Path sparse = home.file("Downloads/disk.img", 0);
    std::filesystem::resize_file(sparse, 4 * static_cast<std::uintmax_t>(largeFileThreshold));
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_P(LargeFiles, TheFiveFoldersAreSearchedAndNothingElse) {
    const Path one = big("Downloads/1.bin");
    const Path videos = GetParam() == System::Mac ? "Movies" : "Videos";
    const std::vector<Path> inside{nameAgain(home, one, "Desktop/2.bin"), nameAgain(home, one, "Documents/3.bin"),
                                   nameAgain(home, one, videos / "4.bin"), nameAgain(home, one, "Pictures/5.bin"), one};
    nameAgain(home, one, "Library/6.bin");
    nameAgain(home, one, "Music/7.bin");
    nameAgain(home, one, "8.bin");
    nameAgain(home, one, ".cache/9.bin");
    EXPECT_THAT(foundUrls(home), ::testing::UnorderedElementsAreArray(inside));
}

TEST_P(LargeFiles, FilesAreFoundAtAnyDepth) {
    const Path deep = big("Documents/a/b/c/d/e/deep.bin");
    EXPECT_THAT(foundUrls(home), ElementsAre(deep));
}

TEST_P(LargeFiles, HiddenFilesAndFoldersAreLeftOut) {
    const Path hidden = big("Downloads/.hidden.bin");
    nameAgain(home, hidden, "Downloads/.folder/inner.bin");
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_P(LargeFiles, SourceTreesAndTrashFoldersAreLeftOut) {
    const Path kept = big("Documents/project/kept.bin");
    nameAgain(home, kept, "Documents/project/node_modules/left.bin");
    nameAgain(home, kept, "Documents/project/.git/left.bin");
    nameAgain(home, kept, "Documents/.Trash/left.bin");
    EXPECT_THAT(foundUrls(home), ElementsAre(kept));
}

TEST_P(LargeFiles, LinksAreNotFollowed) {
    const Path outside = big("Music/outside.bin");
    home.link(outside, "Downloads/link.bin");
    home.link(outside.parent_path(), "Downloads/folder");
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_P(LargeFiles, AClosedFolderIsPassedOver) {
    const Path open = big("Documents/open.bin");
    nameAgain(home, open, "Documents/closed/inner.bin");
    home.setMode("Documents/closed", 0000);
    const ScopedUnprivileged unprivileged;
    EXPECT_THAT(foundUrls(home), ElementsAre(open));
}

TEST_P(LargeFiles, AClosedRootIsPassedOver) {
    const Path open = big("Documents/open.bin");
    nameAgain(home, open, "Downloads/inner.bin");
    home.setMode("Downloads", 0000);
    const ScopedUnprivileged unprivileged;
    EXPECT_THAT(foundUrls(home), ElementsAre(open));
}

TEST_P(LargeFiles, WithoutAnyFolderNothingIsFound) {
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_P(LargeFiles, TheLargestComeFirstAcrossTheFoldersUpToTheLimit) {
    const Path middle = big("Downloads/middle.bin", largeFileThreshold + step);
    const Path largest = big("Pictures/largest.bin", largeFileThreshold + 2 * step);
    big("Documents/smallest.bin");
    std::vector<Path> order;
    for (const ScannedPath& file : foundFiles(home, 2)) {
        order.push_back(file.url);
    }
    EXPECT_THAT(order, ElementsAre(largest, middle));
}

TEST_P(LargeFiles, ALimitBeyondTheNumberOfFilesIsNoError) {
    big("Downloads/only.bin");
    EXPECT_THAT(foundFiles(home, 12), SizeIs(1));
}

TEST_P(LargeFiles, TheModificationDateIsRecorded) {
    big("Downloads/old.bin", largeFileThreshold, days(40));
    const auto files = foundFiles(home);
    ASSERT_THAT(files, SizeIs(1));
    EXPECT_EQ(files.front().modified, home.now - days(40));
}

TEST_P(LargeFiles, ACancelledSearchAnswersNoPartOfTheList) {
    big("Downloads/a.bin");
    home.token.cancel();
    EngineContext context = home.context();
    EXPECT_THROW(largeFiles(context, 12), ScanCancelled);
    EXPECT_THROW(largeFileItems(context, false), ScanCancelled);
}

/// Cancels the scan as soon as the walk asks about a folder.
class CancellingPlatform : public StandInPlatform {
public:
    CancellingPlatform(const EngineHome& place, CancelToken& token)
        : StandInPlatform(place.platform.system, place.home, place.root),
          token_(token) {}
    bool isPackage(const Path&) const override {
        token_.cancel();
        return false;
    }

private:
    CancelToken& token_;
};

TEST_P(LargeFiles, ASearchThatIsCancelledOnTheWayAnswersNoPartOfTheList) {
    big("Downloads/a.bin");
    home.folder("Downloads/some.folder");
    const CancellingPlatform platform(home, home.token);
    EngineContext context(platform, home.layout, home.token, home.now);
    EXPECT_THROW(largeFiles(context, 12), ScanCancelled);
}

TEST_P(LargeFiles, ASearchBegunAheadFindsTheSame) {
    const Path large = big("Downloads/large.bin");
    const Path larger = big("Pictures/larger.bin", largeFileThreshold + step);
    EngineContext context = home.context();
    searchLargeFilesAhead(context);
    searchLargeFilesAhead(context); // changes nothing
    const auto isAt = [](const Path& path) { return Field(&ScannedPath::url, path); };
    EXPECT_THAT(largeFiles(context, 12), ElementsAre(isAt(larger), isAt(large)));
    EXPECT_THAT(largeFiles(context, 1), ElementsAre(isAt(larger)));
}

TEST_P(LargeFiles, ASearchBegunAheadIsMadeOnce) {
    home.folder("Downloads");
    EngineContext context = home.context();
    searchLargeFilesAhead(context);
    EXPECT_THAT(largeFiles(context, 12), IsEmpty());
    big("Downloads/late.bin");
    EXPECT_THAT(largeFiles(context, 12), IsEmpty());
}

TEST_P(LargeFiles, ASearchBegunAheadIsCancelledWithItsCallAndWaitedForAtItsEnd) {
    big("Downloads/a.bin");
    home.folder("Downloads/some.folder");
    const CancellingPlatform platform(home, home.token);
    {
        EngineContext context(platform, home.layout, home.token, home.now);
        searchLargeFilesAhead(context);
        EXPECT_THROW(largeFiles(context, 12), ScanCancelled);
    }
    EngineContext nobodyAsks(platform, home.layout, home.token, home.now);
    searchLargeFilesAhead(nobodyAsks);
}

TEST_P(LargeFiles, ARowDescribesOneFileAndIsNeverPreselected) {
    const Path file = big("Downloads/sub/Film.mp4", largeFileThreshold, days(3));
    const auto items = fileRows(home, true);
    ASSERT_THAT(items, SizeIs(1));
    const CleanupItem& row = items.front();
    EXPECT_EQ(row.module, CleanerModule::largeFiles);
    EXPECT_EQ(row.title, "Film.mp4");
    EXPECT_EQ(row.description, "~/Downloads/sub");
    EXPECT_EQ(row.bytes, allocatedBytes(file));
    EXPECT_EQ(row.files, 1);
    EXPECT_EQ(row.symbol, "film");
    EXPECT_EQ(row.tint, Tint::indigo);
    EXPECT_EQ(row.risk, CleanupRisk::cautious);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
    EXPECT_FALSE(row.appInfo);
    ASSERT_THAT(row.targets, SizeIs(1));
    const CleanupTarget& target = row.targets.front();
    EXPECT_EQ(target.url, file);
    EXPECT_EQ(target.bytes, row.bytes);
    EXPECT_EQ(target.files, 1);
    EXPECT_EQ(target.modifiedAt, home.now - days(3));
    EXPECT_FALSE(target.isSelected);
}

TEST_P(LargeFiles, OfTwentyFilesTheModuleShowsTheTwelveLargestAndTheOverviewTheEightLargest) {
    const Path small = big("Downloads/small-0.bin");
    for (int i = 1; i < 8; ++i) {
        nameAgain(home, small, "Downloads/small-" + std::to_string(i) + ".bin");
    }
    const Path medium = big("Documents/medium-0.bin", largeFileThreshold + step);
    for (int i = 1; i < 6; ++i) {
        nameAgain(home, medium, "Documents/medium-" + std::to_string(i) + ".bin");
    }
    const Path large = big("Desktop/large-0.bin", largeFileThreshold + 2 * step);
    for (int i = 1; i < 6; ++i) {
        nameAgain(home, large, "Desktop/large-" + std::to_string(i) + ".bin");
    }
    ASSERT_THAT(foundFiles(home), SizeIs(20));

    const auto items = fileRows(home);
    ASSERT_THAT(items, SizeIs(12));
    EXPECT_THAT(std::vector(items.begin(), items.begin() + 6), Each(Field(&CleanupItem::description, "~/Desktop")));
    EXPECT_THAT(std::vector(items.begin() + 6, items.end()), Each(Field(&CleanupItem::description, "~/Documents")));

    const auto lines = makeFileCandidates(home.context(), items);
    ASSERT_THAT(lines, SizeIs(8));
    EXPECT_THAT(std::vector(lines.begin(), lines.begin() + 6), Each(Field(&FileCandidate::location, "~/Desktop")));
    EXPECT_THAT(std::vector(lines.begin() + 6, lines.end()), Each(Field(&FileCandidate::location, "~/Documents")));
}

CleanupItem itemWith(CleanerModule module, const Path& path, std::int64_t bytes) {
    CleanupItem item;
    item.module = module;
    CleanupTarget target;
    target.url = path;
    target.bytes = bytes;
    target.files = 1;
    target.modified = "stale";
    item.targets = {target};
    return item;
}

TEST_P(LargeFiles, TheOverviewLineShowsTheFileWithItsDateReadAfresh) {
    const Path file = home.file("Downloads/Disk.iso", 4096, days(2));
    const auto lines = makeFileCandidates(home.context(), {itemWith(CleanerModule::largeFiles, file, 300'000'000)});
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines.front().name, "Disk.iso");
    EXPECT_EQ(lines.front().location, "~/Downloads");
    EXPECT_EQ(lines.front().size, "300 MB");
    EXPECT_EQ(lines.front().modified, home.platform.relativeDate(home.now - days(2), home.now, AppLanguage::english));
    EXPECT_EQ(lines.front().symbol, "opticaldiscdrive");
    EXPECT_EQ(lines.front().url, file);
}

TEST_P(LargeFiles, AnOverviewLineOfAVanishedFileHasAnUnknownDate) {
    const auto lines = makeFileCandidates(
        home.context(), {itemWith(CleanerModule::largeFiles, home.place("Downloads/gone"), 300'000'000)});
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines.front().modified, "Unknown");
}

TEST_P(LargeFiles, TheOverviewTakesLargeFilesWithAtLeastOneByteOnly) {
    const Path file = home.file("Downloads/a");
    const auto lines = makeFileCandidates(home.context(), {itemWith(CleanerModule::systemJunk, file, 300'000'000),
                                                           itemWith(CleanerModule::largeFiles, file, 0),
                                                           itemWith(CleanerModule::largeFiles, file, 1)});
    EXPECT_THAT(lines, SizeIs(1));
}

TEST_P(LargeFiles, TheOverviewIsSortedBySize) {
    const Path file = home.file("Downloads/a");
    const auto lines = makeFileCandidates(home.context(), {itemWith(CleanerModule::largeFiles, file, 1'000'000),
                                                           itemWith(CleanerModule::largeFiles, file, 3'000'000),
                                                           itemWith(CleanerModule::largeFiles, file, 2'000'000)});
    EXPECT_THAT(lines, ElementsAre(Field(&FileCandidate::size, "3 MB"), Field(&FileCandidate::size, "2 MB"),
                                   Field(&FileCandidate::size, "1 MB")));
}

} // namespace
} // namespace vellmoor::test
