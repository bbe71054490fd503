// The way back by restore notes, and out of the Trash of a disk, as only Linux has them.
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"
#include "disk/Paths.h"
#include "restore/RestoreFixture.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LinuxRestoring : public TakingBack {};
INSTANTIATE_TEST_SUITE_P(Systems, LinuxRestoring, ::testing::Values(System::Linux), systemName);

TEST_P(LinuxRestoring, TheNoteAndTheSizeGoWithTheItem) {
    const Path folder = home.text("Stuff/cache/a", "words").parent_path();
    const CleanupReport report = cleaned({folder});
    home.text(trash.folder / "directorysizes", "4096 1 cache\n8192 2 other\n");
    ASSERT_TRUE(home.has(trash.folder / "info/cache.trashinfo"));
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_FALSE(home.has(trash.folder / "info/cache.trashinfo"));
    EXPECT_EQ(contentOf(trash.folder / "directorysizes"), "8192 2 other\n");
}

TEST_P(LinuxRestoring, WhatSomebodyElseTrashedGoesBackByItsNote) {
    const Path place = home.text(trashed("odd name"), "theirs");
    const Path origin = home.home / "Gone/odd \xFF name";
    const Path note = home.text(trash.folder / "info/odd name.trashinfo",
                                "[Trash Info]\nPath=" + home.home.string() +
                                    "/Gone/odd%20%FF%20name\nDeletionDate=2026-01-01T00:00:00\n");
    const RestoreReport restored = backFromTrash({place});
    EXPECT_THAT(restored.failures, IsEmpty());
    EXPECT_EQ(contentOf(origin), "theirs");
    EXPECT_GT(restored.restoredBytes, 0);
    EXPECT_FALSE(home.has(note));
}

TEST_P(LinuxRestoring, WithoutAValidNoteItStays) {
    const std::vector<std::string> notes{"",
                                         "Path=/x\n",
                                         "[Trash Info]\nPath=relative\n",
                                         "[Trash Info]\nPath=" + home.home.string() + "/../up\n",
                                         "[Trash Info]\nPath=" + home.home.string() + "/a/\n",
                                         "[Trash Info]\nPath=" + home.home.string() + "/%00\n",
                                         "[Trash Info]\nPath=" + trash.contents.string() + "/again\n"};
    for (const std::string& note : notes) {
        const Path place = home.text(trashed("a"), "theirs");
        home.text(trash.folder / "info/a.trashinfo", note);
        const RestoreReport restored = backFromTrash({place});
        EXPECT_EQ(restored.failedCount, 1) << note;
        EXPECT_THAT(restored.failures, ElementsAre(testing::HasSubstr("has no valid Trash note"))) << note;
        EXPECT_EQ(contentOf(place), "theirs");
    }
}

TEST_P(LinuxRestoring, AReadOnlyFolderComesBackAsItWas) {
    home.file("Stuff/closed/a");
    const Path folder = home.place("Stuff/closed");
    const Path place = trashed("closed");
    home.folder(trash.contents);
    std::filesystem::rename(folder, place);
    using std::filesystem::perms;
    std::filesystem::permissions(place, perms::owner_read | perms::owner_exec); // now: it could not have been moved
    home.text(trash.folder / "info/closed.trashinfo", "[Trash Info]\nPath=" + folder.string() + "\n");
    RestoreReport restored;
    {
        const ScopedUnprivileged unprivileged;
        restored = backFromTrash({place});
    }
    EXPECT_THAT(restored.failures, IsEmpty());
    EXPECT_TRUE(home.has("Stuff/closed/a"));
    EXPECT_EQ(modeOf(folder), 0500U);
}

TEST_P(LinuxRestoring, ALinkOnTheWayIsNotFollowed) {
    const Path place = home.text(trashed("a"), "theirs");
    home.folder("Elsewhere");
    home.link(home.place("Elsewhere"), "Stuff");
    home.text(trash.folder / "info/a.trashinfo", "[Trash Info]\nPath=" + home.home.string() + "/Stuff/a\n");
    EXPECT_EQ(backFromTrash({place}).restoredCount, 0);
    EXPECT_FALSE(home.has("Elsewhere/a"));
    EXPECT_EQ(contentOf(place), "theirs");
}

TEST_P(LinuxRestoring, FoldersThatNobodyRemembersGetTheUsualMode) {
    const Path place = home.text(trashed("a"), "theirs");
    home.text(trash.folder / "info/a.trashinfo", "[Trash Info]\nPath=" + home.home.string() + "/New/a\n");
    const mode_t before = ::umask(027);
    EXPECT_EQ(backFromTrash({place}).restoredCount, 1);
    ::umask(before);
    EXPECT_EQ(modeOf(home.place("New")), 0750U);
}

TEST_P(LinuxRestoring, AStickThatIsMountedElsewhereByNowGetsItsThingsBack) {
    const Path here = home.folder("/media/here");
    const Path there = home.folder("/media/there");
    const auto disk = [&](const Path& path) {
        const bool isStick = isAtOrBelow(path, here) || isAtOrBelow(path, there);
        return isStick ? Disk{.name = "stick", .mount = isAtOrBelow(path, here) ? here : there}
                       : Disk{.name = "home", .mount = "/"};
    };
    home.platform.diskOf = disk;
    home.platform.volumes = {{here, ""}};
    CleanupReport report;
    std::optional<ScopedMount> second;
    {
        const ScopedMount first = ScopedMount::disk(home.place("/stick.image"), here);
        VELLMOOR_NEEDS_MOUNT(first);
        report = cleaned({home.text(here / "folder/a", "words")});
        ASSERT_EQ(report.trashedCount, 1) << report.failures.size();
        ASSERT_TRUE(isStrictlyBelow(report.outcomes[0].place, here));
        second.emplace(ScopedMount::bind(here, there));
        VELLMOOR_NEEDS_MOUNT(*second);
    }
    home.platform.volumes.clear();
    EXPECT_EQ(past().cleans.at(0).trashedCount, 0) << "it is not there";
    home.platform.volumes = {{there, ""}};
    home.platform.run = "second";
    EXPECT_EQ(back(report.historyId).restoredCount, 1);
    EXPECT_EQ(contentOf(there / "folder/a"), "words");
}

} // namespace
} // namespace vellmoor::test
