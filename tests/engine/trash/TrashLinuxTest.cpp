#include "ScopedUnprivileged.h"
#include "trash/TrashFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::UnorderedElementsAre;

class LinuxTrash : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const std::string user = std::to_string(home.platform.user);
    const Path folder = home.place(".local/share/Trash");

    Path volume(const std::string& path) {
        const Path place = home.folder(path);
        home.platform.volumes.push_back({place, ""});
        return place;
    }
    /// The shared form of a volume's Trash, as an administrator makes it.
    Path sharedTrash(const Path& disk, unsigned mode = 01777) {
        const Path trash = home.folder(disk / ".Trash" / user);
        home.setMode(disk / ".Trash", mode);
        return trash;
    }
};

TEST_F(LinuxTrash, TheItemsAreTheChildrenOfTheFilesFolder) {
    const Path item = home.file(folder / "files/old.txt");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    const CleanupItem& row = items.front();
    EXPECT_EQ(row.title, "User Trash");
    EXPECT_EQ(row.description, "Files in ~/.local/share/Trash, these are permanently removed when emptied");
    EXPECT_EQ(row.risk, CleanupRisk::safe);
    EXPECT_TRUE(row.isSelected);
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_EQ(row.targets.front().url, item);
    EXPECT_EQ(row.targets.front().name, "old.txt");
}

TEST_F(LinuxTrash, ASourceNamesTheTrashFolderAndItsContents) {
    const auto all = sources(home);
    ASSERT_THAT(all, SizeIs(1));
    EXPECT_EQ(all.front().url, folder / "files");
    EXPECT_EQ(all.front().trash.folder, folder);
    EXPECT_EQ(all.front().trash.contents, folder / "files");
}

TEST_F(LinuxTrash, TheTrashFollowsTheDataFolder) {
    home.environment.data = home.folder("elsewhere");
    home.useEnvironment();
    home.file("elsewhere/Trash/files/old.txt");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().description, "Files in ~/elsewhere/Trash, these are permanently removed when emptied");
}

TEST_F(LinuxTrash, NotesAndHalfDeletedItemsAreNoTargets) {
    home.file(folder / "files/old.txt");
    home.text(folder / "info/old.txt.trashinfo", "[Trash Info]\nPath=/original/name.txt\n");
    home.text(folder / "directorysizes", "1 2 old.txt\n");
    home.file(folder / "expunged/12345/part");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_THAT(targetNames(items.front()), ElementsAre("old.txt"));
}

TEST_F(LinuxTrash, AHiddenFileAloneGivesARow) {
    home.file(folder / "files/.hidden");
    ASSERT_THAT(trashRows(home), SizeIs(1));
    EXPECT_THAT(targetNames(trashRows(home).front()), ElementsAre(".hidden"));
}

TEST_F(LinuxTrash, ADanglingLinkIsListed) {
    home.link("/nowhere/at/all", folder / "files/link");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_THAT(targetNames(items.front()), ElementsAre("link"));
    EXPECT_TRUE(items.front().isCleanable);
}

TEST_F(LinuxTrash, ATrashedFolderIsMeasured) {
    home.file(folder / "files/project/a.bin", 8192);
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().bytes, 8192);
}

