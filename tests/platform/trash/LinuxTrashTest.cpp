// What goes into the Trash, what stays because it may not, and what the Trash knows of it.
#include "FileContent.h"
#include "LinuxTrashFixture.h"
#include "ScopedUnprivileged.h"
#include "disk/Files.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/stat.h>

namespace vellmoor {
namespace {

using test::contentOf;
using test::requestFor;
using test::ScopedUnprivileged;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

TEST_F(LinuxTrash, TakesAFileWithANoteOfItsPlaceAndSaysWhereItLies) {
    const Path file = write("folder/one file.txt", "mine");
    const Removal moved = move(file);
    EXPECT_EQ(moved.result, RemovalResult::Done);
    EXPECT_EQ(moved.place, trash_.contents / "one file.txt");
    EXPECT_FALSE(platform_.exists(file));
    EXPECT_EQ(contentOf(moved.place), "mine");
    EXPECT_THAT(noteOf("one file.txt"), MatchesRegex("\\[Trash Info\\]\nPath=" + home_.string() +
                                                     "/folder/one%20file\\.txt\nDeletionDate=20[0-9-]+T[0-9:]+\n"));
    struct stat status{};
    ::lstat(trash_.folder.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0700U);
}

TEST_F(LinuxTrash, IsTheUsersOwnInATerminalThatIsASnap) {
    const Path file = write("file", "mine");
    ::setenv("SNAP", "/snap/code/200", 1);
    const Removal moved = move(file);
    ::unsetenv("SNAP");
    EXPECT_EQ(moved.place, trash_.contents / "file");
    EXPECT_EQ(contentOf(moved.place), "mine");
}

TEST_F(LinuxTrash, TheNoteNamesTheRealPlace) {
    write("real/file");
    folder_.link(home_ / "real", "home/alias");
    TrashPlaces all = places();
    all.anchors.push_back(home_ / "alias");
    EXPECT_EQ(test::moveToTrash(platform_, requestFor(platform_, home_ / "alias/file"), all).result,
              RemovalResult::Done);
    EXPECT_THAT(noteOf("file"), ::testing::HasSubstr("Path=" + home_.string() + "/real/file\n"));
}

TEST_F(LinuxTrash, TakesALinkItselfAndAWholeFolder) {
    const Path inner = write("tree/inner/file");
    folder_.link(home_ / "tree", "home/link to tree");
    folder_.link("/nowhere", "home/dangling");
    EXPECT_TRUE(takes(home_ / "link to tree"));
    EXPECT_TRUE(takes(home_ / "dangling"));
    EXPECT_TRUE(platform_.exists(inner));
    EXPECT_TRUE(takes(home_ / "tree"));
    EXPECT_TRUE(platform_.exists(trash_.contents / "tree/inner/file"));
    EXPECT_TRUE(platform_.facts(trash_.contents / "dangling")->isSymlink);
}

TEST_F(LinuxTrash, AMissingFileIsGoneAndOneBehindAClosedFolderIsNot) {
    EXPECT_EQ(move(home_ / "missing").result, RemovalResult::Vanished);
    EXPECT_EQ(move(home_ / "missing/file").result, RemovalResult::Vanished);
    const Path file = write("closed/file", "mine");
    const RemovalRequest request = requestFor(platform_, file);
    folder_.setMode("home/closed", 0);
    {
        const ScopedUnprivileged unprivileged;
        const Removal moved = move(request);
        EXPECT_EQ(moved.result, RemovalResult::Failed);
        EXPECT_EQ(moved.reason, "Permission denied");
    }
    folder_.setMode("home/closed", 0700);
    EXPECT_EQ(contentOf(file), "mine");
}

TEST_F(LinuxTrash, LeavesAFileWhoseFolderForbidsItAndNoNote) {
    const Path file = write("locked/file", "mine");
    folder_.setMode("home/locked", 0555);
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_EQ(move(file).reason, "Permission denied");
    }
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_THAT(notes(), IsEmpty());
}

TEST_F(LinuxTrash, AClosedTrashTakesItAndGetsItsModeBack) {
    folder_.folder("home/data/Trash/files");
    folder_.folder("home/data/Trash/info");
    const Path file = write("file", "mine");
    for (const char* name : {"files", "info", ""}) {
        folder_.setMode(Path("home/data/Trash") / name, 0500);
    }
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_TRUE(takes(file));
    }
    EXPECT_EQ(contentOf(trash_.contents / "file"), "mine");
    for (const char* name : {"files", "info", ""}) {
        struct stat status{};
        ::lstat((trash_.folder / name).c_str(), &status);
        EXPECT_EQ(status.st_mode & 07777U, 0500U) << name;
    }
}

TEST_F(LinuxTrash, WhatLiesInATrashThatIsNotListedNowIsNotMovedIntoIt) {
    ASSERT_TRUE(takes(write("old.txt", "old")));
    const Path inside = trash_.contents / "old.txt";
    const Removal removal = move(inside);
    EXPECT_EQ(removal.result, RemovalResult::Failed);
    EXPECT_EQ(removal.reason, files::reason(EAGAIN));
    EXPECT_EQ(contentOf(inside), "old");
    EXPECT_THAT(notes(), ElementsAre("old.txt.trashinfo"));
}

TEST_F(LinuxTrash, WhatItTookIsRemovedForGoodWithItsNote) {
    EXPECT_TRUE(takes(write("temporary")));
    const Path item = trash_.contents / "temporary";
    EXPECT_EQ(test::removeFromTrash(platform_, requestFor(platform_, item), trash_).result, RemovalResult::Done);
    EXPECT_FALSE(platform_.exists(item));
    EXPECT_THAT(notes(), IsEmpty());
}

} // namespace
} // namespace vellmoor
