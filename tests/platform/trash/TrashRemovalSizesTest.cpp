// The list of sizes that a Trash keeps beside its items.
#include "FileContent.h"
#include "ScopedMount.h"
#include "TrashRemovalFixture.h"
#include "trash/TrashNotes.h"

#include <gtest/gtest.h>

#include <string>

namespace vellmoor {
namespace {

using test::contentOf;
using test::ScopedMount;

TEST_F(TrashRemoval, TheItemsLineLeavesTheListOfSizes) {
    folder_.file("Trash/files/my folder/file");
    folder_.text("Trash/directorysizes", "10 1700000000 other\n20 1700000000 my%20folder\n30 1700000000 my\n");
    EXPECT_TRUE(remove("my folder"));
    EXPECT_EQ(contentOf(trash_.folder / "directorysizes"), "10 1700000000 other\n30 1700000000 my\n");
    EXPECT_EQ(platform_.entries(trash_.folder)->size(), 3U) << "the temporary file stayed";
}

TEST_F(TrashRemoval, AListOfSizesThatCannotBeRewrittenIsNoFailure) {
    const Path volume = folder_.folder("volume");
    const ScopedMount mount = ScopedMount::memory(volume, "size=64k");
    VELLMOOR_NEEDS_MOUNT(mount);
    const TrashFolder trash{volume / ".Trash-0", volume / ".Trash-0/files", volume};
    ASSERT_TRUE(platform_.createFolder(trash.contents));
    ASSERT_TRUE(platform_.createFile(trash.contents / "item", ""));
    const std::string sizes = "1 1 item\n" + std::string(40'000, 'x') + "\n";
    ASSERT_TRUE(platform_.createFile(trash.folder / "directorysizes", sizes));
    ASSERT_TRUE(platform_.createFile(volume / "filler", std::string(20'000, 'x')));
    EXPECT_EQ(removal(trash.contents / "item", trash).result, RemovalResult::Done);
    EXPECT_FALSE(platform_.exists(trash.contents / "item"));
    EXPECT_EQ(contentOf(trash.folder / "directorysizes"), sizes);
    EXPECT_EQ(platform_.entries(trash.folder)->size(), 2U) << "the temporary file stayed";
}

TEST_F(TrashRemoval, AListOfSizesThatIsALinkIsLeftAlone) {
    folder_.file("Trash/files/item");
    const Path mine = folder_.text("mine", "1 1 item\n");
    folder_.link(mine, "Trash/directorysizes");
    EXPECT_TRUE(remove("item"));
    EXPECT_EQ(contentOf(mine), "1 1 item\n");
    EXPECT_TRUE(platform_.facts(trash_.folder / "directorysizes")->isSymlink);
}

TEST(DirectorySizes, OnlyTheDecodedLastFieldIsCompared) {
    EXPECT_EQ(withoutDirectorySizes("1 2 a%41b\n", {"aAb"}), "");
    EXPECT_EQ(withoutDirectorySizes("1 2 a%4\n", {"a%4"}), "");
    EXPECT_EQ(withoutDirectorySizes("1 2 a%zz\n", {"a%zz"}), "");
    EXPECT_EQ(withoutDirectorySizes("a 2 b\n", {"a"}), "a 2 b\n");
    EXPECT_EQ(withoutDirectorySizes("garbage\n\n1 2 x", {"x", "y"}), "garbage\n\n");
    EXPECT_EQ(withoutDirectorySizes("", {"x"}), "");
}

} // namespace
} // namespace vellmoor