TEST_F(LinuxTrash, NothingIsShownWithoutATrash) {
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(LinuxTrash, NothingIsShownWithoutAFilesFolder) {
    home.folder(folder / "info");
    const ScopedUnprivileged unprivileged;
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(LinuxTrash, AnEmptyFilesFolderGivesNoRow) {
    home.folder(folder / "files");
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(LinuxTrash, AClosedFilesFolderIsShownAsAccessLimitedUnderTheTrashsName) {
    home.file(folder / "files/secret");
    home.setMode(folder / "files", 0000);
    std::vector<CleanupItem> items;
    {
        const ScopedUnprivileged unprivileged;
        items = trashRows(home);
    }
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().title, "User Trash access limited");
    EXPECT_EQ(items.front().description,
              "Unable to read " + folder.string() + ". Check the folder's owner and permissions.");
    expectAccessLimited(items.front(), folder);
}

TEST_F(LinuxTrash, AClosedTrashFolderIsShownAsAccessLimited) {
    home.file(folder / "files/secret");
    home.setMode(folder, 0000);
    std::vector<CleanupItem> items;
    {
        const ScopedUnprivileged unprivileged;
        items = trashRows(home);
    }
    ASSERT_THAT(items, SizeIs(1));
    expectAccessLimited(items.front(), folder);
}

TEST_F(LinuxTrash, AForeignTrashThatCanBeReadIsPassedOver) {
    home.file(folder / "files/theirs");
    ++home.platform.user;
    EXPECT_THAT(sources(home), IsEmpty());
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(LinuxTrash, AForeignTrashThatCannotBeReadIsShownAsAccessLimited) {
    home.file(folder / "files/theirs");
    home.setMode(folder, 0000);
    ++home.platform.user;
    std::vector<CleanupItem> items;
    {
        const ScopedUnprivileged unprivileged;
        items = trashRows(home);
    }
    ASSERT_THAT(items, SizeIs(1));
    expectAccessLimited(items.front(), folder);
}

TEST_F(LinuxTrash, AForeignTrashThatCanOnlyBeEnteredIsShownAsAccessLimited) {
    home.file(folder / "files/theirs");
    home.setMode(folder, 0111);
    ++home.platform.user;
    std::vector<CleanupItem> items;
    {
        const ScopedUnprivileged unprivileged;
        items = trashRows(home);
    }
    ASSERT_THAT(items, SizeIs(1));
    expectAccessLimited(items.front(), folder);
}

TEST_F(LinuxTrash, AVolumesSharedTrashIsAcceptedWithTheStickyBit) {
    const Path disk = volume("/media/STICK");
    const Path trash = sharedTrash(disk);
    home.file(trash / "files/old");
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files", trash / "files"));
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().title, "STICK Trash");
    EXPECT_EQ(items.front().description, "Trash files on the STICK volume, these are permanently removed when emptied");
}

TEST_F(LinuxTrash, AVolumesSharedTrashWithoutTheStickyBitIsRefused) {
    sharedTrash(volume("/media/STICK"), 0777);
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
}

TEST_F(LinuxTrash, AVolumesSharedTrashBehindALinkIsRefused) {
    const Path disk = volume("/media/STICK");
    home.folder(disk / "elsewhere" / user);
    home.setMode(disk / "elsewhere", 01777);
    home.link("elsewhere", disk / ".Trash");
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
}

TEST_F(LinuxTrash, AUsersFolderThatIsALinkInTheSharedTrashIsRefused) {
    const Path disk = volume("/media/STICK");
    home.folder(disk / "elsewhere/files");
    home.link("../elsewhere", disk / ".Trash" / user);
    home.setMode(disk / ".Trash", 01777);
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
}

TEST_F(LinuxTrash, AVolumesOwnTrashNeedsNoStickyBit) {
    const Path disk = volume("/media/STICK");
    const Path trash = home.folder(disk / (".Trash-" + user));
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files", trash / "files"));
}

TEST_F(LinuxTrash, AVolumesOwnTrashThatIsALinkIsRefused) {
    const Path disk = volume("/media/STICK");
    home.folder(disk / "elsewhere/files");
    home.link("elsewhere", disk / (".Trash-" + user));
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
}

TEST_F(LinuxTrash, AnotherUsersVolumeTrashIsNoSource) {
    const Path disk = volume("/media/STICK");
    home.folder(disk / ".Trash-99999/files");
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
}

TEST_F(LinuxTrash, BothFormsOfAVolumeAreListedTheSharedOneFirst) {
    const Path disk = volume("/media/STICK");
    const Path own = home.folder(disk / (".Trash-" + user));
    const Path shared = sharedTrash(disk);
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files", shared / "files", own / "files"));
}

TEST_F(LinuxTrash, AVolumesTrashThatOffersTheUsersOwnFolderIsNotListed) {
    home.file("Documents/thesis");
    const Path disk = volume("/media/STICK");
    const Path trash = home.folder(disk / (".Trash-" + user));
    home.link(home.place("Documents"), trash / "files");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    expectAccessLimited(items.front(), trash);
}

TEST_F(LinuxTrash, TheRootVolumeIsNoSource) {
    home.platform.volumes.push_back({"/", ""});
    home.platform.volumes.push_back({home.root, ""});
    home.folder(home.root / (".Trash-" + user) / "files");
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
}

TEST_F(LinuxTrash, OneFolderUnderTwoVolumesGivesTheFirstSourceOnly) {
    const Path disk = volume("/media/STICK");
    const Path trash = home.folder(disk / (".Trash-" + user));
    home.platform.volumes.push_back({home.link(disk, "/mnt/again"), ""});
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files", trash / "files"));
}

TEST_F(LinuxTrash, AVolumeThatIsListedButGoneIsNoSource) {
    const Path disk = volume("/media/STICK");
    home.file(home.folder(disk / (".Trash-" + user)) / "files/old");
    std::filesystem::remove_all(disk);
    EXPECT_THAT(sourceUrls(home), ElementsAre(folder / "files"));
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(LinuxTrash, AVolumeAnywhereCounts) {
    const Path disk = volume("/data");
    const Path trash = home.folder(disk / (".Trash-" + user));
    home.file(trash / "files/old");
    EXPECT_THAT(rowTitles(trashRows(home)), UnorderedElementsAre("data Trash"));
}

} // namespace
} // namespace vellmoor::test
