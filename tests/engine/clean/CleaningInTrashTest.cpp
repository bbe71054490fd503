#include "ScopedUnprivileged.h"
#include "clean/CleaningFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class MacCleaning : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
};

TEST_F(MacCleaning, AnItemInAVolumesTrashIsRemovedForGood) {
    home.platform.volumes.push_back({home.folder("/Volumes/Stick"), "Stick"});
    const Path item = home.file("/Volumes/Stick/.Trashes/" + std::to_string(home.platform.user) + "/old");
    clean(home, {item});
    EXPECT_FALSE(home.has(item));
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), ElementsAre(item));
}

TEST_F(MacCleaning, TheTrashIsRecognisedInTheStandardisedPath) {
    home.file(".Trash/old");
    home.folder("Stuff");
    clean(home, {home.home / "Stuff/../.Trash/./old"});
    EXPECT_FALSE(home.has(".Trash/old"));
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), SizeIs(1));
}

TEST_F(MacCleaning, ADetourOutOfTheTrashIsNoTrash) {
    home.file("Stuff/a");
    home.folder(".Trash");
    clean(home, {home.home / ".Trash/../Stuff/a"});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_TRUE(home.has(".Trash/a"));
}

TEST_F(MacCleaning, ANameThatOnlyBeginsLikeTheTrashIsNoTrash) {
    const Path file = home.file(".Trash-old/a");
    clean(home, {file});
    EXPECT_THAT(changedPaths(home, Operation::MoveToTrash), ElementsAre(file));
}

TEST_F(MacCleaning, ALinkIntoTheTrashDoesNotMakeAPathLieInIt) {
    home.text(".Trash/folder/old", "words");
    home.link(home.place(".Trash"), "Stuff/bin");
    clean(home, {home.home / "Stuff/bin/folder/old"});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_TRUE(home.has(".Trash/old"));
}

TEST_F(MacCleaning, AFolderInTheTrashThatIsSwappedForALinkInTheLastMomentIsNotFollowed) {
    const Path item = home.text(".Trash/folder/thesis", "old");
    const Path document = home.text("Documents/thesis", "words");
    home.platform.beforeChange = [&](Operation, const Path&) {
        std::filesystem::rename(home.place(".Trash/folder"), home.place("away"));
        home.link(home.place("Documents"), ".Trash/folder");
    };
    const CleanupReport report = clean(home, {item});
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(contentOf(document), "words");
}

TEST_F(MacCleaning, ATrashThatIsALinkToAnotherFolderIsNone) {
    const Path document = home.text("Documents/thesis", "words");
    home.link(home.place("Documents"), ".Trash");
    const CleanupReport report = clean(home, {home.home / ".Trash/thesis"});
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_EQ(contentOf(document), "words");
}

class LinuxCleaning : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const TrashFolder trash = home.platform.homeTrash();
    const std::string user = std::to_string(home.platform.user);

    Path volume(const std::string& path) {
        const Path place = home.folder(path);
        home.platform.volumes.push_back({place, ""});
        return place;
    }
};

TEST_F(LinuxCleaning, TheRestoreNoteAndTheSizeGoWithTheItem) {
    const Path item = home.file(trash.contents / "old file/inner").parent_path();
    const Path note = home.text(trash.folder / "info/old file.trashinfo", "[Trash Info]\nPath=/x\n");
    const Path other = home.text(trash.folder / "info/other.trashinfo", "[Trash Info]\nPath=/y\n");
    home.text(trash.folder / "directorysizes", "4096 1 old%20file\n8192 2 other\n");
    const CleanupReport report = clean(home, {item});
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_FALSE(home.has(item));
    EXPECT_FALSE(home.has(note));
    EXPECT_TRUE(home.has(other));
    EXPECT_EQ(contentOf(trash.folder / "directorysizes"), "8192 2 other\n");
}

