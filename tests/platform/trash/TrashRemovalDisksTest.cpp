// Mounts in a Trash, and a Trash on a disk that is read-only or full.
#include "FileContent.h"
#include "ScopedMount.h"
#include "TrashRemovalFixture.h"

#include <gtest/gtest.h>

#include <string>

namespace vellmoor {
namespace {

using test::contentOf;
using test::ScopedMount;

TEST_F(TrashRemoval, AnotherFileSystemBelowIsNotEntered) {
    const Path inner = folder_.folder("Trash/files/item/inner");
    const ScopedMount mount = ScopedMount::memory(inner);
    VELLMOOR_NEEDS_MOUNT(mount);
    ASSERT_TRUE(platform_.createFile(inner / "precious", "text"));
    EXPECT_EQ(removal("item").result, RemovalResult::HoldsMount);
    EXPECT_EQ(contentOf(inner / "precious"), "text");
}

TEST_F(TrashRemoval, AFolderOfTheSameDiskMountedBelowIsNotEntered) {
    folder_.text("mine/precious", "text");
    const Path inner = folder_.folder("Trash/files/item/inner");
    const ScopedMount mount = ScopedMount::bind(folder_ / "mine", inner);
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(removal("item").result, RemovalResult::HoldsMount);
    EXPECT_EQ(contentOf(folder_ / "mine/precious"), "text");
}

TEST_F(TrashRemoval, AnItemThatIsItselfAMountIsRefused) {
    const Path item = folder_.folder("Trash/files/item");
    const ScopedMount mount = ScopedMount::memory(item);
    VELLMOOR_NEEDS_MOUNT(mount);
    ASSERT_TRUE(platform_.createFile(item / "precious", "text"));
    EXPECT_FALSE(remove("item"));
    EXPECT_EQ(contentOf(item / "precious"), "text");
}

TEST_F(TrashRemoval, AReadOnlyFileSystemKeepsItemAndNote) {
    const Path volume = folder_.folder("volume");
    ScopedMount mount = ScopedMount::memory(volume);
    VELLMOOR_NEEDS_MOUNT(mount);
    const TrashFolder trash{volume / ".Trash-0", volume / ".Trash-0/files", volume};
    ASSERT_TRUE(platform_.createFolder(trash.contents));
    ASSERT_TRUE(platform_.createFolder(trash.folder / "info"));
    ASSERT_TRUE(platform_.createFile(trash.contents / "item", "text"));
    ASSERT_TRUE(platform_.createFile(trash.folder / "info/item.trashinfo", "note"));
    mount.makeReadOnly();
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(removal(trash.contents / "item", trash).result, RemovalResult::ReadOnly);
    EXPECT_EQ(contentOf(trash.contents / "item"), "text");
    EXPECT_EQ(contentOf(trash.folder / "info/item.trashinfo"), "note");
}

TEST_F(TrashRemoval, AFullDiskIsEmptied) {
    const Path volume = folder_.folder("volume");
    const ScopedMount mount = ScopedMount::memory(volume, "size=1m,nr_inodes=8");
    VELLMOOR_NEEDS_MOUNT(mount);
    const TrashFolder trash{volume / ".Trash-0", volume / ".Trash-0/files", volume};
    ASSERT_TRUE(platform_.createFolder(trash.contents));
    for (int number = 0; platform_.createFile(trash.contents / std::to_string(number), "x"); ++number) {
    }
    EXPECT_FALSE(platform_.createFolder(volume / "one more"));
    EXPECT_EQ(removal(trash.contents / "0", trash).result, RemovalResult::Done);
    EXPECT_FALSE(platform_.exists(trash.contents / "0"));
    EXPECT_TRUE(platform_.exists(trash.contents / "1"));
}

} // namespace
} // namespace vellmoor
