#include "disk/Mounts.h"

#include "LinuxPlatform.h"
#include "ScopedMount.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vellmoor::mounts {
namespace {

using test::ScopedMount;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::Not;

Mount disk(const char* path) {
    return {.path = path, .fileSystem = "ext4", .options = "rw,relatime", .device = "", .root = "/"};
}

TEST(TrashMounts, AnOrdinaryDiskCounts) {
    EXPECT_TRUE(mayHoldTrash(disk("/media/user/Stick")));
}

TEST(TrashMounts, TheRootNeverCounts) {
    Mount mount = disk("/");
    mount.options = "rw,x-gvfs-trash";
    EXPECT_FALSE(mayHoldTrash(mount));
}

TEST(TrashMounts, ASystemMountCountsOnlyWhenItsOptionsSaySo) {
    Mount mount = disk("/home");
    mount.isSystemInternal = true;
    EXPECT_FALSE(mayHoldTrash(mount));
    mount.options = "rw,x-gvfs-trash,relatime";
    EXPECT_TRUE(mayHoldTrash(mount));
}

TEST(TrashMounts, TheOptionAgainstTrashIsHeededUnlessTheOtherIsThere) {
    Mount mount = disk("/data");
    mount.options = "rw,x-gvfs-notrash";
    EXPECT_FALSE(mayHoldTrash(mount));
    mount.options = "x-gvfs-notrash,x-gvfs-trash";
    EXPECT_TRUE(mayHoldTrash(mount));
}

TEST(TrashMounts, OptionsAreComparedWhole) {
    Mount mount = disk("/data");
    mount.options = "rw,x-gvfs-notrash2,my-x-gvfs-notrash";
    EXPECT_TRUE(mayHoldTrash(mount));
    mount.isSystemInternal = true;
    mount.options = "x-gvfs-trash=yes,ax-gvfs-trash";
    EXPECT_FALSE(mayHoldTrash(mount));
}

TEST(TrashMounts, AReadOnlyMountNeverCounts) {
    Mount mount = disk("/media/user/Disc");
    mount.isReadOnly = true;
    mount.options = "ro,x-gvfs-trash";
    EXPECT_FALSE(mayHoldTrash(mount));
}

TEST(TrashMounts, NetworkAndFuseNeverCountButFuseBlockDevicesDo) {
    for (const char* type : {"nfs", "nfs4", "cifs", "smb3", "9p", "ceph", "glusterfs", "davfs", "fuse", "fuse.sshfs"}) {
        Mount mount = disk("/mnt/far");
        mount.fileSystem = type;
        mount.options = "rw,x-gvfs-trash";
        EXPECT_FALSE(mayHoldTrash(mount)) << type;
    }
    Mount ntfs = disk("/media/user/Windows");
    ntfs.fileSystem = "fuseblk";
    EXPECT_TRUE(mayHoldTrash(ntfs));
}

TEST(TrashMounts, KeepTheSystemsOrderAndAreNamedAfterTheirFolder) {
    Mount hidden = disk("/tmp");
    hidden.isSystemInternal = true;
    const auto volumes = volumesWithTrash({disk("/"), disk("/run/media/user/Zeta"), hidden, disk("/mnt/disk")});
    EXPECT_THAT(volumes, ElementsAre(Field(&Volume::name, "Zeta"), Field(&Volume::name, "disk")));
}

bool isMountPoint(const Path& path) {
    return LinuxPlatform().isMountPoint(path);
}

TEST(MountPoints, TheKernelsOwnAreKnown) {
    EXPECT_TRUE(isMountPoint("/"));
    EXPECT_TRUE(isMountPoint("/proc"));
    EXPECT_FALSE(isMountPoint("/proc/self"));
    EXPECT_FALSE(isMountPoint("/missing"));
}

TEST(MountPoints, AreFoundBehindALinkAboveAndALinkItselfIsNone) {
    const test::TemporaryFolder folder;
    folder.folder("real/disk");
    folder.link("real", "alias");
    folder.link("real/disk", "link to the disk");
    const ScopedMount mount = ScopedMount::memory(folder / "real/disk");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_TRUE(isMountPoint(folder / "real/disk"));
    EXPECT_TRUE(isMountPoint(folder / "alias/disk/"));
    EXPECT_FALSE(isMountPoint(folder / "link to the disk"));
    EXPECT_FALSE(isMountPoint(folder / "real"));
}

TEST(MountPoints, ASecondPlaceOfTheSameDiskIsOne) {
    const test::TemporaryFolder folder;
    folder.folder("here");
    folder.folder("there");
    const ScopedMount mount = ScopedMount::bind(folder / "here", folder / "there");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_TRUE(isMountPoint(folder / "there"));
    EXPECT_FALSE(isMountPoint(folder / "here"));
}

TEST(MountTables, TellWhatIsMountedAtAndBelowAPathAndOnWhatItLies) {
    const test::TemporaryFolder folder;
    folder.folder("a/b/disk/inner");
    folder.folder("a/b/disk2");
    MountTable table;
    EXPECT_FALSE(table.holdsMount(folder / "a"));
    const ScopedMount mount = ScopedMount::memory(folder / "a/b/disk");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_TRUE(table.holdsMount(folder / "a")); // the table notices by itself
    EXPECT_TRUE(table.holdsMount(folder / "a/b/disk"));
    EXPECT_FALSE(table.holdsMount(folder / "a/b/disk2"));
    EXPECT_FALSE(table.holdsMount(folder / "a/b/disk/inner"));
    EXPECT_FALSE(table.holdsMount(folder / "a/b/dis"));
    EXPECT_EQ(table.mountOf(folder / "a/b/disk/inner"), folder / "a/b/disk");
    EXPECT_NE(table.mountOf(folder / "a/b"), folder / "a/b/disk");
}

TEST(MountedVolumes, MemoryIsSystemInternalAndNoVolume) {
    const test::TemporaryFolder folder;
    const Path memory = folder.folder("memory");
    const ScopedMount mount = ScopedMount::memory(memory);
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_THAT(list(), Contains(Field(&Mount::path, memory)));
    EXPECT_THAT(LinuxPlatform().mountedVolumes(), Not(Contains(Field(&Volume::path, memory))));
}

} // namespace
} // namespace vellmoor::mounts
