// A clean on disks that are full, mounted below a target, or closed, as only Linux lets a test make them.
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"
#include "clean/CleaningFixture.h"
#include "trash/Trash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LinuxCleaningOfDisks : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const TrashFolder trash = home.platform.homeTrash();
};

TEST_F(LinuxCleaningOfDisks, AFolderThatHoldsAMountIsKept) {
    home.text("precious/document", "precious");
    const Path inner = home.folder(".cache/app/mount");
    const ScopedMount mount = ScopedMount::bind(home.place("precious"), inner);
    VELLMOOR_NEEDS_MOUNT(mount);
    const CleanupReport report = clean(home, std::vector{shownRow(home, {home.place(".cache/app")})});
    EXPECT_THAT(report.notes, ElementsAre("app: holds a mounted disk and was kept"));
    EXPECT_EQ(report.keptCount, 1);
    EXPECT_EQ(contentOf(inner / "document"), "precious");
}

TEST_F(LinuxCleaningOfDisks, AFullDiskIsToldOnceAndNothingElseIsTried) {
    const ScopedMount mount = ScopedMount::memory(home.home, "size=1m,nr_inodes=16");
    VELLMOOR_NEEDS_MOUNT(mount);
    std::vector<Path> files;
    for (const char* name : {"a", "b", "c"}) {
        files.push_back(home.text(name, "words"));
    }
    home.folder(trash.contents);
    home.folder(trash.folder / "info");
    const CleanupItem row = shownRow(home, files);
    for (int number = 0; home.platform.createFile(home.home / ("filler" + std::to_string(number)), ""); ++number) {
    }
    const CleanupReport report = clean(home, std::vector{row});
    EXPECT_THAT(report.failures, ElementsAre("a: This disk is full. Empty the Trash first"));
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_EQ(report.attemptedCount, 3);
    EXPECT_EQ(report.outcomes.back().fate, CleanupFate::Untried);
    for (const Path& file : files) {
        EXPECT_EQ(contentOf(file), "words");
    }
}

TEST_F(LinuxCleaningOfDisks, AClosedNotesFolderDoesNotMakeAnItemCountAsNothing) {
    const Path item = home.text(trash.contents / "item", "words");
    home.text(trash.folder / "info/item.trashinfo", "[Trash Info]\n");
    home.setMode(trash.folder / "info", 0500);
    CleanupReport report;
    {
        const ScopedUnprivileged unprivileged;
        report = clean(home, std::vector{shownRow(home, {item})});
    }
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.processedBytes, 100);
    EXPECT_FALSE(home.has(item));
}

TEST_F(LinuxCleaningOfDisks, ATrashThatIsALinkIsSaidToBeOne) {
    home.folder(trash.folder);
    home.link(home.folder("Documents"), trash.contents);
    EngineContext context = home.context();
    const std::vector<CleanupItem> rows = trashItems(context);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.front().description, trash.contents.string() + " is a link, which Vellmoor does not follow.");
    EXPECT_FALSE(rows.front().isCleanable);
}

} // namespace
} // namespace vellmoor::test
