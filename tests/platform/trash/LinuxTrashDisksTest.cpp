// Mounts below an item, disks beside the home, and disks without room.
#include "FileContent.h"
#include "LinuxTrashFixture.h"
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>
#include <unistd.h>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using test::contentOf;
using test::requestFor;
using test::ScopedMount;
using test::ScopedUnprivileged;

TEST_F(LinuxTrash, WhatHoldsAMountStays) {
    folder_.text("precious/document", "precious");
    folder_.folder("home/cache/deep/mount");
    const ScopedMount mount = ScopedMount::bind(folder_ / "precious", home_ / "cache/deep/mount");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(move(home_ / "cache").result, RemovalResult::HoldsMount);
    EXPECT_EQ(move(home_ / "cache/deep/mount").result, RemovalResult::HoldsMount);
    EXPECT_EQ(contentOf(home_ / "cache/deep/mount/document"), "precious");
}

TEST_F(LinuxTrash, AMountThatComesWhileTheCleanRunsIsNoticed) {
    const auto session = platform_.trashSession(places());
    EXPECT_EQ(session->moveToTrash(requestFor(platform_, write("first"))).result, RemovalResult::Done);
    folder_.folder("home/cache/mount");
    const ScopedMount mount = ScopedMount::memory(home_ / "cache/mount");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(session->moveToTrash(requestFor(platform_, home_ / "cache")).result, RemovalResult::HoldsMount);
}

TEST_F(LinuxTrash, ADiskThatTakesNoTrashKeepsItsFiles) {
    folder_.folder("home/memory");
    const ScopedMount mount = ScopedMount::memory(home_ / "memory");
    VELLMOOR_NEEDS_MOUNT(mount);
    const Path file = write("memory/file", "mine");
    EXPECT_EQ(move(file).result, RemovalResult::NoTrash);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_FALSE(platform_.exists(home_ / ("memory/.Trash-" + std::to_string(::getuid()))));
}

/// A disk beside the home, as a stick is one.
class LinuxTrashOnAStick : public LinuxTrash {
protected:
    const Path stick_ = folder_.folder("stick");
    ScopedMount disk_ = ScopedMount::disk(folder_ / "image", stick_);
    const std::string user_ = std::to_string(::getuid());
};

TEST_F(LinuxTrashOnAStick, TakesItsFilesItselfWithANoteRelativeToIt) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = folder_.text("stick/a folder/file", "mine");
    const Removal moved = move(file);
    EXPECT_EQ(moved.result, RemovalResult::Done);
    EXPECT_EQ(moved.place, stick_ / (".Trash-" + user_) / "files/file");
    EXPECT_EQ(contentOf(moved.place), "mine");
    EXPECT_THAT(contentOf(stick_ / (".Trash-" + user_) / "info/file.trashinfo"),
                ::testing::HasSubstr("Path=a%20folder/file\n"));
    EXPECT_FALSE(platform_.exists(trash_.contents / "file"));
}

TEST_F(LinuxTrashOnAStick, ASharedTrashIsUsedWhenItIsARealStickyFolder) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    folder_.folder("stick/.Trash");
    EXPECT_EQ(move(folder_.text("stick/first", "1")).place, stick_ / (".Trash-" + user_) / "files/first");
    folder_.setMode("stick/.Trash", 01777);
    EXPECT_EQ(move(folder_.text("stick/second", "2")).place, stick_ / ".Trash" / user_ / "files/second");
    fs::rename(stick_ / ".Trash", stick_ / "shared");
    folder_.link("shared", "stick/.Trash");
    EXPECT_EQ(move(folder_.text("stick/third", "3")).place, stick_ / (".Trash-" + user_) / "files/third");
}

TEST_F(LinuxTrashOnAStick, ATrashThatIsALinkIsNotUsed) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    folder_.folder("stick/precious/files");
    folder_.link("precious", "stick/.Trash-" + user_);
    const Path file = folder_.text("stick/file", "mine");
    EXPECT_EQ(move(file).result, RemovalResult::NoTrash);
    EXPECT_EQ(contentOf(file), "mine");
}

TEST_F(LinuxTrashOnAStick, ThatCannotBeWrittenKeepsItsFiles) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = folder_.text("stick/folder/file", "mine");
    folder_.setMode("stick", 0555);
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_EQ(move(file).result, RemovalResult::NoTrash);
    }
    EXPECT_EQ(contentOf(file), "mine");
}

/// A home on a small disk of its own.
class LinuxTrashOnASmallDisk : public LinuxTrash {
protected:
    void fill() const {
        for (int number = 0; platform_.createFile(home_ / ("filler" + std::to_string(number)), "x"); ++number) {
        }
    }

    ScopedMount disk_ = ScopedMount::memory(home_, "size=1m,nr_inodes=20");
};

TEST_F(LinuxTrashOnASmallDisk, NoRoomForTheNoteIsToldAndNothingMoves) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = write("file", "mine");
    EXPECT_TRUE(takes(write("first")));
    fill();
    EXPECT_EQ(move(file).result, RemovalResult::DiskFull);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_THAT(notes(), ::testing::ElementsAre("first.trashinfo"));
}

TEST_F(LinuxTrashOnASmallDisk, NoRoomForTheTextOfTheNoteLeavesNoEmptyOne) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = write("file", "mine");
    EXPECT_TRUE(takes(write("first")));
    (void)platform_.createFile(home_ / "filler", std::string(900 << 10, 'x'));
    for (int number = 0; platform_.createFile(home_ / "small", std::string(4096, 'x')) && number < 1000; ++number) {
        fs::rename(home_ / "small", home_ / ("small" + std::to_string(number)));
    }
    EXPECT_EQ(move(file).result, RemovalResult::DiskFull);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_THAT(notes(), ::testing::ElementsAre("first.trashinfo"));
}

TEST_F(LinuxTrashOnASmallDisk, ADiskThatBecameReadOnlyIsToldSo) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    EXPECT_TRUE(takes(write("first")));
    const Path file = write("file", "mine");
    disk_.makeReadOnly();
    VELLMOOR_NEEDS_MOUNT(disk_);
    EXPECT_EQ(move(file).result, RemovalResult::ReadOnly);
    EXPECT_EQ(contentOf(file), "mine");
}

} // namespace
} // namespace vellmoor
