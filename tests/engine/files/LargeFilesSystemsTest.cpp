#include "ScopedMount.h"
#include "files/LargeFilesFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

TEST(MacLargeFiles, AnApplicationBundleIsNotEntered) {
    const EngineHome home(System::Mac);
    home.file("Downloads/Big.app/Contents/MacOS/big.bin", 4 * largeFileThreshold);
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST(MacLargeFiles, CloudFoldersAreLeftOut) {
    const EngineHome home(System::Mac);
    home.file("Documents/Library/CloudStorage/Drive/big.bin", largeFileThreshold);
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

class LinuxLargeFiles : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
};

TEST_F(LinuxLargeFiles, AFolderNamedLikeABundleIsEntered) {
    const Path file = home.file("Downloads/Big.app/big.bin", largeFileThreshold);
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, TheDesktopsOwnFoldersAreSearched) {
    home.platform.folders.downloads = home.place("下载");
    const Path file = home.file("下载/大.bin", largeFileThreshold);
    nameAgain(home, file, "Downloads/other.bin");
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, AFolderThatTheDesktopDoesNotNameHasItsUsualPlace) {
    home.platform.folders.downloads = home.place("下载");
    const Path file = home.file("Videos/film.bin", largeFileThreshold);
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, ASwitchedOffFolderIsNotSearched) {
    home.platform.folders.desktop = home.home.native() + "/";
    home.file("anywhere/private.bin", largeFileThreshold);
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_F(LinuxLargeFiles, ASwitchedOffFolderDoesNotSwallowTheOthers) {
    home.platform.folders.desktop = home.home;
    const Path file = home.file("Documents/a.bin", largeFileThreshold);
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, NeitherTheRootNorAFolderAboveTheHomeIsSearched) {
    home.platform.folders.desktop = "/";
    home.platform.folders.videos = home.home.parent_path();
    home.platform.folders.pictures = home.link(home.home, "home-again");
    home.file("anywhere/private.bin", largeFileThreshold);
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_F(LinuxLargeFiles, OneFolderUnderTwoNamesIsSearchedOnce) {
    home.platform.folders.desktop = home.place("Documents");
    home.platform.folders.pictures = home.link(home.place("Documents"), "pictures");
    const Path file = home.file("Documents/a.bin", largeFileThreshold);
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, AFolderBelowAnotherIsSearchedOnceWhicheverComesFirst) {
    home.platform.folders.downloads = home.place("Documents/Downloads");
    home.platform.folders.pictures = home.place("Documents/Pictures");
    const Path first = home.file("Documents/Downloads/a.bin", largeFileThreshold);
    const Path second = nameAgain(home, first, "Documents/Pictures/b.bin");
    EXPECT_THAT(foundUrls(home), UnorderedElementsAre(first, second));
}

TEST_F(LinuxLargeFiles, AFolderThatTheWalkOfAnotherPassesByIsSearchedByItself) {
    home.platform.folders.videos = home.place("Documents/.films");
    const Path file = home.file("Documents/.films/a.bin", largeFileThreshold);
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, AVolumeMountedBelowAnotherFolderIsSearchedByItself) {
    home.file("elsewhere/a.bin", largeFileThreshold);
    home.platform.folders.videos = home.folder("Documents/films");
    const auto mount = ScopedMount::bind(home.place("elsewhere"), home.place("Documents/films"));
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_THAT(foundUrls(home), ElementsAre(home.place("Documents/films/a.bin")));
}

TEST_F(LinuxLargeFiles, AFolderWithALongerNameIsNotBelowTheShorterOne) {
    home.platform.folders.pictures = home.place("Documents2");
    const Path first = home.file("Documents/a.bin", largeFileThreshold);
    const Path second = nameAgain(home, first, "Documents2/b.bin");
    EXPECT_THAT(foundUrls(home), UnorderedElementsAre(first, second));
}

TEST_F(LinuxLargeFiles, AFolderThatWasMovedAndLinkedIsSearchedWhereItLies) {
    const Path file = home.file("/data/films/a.bin", largeFileThreshold);
    home.link(file.parent_path(), "Videos");
    EXPECT_THAT(foundUrls(home), ElementsAre(file));
}

TEST_F(LinuxLargeFiles, AFolderThatIsADanglingLinkIsSkipped) {
    home.link("/nowhere/at/all", "Videos");
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_F(LinuxLargeFiles, AHomeBehindALinkKeepsItsShortPaths) {
    const Path linked = home.link(home.home, "/linked");
    home.environment = linuxEnvironmentOf(linked);
    home.useEnvironment();
    home.file("Moved/a.bin", largeFileThreshold);
    home.link(home.place("Moved"), "Videos");
    const auto items = fileRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().description, "~/Moved");
}

TEST_F(LinuxLargeFiles, ALinkIntoACloudFolderIsLeftOut) {
    home.file("Dropbox/films/a.bin", largeFileThreshold);
    home.link(home.place("Dropbox/films"), "Videos");
    EXPECT_THAT(foundFiles(home), IsEmpty());
}

TEST_F(LinuxLargeFiles, ASynchronisedFolderBelowARootIsLeftOut) {
    const Path kept = home.file("Documents/kept.bin", largeFileThreshold);
    nameAgain(home, kept, "Documents/synced/left.bin");
    home.file("Documents/synced/.sync_abc.db");
    EXPECT_THAT(foundUrls(home), ElementsAre(kept));
}

TEST_F(LinuxLargeFiles, ASynchronisedRootIsStillSearched) {
    const Path kept = home.file("Documents/kept.bin", largeFileThreshold);
    home.folder("Documents/.stfolder");
    EXPECT_THAT(foundUrls(home), ElementsAre(kept));
}

TEST_F(LinuxLargeFiles, NumberedTrashFoldersAreLeftOut) {
    const Path kept = home.file("Documents/kept.bin", largeFileThreshold);
    nameAgain(home, kept, "Documents/copy/.Trash-1000/files/left.bin");
    EXPECT_THAT(foundUrls(home), ElementsAre(kept));
}

} // namespace
} // namespace vellmoor::test
