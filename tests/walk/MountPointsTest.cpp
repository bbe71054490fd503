#include "MountPoints.h"

#include <gmock/gmock.h>

namespace vellmoor::walk::test {
namespace {

const MountPoints* lookUp(const std::unique_ptr<const MountPoints>& tree, std::initializer_list<const char*> names) {
    const MountPoints* node = tree.get();
    for (const char* name : names) {
        node = node != nullptr ? node->find(name) : nullptr;
    }
    return node;
}

TEST(MountPoints, AMountBelowTheRootIsFoundNameByName) {
    const auto tree =
        MountPoints::parse("36 35 98:0 / /home/ann/disk/usb rw,noatime - ext4 /dev/sdb1 rw\n", "/home/ann");
    const MountPoints* const disk = lookUp(tree, {"disk"});
    ASSERT_NE(disk, nullptr);
    EXPECT_FALSE(disk->isMountPoint());
    ASSERT_NE(disk->find("usb"), nullptr);
    EXPECT_TRUE(disk->find("usb")->isMountPoint());
    EXPECT_EQ(disk->find("us"), nullptr);
}

TEST(MountPoints, PlacesMayBeGivenAsTheyAre) {
    const auto tree = MountPoints::among({"/", "/Users/ann", "/Users/anna/x", "/Users/ann/a disk\\040"}, "/Users/ann");
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(lookUp(tree, {"x"}), nullptr);
    ASSERT_NE(lookUp(tree, {"a disk\\040"}), nullptr);
    EXPECT_TRUE(lookUp(tree, {"a disk\\040"})->isMountPoint());
    EXPECT_EQ(MountPoints::among({}, "/"), nullptr);
}

TEST(MountPoints, MountsOutsideAndTheRootItselfDoNotCount) {
    const auto tree = MountPoints::parse("1 1 8:1 / / rw - ext4 /dev/a rw\n"
                                         "2 1 8:2 / /home rw - ext4 /dev/b rw\n"
                                         "3 1 8:3 / /home/ann rw - ext4 /dev/c rw\n"
                                         "4 1 8:4 / /home/annabel/x rw - ext4 /dev/d rw\n",
                                         "/home/ann");
    EXPECT_EQ(tree, nullptr);
}

TEST(MountPoints, OctalEscapesAreUndone) {
    const auto tree = MountPoints::parse("5 1 0:40 / /r/a\\040b\\011c\\012d\\134e rw - fuse x rw\n", "/r");
    const MountPoints* const node = lookUp(tree, {"a b\tc\nd\\e"});
    ASSERT_NE(node, nullptr);
    EXPECT_TRUE(node->isMountPoint());
}

TEST(MountPoints, ABackslashWithoutThreeOctalDigitsStandsForItself) {
    EXPECT_NE(lookUp(MountPoints::parse("5 1 0:40 / /r/a\\09 rw - fuse x rw\n", "/r"), {"a\\09"}), nullptr);
    EXPECT_NE(lookUp(MountPoints::parse("5 1 0:40 / /r/a\\04", "/r"), {"a\\04"}), nullptr);
}

TEST(MountPoints, BelowTheSystemsRootEveryMountCounts) {
    const auto tree = MountPoints::parse("1 1 8:1 / / rw - ext4 /dev/a rw\n2 1 0:5 / /proc rw - proc proc rw\n", "/");
    ASSERT_NE(lookUp(tree, {"proc"}), nullptr);
    EXPECT_TRUE(lookUp(tree, {"proc"})->isMountPoint());
}

TEST(MountPoints, AMountInsideAMountIsKept) {
    const auto tree = MountPoints::parse("1 1 8:1 / /r/a rw - ext4 x rw\n2 1 8:2 / /r/a/b rw - ext4 y rw\n", "/r");
    ASSERT_NE(lookUp(tree, {"a", "b"}), nullptr);
    EXPECT_TRUE(lookUp(tree, {"a"})->isMountPoint());
    EXPECT_TRUE(lookUp(tree, {"a", "b"})->isMountPoint());
}

TEST(MountPoints, BrokenLinesAreNoMounts) {
    EXPECT_EQ(MountPoints::parse("", "/r"), nullptr);
    EXPECT_EQ(MountPoints::parse("\n\n", "/r"), nullptr);
    EXPECT_EQ(MountPoints::parse("1 2 3", "/r"), nullptr);
}

TEST(MountPlaces, AreReadWithTheirEscapesInTheirOrder) {
    const std::string mountinfo = "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                                  "30 22 8:2 /sub /media/My\\040Stick\\134x rw,nosuid shared:1 - vfat /dev/sdb1 rw\n";
    EXPECT_EQ(mountPlaces(mountinfo), (std::vector<std::string>{"/", "/media/My Stick\\x"}));
    EXPECT_TRUE(mountPlaces("").empty());
}

} // namespace
} // namespace vellmoor::walk::test
