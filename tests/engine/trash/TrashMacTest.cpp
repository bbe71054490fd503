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

class MacTrash : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
    const std::string user = std::to_string(home.platform.user);

    Path volume(const std::string& path, std::string name = {}) {
        const Path folder = home.folder(path);
        home.platform.volumes.push_back({folder, std::move(name)});
        return folder;
    }
};

TEST_F(MacTrash, AnEmptyTrashAndNoVolumesGiveNoRow) {
    home.folder(".Trash");
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(MacTrash, AMissingTrashGivesNoRow) {
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(MacTrash, AHiddenFileAloneGivesARow) {
    home.file(".Trash/.hidden");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_THAT(targetNames(items.front()), ElementsAre(".hidden"));
    EXPECT_EQ(items.front().files, 1);
}

TEST_F(MacTrash, TheRowIsSafeAndPreselectedAndSaysWhatEmptyingDoes) {
    home.file(".Trash/old.txt");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    const CleanupItem& row = items.front();
    EXPECT_EQ(row.module, CleanerModule::trash);
    EXPECT_EQ(row.title, "User Trash");
    EXPECT_EQ(row.description, "Files in ~/.Trash, these are permanently removed when emptied");
    EXPECT_EQ(row.symbol, "trash");
    EXPECT_EQ(row.tint, Tint::red);
    EXPECT_EQ(row.risk, CleanupRisk::safe);
    EXPECT_TRUE(row.isCleanable);
    EXPECT_TRUE(row.isSelected);
    ASSERT_THAT(row.targets, SizeIs(1));
    EXPECT_TRUE(row.targets.front().isSelected);
    EXPECT_EQ(row.targets.front().url, home.place(".Trash/old.txt"));
}

TEST_F(MacTrash, ATrashedFolderIsMeasured) {
    home.file(".Trash/project/a.bin", 8192);
    home.file(".Trash/project/inner/b.bin", 4096);
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().bytes, 12288);
    EXPECT_EQ(items.front().files, 2);
}

TEST_F(MacTrash, AClosedTrashIsShownAsAccessLimited) {
    home.file(".Trash/secret");
    home.setMode(".Trash", 0000);
    std::vector<CleanupItem> items;
    {
        const ScopedUnprivileged unprivileged;
        items = trashRows(home);
    }
    ASSERT_THAT(items, SizeIs(1));
    const Path folder = home.place(".Trash");
    EXPECT_EQ(items.front().title, "User Trash access limited");
    EXPECT_EQ(items.front().description,
              "Unable to read " + folder.string() + ". Enable Full Disk Access to scan trash contents.");
    expectAccessLimited(items.front(), folder);
}

TEST_F(MacTrash, AListingThatTheSystemRefusesIsShownAsAccessLimited) {
    const Path folder = home.folder(".Trash");
    home.platform.fail(Operation::List, folder, "Operation not permitted");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    expectAccessLimited(items.front(), folder);
}

TEST_F(MacTrash, AClosedTrashDoesNotHideTheNextOne) {
    home.platform.fail(Operation::List, home.folder(".Trash"), "Operation not permitted");
    volume("/Volumes/Stick", "Stick");
    home.file("/Volumes/Stick/.Trashes/" + user + "/old");
    EXPECT_THAT(rowTitles(trashRows(home)), ElementsAre("User Trash access limited", "Stick Trash"));
}

TEST_F(MacTrash, AVolumesTrashIsTheUsersOwnFolderInIt) {
    volume("/Volumes/Stick", "Stick");
    const Path mine = home.file("/Volumes/Stick/.Trashes/" + user + "/mine");
    home.file("/Volumes/Stick/.Trashes/99999/theirs");
    const auto items = trashRows(home);
    ASSERT_THAT(items, SizeIs(1));
    EXPECT_EQ(items.front().title, "Stick Trash");
    EXPECT_EQ(items.front().description, "Trash files on the Stick volume, these are permanently removed when emptied");
    ASSERT_THAT(items.front().targets, SizeIs(1));
    EXPECT_EQ(items.front().targets.front().url, mine);
}

TEST_F(MacTrash, TheUsersTrashComesFirstAndTheVolumesInTheSystemsOrder) {
    const Path second = volume("/Volumes/B", "B");
    const Path third = volume("/Volumes/A", "A");
    const Path trash = Path(".Trashes") / user;
    EXPECT_THAT(sourceUrls(home), ElementsAre(home.place(".Trash"), second / trash, third / trash));
}

TEST_F(MacTrash, AVolumeThatWasNeverUsedForTrashGivesNoRow) {
    volume("/Volumes/Stick", "Stick");
    EXPECT_THAT(trashRows(home), IsEmpty());
}

TEST_F(MacTrash, TheStartUpDiskIsNoSource) {
    home.platform.volumes.push_back({"/", "Macintosh HD"});
    home.platform.volumes.push_back({home.root, "Macintosh HD"});
    EXPECT_THAT(sourceUrls(home), ElementsAre(home.place(".Trash")));
}

TEST_F(MacTrash, AVolumeOutsideTheVolumesFolderIsNoSource) {
    volume("/private/mnt/Stick", "Stick");
    volume("/VolumesX/Stick", "Stick");
    EXPECT_THAT(sourceUrls(home), ElementsAre(home.place(".Trash")));
}

TEST_F(MacTrash, TwoSpellingsOfOneVolumeGiveTheFirstSourceOnly) {
    const Path folder = volume("/Volumes/Stick", "First");
    home.platform.volumes.push_back({folder.parent_path() / "." / "Stick", "Second"});
    const auto all = sources(home);
    ASSERT_THAT(all, SizeIs(2));
    EXPECT_EQ(all.back().title, "First Trash");
}

TEST_F(MacTrash, AVolumeWithoutANameIsCalledAsItsFolder) {
    volume("/Volumes/Backup Disk");
    EXPECT_EQ(sources(home).back().title, "Backup Disk Trash");
}

TEST_F(MacTrash, AForeignVolumeTrashThatCanBeReadIsListed) {
    volume("/Volumes/Stick", "Stick");
    home.file("/Volumes/Stick/.Trashes/" + user + "/old");
    ++home.platform.user;
    EXPECT_THAT(rowTitles(trashRows(home)), ElementsAre("Stick Trash"));
}

} // namespace
} // namespace vellmoor::test
