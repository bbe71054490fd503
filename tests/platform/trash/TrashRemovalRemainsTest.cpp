// What cannot go, and what a clean that was killed has left.
#include "FileContent.h"
#include "ScopedUnprivileged.h"
#include "TrashRemovalFixture.h"
#include "disk/Descriptor.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

using test::contentOf;
using test::ScopedUnprivileged;

constexpr uid_t somebodyElse = 4242;

TEST_F(TrashRemoval, AFailureTellsItsCauseAndKeepsTheNote) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder_.file("Trash/files/item/foreign/file");
    ASSERT_EQ(::chown((trash_.contents / "item/foreign").c_str(), somebodyElse, somebodyElse), 0);
    const Path itsNote = note("item");
    const ScopedUnprivileged unprivileged;
    EXPECT_EQ(removal("item").reason, "Permission denied");
    EXPECT_TRUE(isIn("item/foreign/file"));
    EXPECT_TRUE(platform_.exists(itsNote));
}

TEST_F(TrashRemoval, AForeignFoldersModeIsNotTouched) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder_.file("Trash/files/item/foreign/file");
    folder_.setMode("Trash/files/item/foreign", 0555);
    ASSERT_EQ(::chown((trash_.contents / "item/foreign").c_str(), somebodyElse, somebodyElse), 0);
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_FALSE(remove("item"));
    }
    struct stat status{};
    ::lstat((trash_.contents / "item/foreign").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0555U);
}

TEST_F(TrashRemoval, WhatIsLeftOfAnItemGoesBackWithItsNote) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can give files away";
    }
    folder_.file("Trash/files/item/mine");
    folder_.file("Trash/files/item/foreign/file");
    ASSERT_EQ(::chown((trash_.contents / "item/foreign").c_str(), somebodyElse, somebodyElse), 0);
    const Path itsNote = note("item");
    const ScopedUnprivileged unprivileged;
    EXPECT_EQ(removal("item").result, RemovalResult::Failed);
    EXPECT_TRUE(isIn("item/foreign/file"));
    EXPECT_TRUE(platform_.exists(itsNote));
    EXPECT_EQ(platform_.entries(trash_.folder)->size(), 2U) << "a folder of ours stayed";
}

TEST_F(TrashRemoval, WhatAKilledCleanLeftOnItsWayOutComesBack) {
    folder_.text("Trash/expunged/vellmoor-1-1/item", "half");
    folder_.text("Trash/.vellmoor-item-other", "half");
    folder_.text("Trash/.vellmoor-sizes-1", "half");
    folder_.file("Trash/expunged/123456/somebody else's");
    note("item");
    folder_.file("Trash/files/any");
    EXPECT_TRUE(remove("any"));
    EXPECT_EQ(contentOf(trash_.contents / "item"), "half");
    EXPECT_EQ(contentOf(trash_.contents / "other"), "half");
    EXPECT_FALSE(platform_.exists(trash_.folder / ".vellmoor-sizes-1"));
    EXPECT_FALSE(platform_.exists(trash_.folder / "expunged/vellmoor-1-1"));
    EXPECT_TRUE(platform_.exists(trash_.folder / "expunged/123456/somebody else's"));
}

TEST_F(TrashRemoval, WhatAnotherCleanHasInHandIsLeftToIt) {
    const Path other = folder_.text("Trash/expunged/vellmoor-1-1/item", "in hand").parent_path();
    const Descriptor held(::open(other.c_str(), O_RDONLY | O_DIRECTORY));
    ASSERT_EQ(::flock(held.get(), LOCK_EX), 0);
    folder_.file("Trash/files/any");
    EXPECT_TRUE(remove("any"));
    EXPECT_EQ(contentOf(other / "item"), "in hand");
}

} // namespace
} // namespace vellmoor
