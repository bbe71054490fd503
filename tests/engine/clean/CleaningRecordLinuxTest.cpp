// The history of cleans where restore notes, hard links and removals of our own are part of it.
#include "clean/RecordFixture.h"
#include "clean/Recovery.h"
#include "login/StartupItems.h"
#include "service/SystemCleanerService.h"

#include <gmock/gmock.h>

namespace vellmoor::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

class LinuxRecorded : public Recorded {};
INSTANTIATE_TEST_SUITE_P(Systems, LinuxRecorded, ::testing::Values(System::Linux), systemName);

TEST_P(LinuxRecorded, ANoteWhoseItemNeverCameGoesWithTheNextStart) {
    const Path file = home.text("Stuff/a", "1");
    cleanUntil(0, shownRow(home, {file}));
    home.folder(trash.contents);
    const Path note =
        home.text(trash.folder / "info/a.trashinfo", "[Trash Info]\nPath=" + file.string() + "\nDeletionDate=x\n");
    const Path others =
        home.text(trash.folder / "info/b.trashinfo", "[Trash Info]\nPath=" + home.place("b").string() + "\n");
    EngineContext context = home.context();
    recover(context);
    EXPECT_FALSE(home.has(note));
    EXPECT_TRUE(home.has(others)) << "nobody knows whose it is";
    EXPECT_TRUE(home.has(file));
}

TEST_P(LinuxRecorded, SoDoesAnEmptyNoteOfThatName) {
    const Path file = home.text("Stuff/a.tar.gz", "1");
    cleanUntil(0, shownRow(home, {file}));
    home.folder(trash.contents);
    const Path note = home.text(trash.folder / "info/a.tar.3.gz.trashinfo", "");
    const Path others = home.text(trash.folder / "info/a.tar.trashinfo", "");
    EngineContext context = home.context();
    recover(context);
    EXPECT_FALSE(home.has(note));
    EXPECT_TRUE(home.has(others));
}

TEST_P(LinuxRecorded, APathInTwoRowsIsPutBackOnce) {
    const Path file = home.text("Stuff/a", "1");
    CleanupItem row = shownRow(home, {file, file, home.text("Stuff/b", "2")});
    cleanUntil(1, row);
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].trashedCount, 1);
    EXPECT_EQ(past().cleans[0].openCount, 1);
    EXPECT_EQ(back(past().cleans[0].id).attemptedCount, 1);
}

TEST_P(LinuxRecorded, AHardLinkInTheTrashIsNotTakenForTheItem) {
    const Path file = home.text("Stuff/a", "1");
    home.folder(trash.contents);
    std::filesystem::create_hard_link(file, trashed("theirs"));
    home.text(trash.folder / "info/theirs.trashinfo", "[Trash Info]\nPath=" + home.place("theirs").string() + "\n");
    std::filesystem::create_hard_link(file, trashed("noteless"));
    cleanUntil(0, shownRow(home, {file}));
    ASSERT_THAT(past().cleans, SizeIs(1));
    EXPECT_EQ(past().cleans[0].trashedCount, 0);
    EXPECT_EQ(past().cleans[0].openCount, 1);
}

TEST_P(LinuxRecorded, AStopInsideARemovalKeepsTheRestWithItsNote) {
    const Path folder = home.text(trashed("tree/0"), "x").parent_path();
    for (int index = 1; index < 50; ++index) {
        home.text(folder / std::to_string(index), "x");
    }
    const Path note = home.text(trash.folder / "info/tree.trashinfo", "[Trash Info]\nPath=/x\n");
    CancelToken stop;
    EngineContext context(home.platform, home.layout, stop, home.now);
    home.platform.beforeChange = [&](Operation, const Path&) { stop.cancel(); };
    const CleanupReport report =
        vellmoor::clean(context, {shownRow(home, {folder}, CleanerModule::trash)}, std::chrono::milliseconds(0));
    EXPECT_TRUE(report.wasStopped);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_THAT(fates(report), ElementsAre(CleanupFate::Kept));
    EXPECT_TRUE(home.has(folder));
    EXPECT_TRUE(home.has(note));
}

TEST_P(LinuxRecorded, ASwitchedLoginItemHasItsWayBack) {
    home.text(".config/autostart/sync.desktop", "[Desktop Entry]\nType=Application\nName=Sync\nExec=/bin/true\n");
    SystemCleanerService service(home.platform, home.layout);
    EngineContext context = home.context();
    const std::vector<StartupItem> items = startupItems(context);
    ASSERT_THAT(items, SizeIs(1));
    ASSERT_TRUE(service.disableStartupItem(items[0]).succeeded);
    ASSERT_THAT(service.history().switches, SizeIs(1));
    const HistorySwitch change = service.history().switches[0];
    EXPECT_EQ(change.name, items[0].name);
    EXPECT_FALSE(change.isEnabled);
    EXPECT_TRUE(change.canBePutBack);
    ASSERT_TRUE(service.putBackSwitch(change).succeeded);
    EXPECT_TRUE(home.has(".config/autostart/sync.desktop"));
    ASSERT_THAT(service.history().switches, SizeIs(2));
    EXPECT_TRUE(service.history().switches[0].isEnabled);
    EXPECT_FALSE(service.history().switches[1].canBePutBack);
    EXPECT_FALSE(service.putBackSwitch(change).succeeded) << "it is as it was before";
}

} // namespace
} // namespace vellmoor::test