TEST_F(LinuxCleaning, AFailedRemovalKeepsTheRestoreNote) {
    const Path item = home.file(trash.contents / "old");
    const Path note = home.text(trash.folder / "info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    home.platform.fail(Operation::RemoveFromTrash, item, "Busy");
    clean(home, {item});
    EXPECT_TRUE(home.has(item));
    EXPECT_TRUE(home.has(note));
}

TEST_F(LinuxCleaning, AReadOnlyTreeInTheTrashIsRemoved) {
    home.file(trash.contents / "tree/inner/file");
    home.setMode(trash.contents / "tree/inner", 0500);
    home.setMode(trash.contents / "tree", 0500);
    CleanupReport report;
    {
        const ScopedUnprivileged unprivileged;
        report = clean(home, {trash.contents / "tree"});
    }
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(home.has(trash.contents / "tree"));
}

TEST_F(LinuxCleaning, AnItemInEitherFormOfAVolumesTrashIsRemovedForGood) {
    const Path disk = volume("/media/STICK");
    const Path own = home.file(disk / (".Trash-" + user) / "files/a");
    const Path shared = home.file(disk / ".Trash" / user / "files/b");
    home.setMode(disk / ".Trash", 01777);
    const CleanupReport report = clean(home, {own, shared});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), ElementsAre(own, shared));
}

TEST_F(LinuxCleaning, ACopiedStickInTheHomeIsNoTrash) {
    const Path copy = home.text("stick-copy/.Trash-" + user + "/files/a", "words");
    clean(home, {copy});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_EQ(contentOf(trash.contents / "a"), "words");
}

TEST_F(LinuxCleaning, TheMacTrashNameMeansNothing) {
    const Path file = home.text(".Trash/a", "words");
    clean(home, {file});
    EXPECT_EQ(contentOf(trash.contents / "a"), "words");
}

TEST_F(LinuxCleaning, RestoreNotesAreNotRemovedForGood) {
    const Path note = home.text(trash.folder / "info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    clean(home, {note});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
}

TEST_F(LinuxCleaning, AVolumeThatIsNoLongerMountedHasNoTrash) {
    const Path disk = volume("/media/STICK");
    const Path item = home.file(disk / (".Trash-" + user) / "files/a");
    home.platform.volumes.clear();
    clean(home, {item});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
}

TEST_F(LinuxCleaning, AForeignTrashIsNotEmptied) {
    const Path disk = volume("/media/STICK");
    const Path item = home.file(disk / (".Trash-" + user) / "files/a");
    ++home.platform.user;
    clean(home, {item});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
}

TEST_F(LinuxCleaning, TheTrashOfAHomeBehindALinkIsRecognisedByItsRealPath) {
    const Path linked = home.link(home.home, "/linked");
    home.environment = linuxEnvironmentOf(linked);
    home.useEnvironment();
    const Path item = home.file(".local/share/Trash/files/old");
    const Path note = home.text(".local/share/Trash/info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    const CleanupReport report = clean(home, {item});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(home.has(item));
    EXPECT_FALSE(home.has(note));
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), SizeIs(1));
}

TEST_F(LinuxCleaning, TheTrashOfAHomeBehindALinkIsEmptiedThroughTheLink) {
    const Path linked = home.link(home.home, "/linked");
    home.environment = linuxEnvironmentOf(linked);
    home.useEnvironment();
    home.file(".local/share/Trash/files/old");
    const CleanupReport report = clean(home, {linked / ".local/share/Trash/files/old"});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(home.has(".local/share/Trash/files/old"));
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), SizeIs(1));
}

TEST_F(LinuxCleaning, ATrashFolderThatIsALinkIsEmptied) {
    home.folder("moved/files");
    home.link(home.place("moved"), trash.folder);
    const Path item = home.file("moved/files/old");
    const Path note = home.text("moved/info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    const CleanupReport report = clean(home, {trash.contents / "old"});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_FALSE(home.has(item));
    EXPECT_FALSE(home.has(note));
}

TEST_F(LinuxCleaning, AFilesFolderThatIsALinkMakesNoTrashOfWhatItNames) {
    const Path document = home.text("Documents/thesis", "words");
    home.folder(trash.folder);
    home.link(home.place("Documents"), trash.contents);
    clean(home, {document});
    EXPECT_THAT(changedPaths(home, Operation::RemoveFromTrash), IsEmpty());
}

} // namespace
} // namespace vellmoor::test
