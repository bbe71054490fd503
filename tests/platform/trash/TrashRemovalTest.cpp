// An item goes with its note, and nothing else goes.
#include "FileContent.h"
#include "ScopedUnprivileged.h"
#include "TrashRemovalFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

using test::contentOf;
using test::ScopedUnprivileged;

TEST_F(TrashRemoval, AnItemGoesWithItsRestoreNote) {
    folder_.file("Trash/files/item");
    const Path itsNote = note("item");
    const Path otherNote = note("other");
    EXPECT_TRUE(remove("item"));
    EXPECT_FALSE(isIn("item"));
    EXPECT_FALSE(platform_.exists(itsNote));
    EXPECT_TRUE(platform_.exists(otherNote));
}

TEST_F(TrashRemoval, AnItemWithoutNoteGoesToo) {
    folder_.file("Trash/files/item/inner");
    EXPECT_TRUE(remove("item"));
    EXPECT_FALSE(isIn("item"));
}

TEST_F(TrashRemoval, ATrashWithoutNotesFolderIsEmptiedToo) {
    ::rmdir((trash_.folder / "info").c_str());
    folder_.file("Trash/files/item");
    EXPECT_TRUE(remove("item"));
}

TEST_F(TrashRemoval, APartOfAnItemGoesAloneAndTheNoteStays) {
    folder_.file("Trash/files/item/part");
    folder_.file("Trash/files/item/rest");
    const Path itsNote = note("item");
    const Path confusing = note("part");
    EXPECT_TRUE(remove("item/part"));
    EXPECT_FALSE(isIn("item/part"));
    EXPECT_TRUE(isIn("item/rest"));
    EXPECT_TRUE(platform_.exists(itsNote));
    EXPECT_TRUE(platform_.exists(confusing));
}

TEST_F(TrashRemoval, ANameTooLongForANoteGoes) {
    const std::string name(250, 'n');
    folder_.file("Trash/files/" + name);
    EXPECT_TRUE(remove(name));
    EXPECT_FALSE(isIn(name));
}

TEST_F(TrashRemoval, AnItemThatIsGoneAlreadyKeepsItsNoteForWhoeverTookIt) {
    const Path itsNote = note("gone");
    EXPECT_EQ(removal("gone").result, RemovalResult::Vanished);
    EXPECT_TRUE(platform_.exists(itsNote));
}

TEST_F(TrashRemoval, AnItemThatIsGoneWhileItsNoteStaysIsToldSo) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can make a folder that nobody can change";
    }
    folder_.file("Trash/files/item");
    folder_.file("Trash/info/item.trashinfo/a folder in its place");
    const Removal done = removal("item");
    EXPECT_EQ(done.result, RemovalResult::Done);
    EXPECT_TRUE(done.noteRemains);
    EXPECT_FALSE(isIn("item"));
}

TEST_F(TrashRemoval, OnlyWhatLiesBelowTheContentsIsRemoved) {
    folder_.file("mine/file");
    folder_.file("Trash/filesystem/file");
    const Path itsNote = note("x");
    EXPECT_NE(removal(folder_ / "mine/file", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents, trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents / "", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents / "..", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents / "../info/x.trashinfo", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(folder_ / "Trash/filesystem/file", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal("item", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal("", trash_).result, RemovalResult::Done);
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
    EXPECT_TRUE(platform_.exists(folder_ / "Trash/filesystem/file"));
    EXPECT_TRUE(platform_.exists(itsNote));
}

TEST_F(TrashRemoval, AnItemIsNotReachedThroughALink) {
    folder_.file("mine/file");
    folder_.link(folder_ / "mine", "Trash/files/link");
    EXPECT_FALSE(remove("link/file"));
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
    const TrashFolder linked{folder_ / "other", folder_.link(folder_ / "mine", "other/files"), folder_.path()};
    EXPECT_EQ(removal(linked.contents / "file", linked).reason, "Too many levels of symbolic links");
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
}

TEST_F(TrashRemoval, AnotherFileThanTheOneShownStays) {
    const Path shown = folder_.text("Trash/files/report.odt", "the old one");
    const RemovalRequest request = test::requestFor(platform_, shown);
    std::filesystem::rename(shown, folder_ / "restored");
    folder_.text("Trash/files/report.odt", "the new one");
    const Path itsNote = note("report.odt");
    EXPECT_EQ(test::removeFromTrash(platform_, request, trash_).result, RemovalResult::Changed);
    EXPECT_EQ(contentOf(shown), "the new one");
    EXPECT_TRUE(platform_.exists(itsNote));
}

TEST_F(TrashRemoval, ATrashThatIsSwappedWhileItIsEmptiedIsNotFollowedByItsPath) {
    folder_.text("Trash/files/item", "shown");
    folder_.text("precious/files/item", "precious");
    folder_.folder("precious/info");
    const auto session = platform_.trashSession({.home = trash_, .known = {trash_}, .volumeForms = {}, .anchors = {}});
    const RemovalRequest request = test::requestFor(platform_, trash_.contents / "item");
    std::filesystem::rename(trash_.folder, folder_ / "moved away");
    std::filesystem::rename(folder_ / "precious", trash_.folder);
    EXPECT_EQ(session->removeFromTrash(request, trash_).result, RemovalResult::Done);
    EXPECT_EQ(contentOf(trash_.contents / "item"), "precious");
    EXPECT_FALSE(platform_.exists(folder_ / "moved away/files/item"));
}

TEST_F(TrashRemoval, AClosedTrashGetsItsModeBack) {
    folder_.file("Trash/files/item");
    note("item");
    folder_.setMode("Trash/info", 0500);
    folder_.setMode("Trash/files", 0500);
    {
        const ScopedUnprivileged unprivileged;
        const Removal done = removal("item");
        EXPECT_EQ(done.result, RemovalResult::Done);
        EXPECT_FALSE(done.noteRemains);
    }
    struct stat status{};
    ::lstat(trash_.contents.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0500U);
    ::lstat((trash_.folder / "info").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0500U);
    EXPECT_TRUE(platform_.entries(trash_.folder / "info")->empty());
}

} // namespace
} // namespace vellmoor
