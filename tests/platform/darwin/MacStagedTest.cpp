// What the Mac's platform asks of Foundation and AppKit, and what it makes of their answers. The answers are those of
// tests/support/foundation: they show that the right question is asked, not what a Mac would say.
#include "DarwinSystem.h"
#include "MacHost.h"
#include "MacPlatform.h"
#include "Stage.h"
#include "TemporaryFolder.h"
#include "programs/QuitAnswers.h"
#include "trash/TrashSession.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace vellmoor {
namespace {

using namespace std::chrono_literals;
using test::stage;
using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class MacStaged : public ::testing::Test {
protected:
    void SetUp() override { test::resetStage(); }

    static MemoryApp applicationAt(const Path& bundle) {
        MemoryApp app;
        app.path = bundle;
        return app;
    }

    [[nodiscard]] Removal toTrash(const Path& path) const {
        return platform_.trashSession({})->moveToTrash({.path = path, .identity = platform_.identity(path)});
    }

    test::TemporaryFolder folder_;
    MacPlatform platform_;
};

TEST_F(MacStaged, TheHomeIsTheAccounts) {
    EXPECT_EQ(mac::homeFolder(), "/Users/anna");
}

TEST_F(MacStaged, ATrashedItemGoesToTheTrashAndNothingIsReplacedThere) {
    stage().trash = folder_.folder("Trash");
    folder_.text("Trash/a.txt", "old");
    const Removal moved = toTrash(folder_.text("a.txt", "new"));
    EXPECT_EQ(moved.result, RemovalResult::Done);
    EXPECT_EQ(moved.place, folder_ / "Trash/a 2.txt");
    EXPECT_FALSE(std::filesystem::exists(folder_ / "a.txt"));
    EXPECT_EQ(platform_.fileContents(folder_ / "Trash/a.txt", 10), "old");
    EXPECT_EQ(platform_.fileContents(folder_ / "Trash/a 2.txt", 10), "new");
}

TEST_F(MacStaged, AVolumeWithoutTrashFailsInTheSystemsWordsAndTheFileStays) {
    stage().trashFailure = "The volume has no Trash.";
    const Path file = folder_.text("a.txt", "kept");
    EXPECT_EQ(toTrash(file).reason, "The volume has no Trash.");
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST_F(MacStaged, AStrangerThatCameBetweenIsPutBack) {
    stage().trash = folder_.folder("Trash");
    const Path item = folder_.text("a.txt", "shown");
    stage().beforeTrash = [&] {
        folder_.text("other", "not shown");
        std::filesystem::rename(folder_ / "other", item);
    };
    EXPECT_EQ(toTrash(item).result, RemovalResult::Changed);
    EXPECT_EQ(platform_.fileContents(item, 100), "not shown");
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "Trash"));
}

TEST_F(MacStaged, WhatChangedBeforeIsNotMovedAtAll) {
    stage().trash = folder_.folder("Trash");
    const Path item = folder_.text("a.txt", "shown");
    const RemovalRequest request{.path = item, .identity = platform_.identity(item)};
    folder_.text("a.txt", "longer than what was shown");
    EXPECT_EQ(platform_.trashSession({})->moveToTrash(request).result, RemovalResult::Changed);
    EXPECT_TRUE(std::filesystem::is_empty(folder_ / "Trash"));
    EXPECT_EQ(platform_.trashSession({})->moveToTrash({.path = folder_ / "gone", .identity = {}}).result,
              RemovalResult::Vanished);
}

TEST_F(MacStaged, TheNextVolumeOfTheSameNumberIsAnother) {
    const Path item = folder_.text("a.txt", "");
    stage().volumeNumber = "8A3B";
    const auto first = platform_.identity(item);
    EXPECT_EQ(platform_.identity(item)->device, first->device);
    stage().volumeNumber = "91F0";
    EXPECT_NE(platform_.identity(item)->device, first->device);
    EXPECT_EQ(platform_.identity(item)->inode, first->inode);
    EXPECT_FALSE(platform_.identity(folder_ / "gone"));
}

TEST_F(MacStaged, ATrashedItemGoesBackToItsPlaceAndReplacesNothing) {
    stage().trash = folder_.folder("Trash");
    const Path file = folder_.text("gone/a", "words");
    const Removal removal = toTrash(file);
    ASSERT_EQ(removal.result, RemovalResult::Done);
    std::filesystem::remove(file.parent_path());
    const ReturnRequest request{
        .place = removal.place, .identity = *platform_.identity(removal.place), .path = file, .parentModes = {0705}};
    const TrashFolder trash{.folder = stage().trash, .contents = stage().trash, .anchor = stage().trash};
    EXPECT_EQ(platform_.trashSession({})->putBack(request, trash).result, ReturnResult::Done);
    EXPECT_EQ(platform_.fileContents(file, 10), "words");
    EXPECT_EQ(platform_.facts(file.parent_path())->mode, 0705U);
    ASSERT_EQ(toTrash(file).result, RemovalResult::Done);
    (void)folder_.text("gone/a", "another");
    EXPECT_EQ(platform_.trashSession({})->putBack(request, trash).result, ReturnResult::NameTaken);
    EXPECT_EQ(platform_.fileContents(removal.place, 10), "words");
}

TEST_F(MacStaged, ADiskIsKnownByItsVolumesNumberAndFreesWhatWasRemovedLater) {
    stage().volumes = {{.path = "/Volumes/Stick", .name = "Stick"}};
    stage().volumeNumber = "1234";
    EXPECT_EQ(platform_.disk("/Volumes/Stick/a"),
              (Disk{.name = "1234", .mount = "/Volumes/Stick", .keepsInodes = true, .isCopyOnWrite = true}));
    stage().volumes.clear();
    EXPECT_EQ(platform_.disk("/Volumes/Stick/a"), std::nullopt);
    EXPECT_EQ(platform_.systemRun(), platform_.systemRun()) << "identities hold from one start to the next";
}

TEST_F(MacStaged, AFailureIsLoggedWithItsCodeAndWithoutTheUsersNames) {
    test::takeLog();
    stage().trashFailure = "\"secret.txt\" could not be moved.";
    EXPECT_EQ(toTrash(folder_.text("secret.txt", "")).result, RemovalResult::Failed);
    EXPECT_THAT(test::takeLog(),
                ElementsAre("org.vellmoor.Vellmoor/files: Moving to the Trash in NSCocoaErrorDomain failed (3328): "
                            "<private>"));
    EXPECT_EQ(platform_.commandResult(folder_ / "secret tool", {}).status, -1);
    EXPECT_THAT(test::takeLog(), ElementsAre(StartsWith("org.vellmoor.Vellmoor/tools: Starting a tool in ")));
}

// A slash at the end would make a link be followed.
TEST_F(MacStaged, NoAddressIsThatOfAFolder) {
    stage().trash = folder_.folder("Trash");
    stage().addresses.clear();
    EXPECT_EQ(toTrash(folder_.folder("some folder")).result, RemovalResult::Done);
    EXPECT_TRUE(platform_.createFolder(folder_ / "new"));
    EXPECT_TRUE(platform_.moveItem(folder_ / "new", folder_ / "newer"));
    EXPECT_THAT(stage().addresses, Not(IsEmpty()));
    EXPECT_THAT(stage().addresses, ::testing::Each(StartsWith("file ")));
}

TEST_F(MacStaged, OnlyVolumesThatTheSystemShowsAreNamed) {
    stage().volumes = {{.path = "/", .name = "Macintosh HD"},
                       {.path = "/System/Volumes/VM", .name = "VM", .isHidden = true},
                       {.path = "/Volumes/Stick", .name = std::nullopt}};
    EXPECT_THAT(platform_.mountedVolumes(),
                ElementsAre(::testing::AllOf(Field(&Volume::path, "/"), Field(&Volume::name, "Macintosh HD")),
                            ::testing::AllOf(Field(&Volume::path, "/Volumes/Stick"), Field(&Volume::name, "Stick"))));
}

TEST_F(MacStaged, RoomIsWhatTheSystemWouldFreeForSomethingImportant) {
    stage().totalBytes = 1'000;
    stage().plainBytes = 100;
    stage().importantBytes = 300;
    const auto capacity = platform_.capacity("/Users/anna");
    ASSERT_TRUE(capacity);
    EXPECT_EQ(capacity->totalBytes, 1'000);
    EXPECT_EQ(capacity->availableBytes, 300);
}

TEST_F(MacStaged, WithoutOneOfItsNumbersThereIsNoCapacity) {
    stage().totalBytes = 1'000;
    EXPECT_FALSE(platform_.capacity("/Users/anna"));
    stage() = {};
    stage().importantBytes = 300;
    EXPECT_FALSE(platform_.capacity("/Users/anna"));
}

TEST_F(MacStaged, APackageIsOneByItsExtensionOrByFindersMark) {
    stage().packages = {".app"};
    const test::DarwinSystem darwin({.bundles = {"marked"}});
    EXPECT_TRUE(platform_.isPackage(folder_.folder("A.app")));
    EXPECT_TRUE(platform_.isPackage(folder_.folder("marked")));
    EXPECT_FALSE(platform_.isPackage(folder_.folder("plain")));
    EXPECT_FALSE(platform_.isPackage(folder_.folder("v1.2")));
    EXPECT_FALSE(platform_.isPackage(folder_.link("marked", "link")));
    EXPECT_EQ(darwin.unguardedCalls(), 0U);
}

TEST_F(MacStaged, OnlyWhatStillRunsIsRunning) {
    stage().applications = {
        {.pid = 10, .name = "Mail", .identifier = "com.apple.mail", .bundle = "/Applications/Mail.app"},
        {.pid = 11, .name = "Gone", .isTerminated = true},
        {.pid = 12, .name = "tool", .isActive = true}};
    const auto running = platform_.runningApplications();
    ASSERT_THAT(running, SizeIs(2));
    EXPECT_EQ(running[0].pid, 10);
    EXPECT_EQ(running[0].name, "Mail");
    EXPECT_EQ(running[0].bundleIdentifier, "com.apple.mail");
    EXPECT_EQ(running[0].bundlePath, "/Applications/Mail.app");
    EXPECT_FALSE(running[0].isActive);
    EXPECT_EQ(running[1].bundlePath, Path());
    EXPECT_EQ(running[1].bundleIdentifier, std::nullopt);
    EXPECT_TRUE(running[1].isActive);
}

TEST_F(MacStaged, EveryProcessOfTheApplicationIsAskedToQuitAndNoOther) {
    const Path bundle = "/Applications/A.app";
    stage().applications = {{.pid = 1, .bundle = bundle, .takesRequests = false},
                            {.pid = 2, .bundle = "/Applications/B.app"},
                            {.pid = 3, .bundle = bundle, .isTerminated = true},
                            {.pid = 4, .bundle = bundle}};
    EXPECT_EQ(platform_.requestQuit(applicationAt("/Applications//A.app/")), QuitOutcome::Requested);
    EXPECT_THAT(stage().applications,
                ElementsAre(Field(&test::StagedApplication::requests, 1), Field(&test::StagedApplication::requests, 0),
                            Field(&test::StagedApplication::requests, 0),
                            Field(&test::StagedApplication::requests, 1)));
}

TEST_F(MacStaged, AnApplicationWithoutAPlaceDoesNotRun) {
    EXPECT_EQ(platform_.requestQuit(MemoryApp()), QuitOutcome::NotRunning);
}

TEST_F(MacStaged, ADateIsToldShortlyInEachLanguageAndFromNow) {
    const TimePoint now = std::chrono::system_clock::now();
    EXPECT_EQ(platform_.relativeDate(now - 60s, now, AppLanguage::english), "2 en -60");
    EXPECT_EQ(platform_.relativeDate(now - 60s, now, AppLanguage::chinese), "2 zh-Hans -60");
}

TEST_F(MacStaged, AWorkerIsAsUrgentAsTheUserWhoWaitsForIt) {
    std::thread([&] {
        platform_.enterWorker();
        EXPECT_EQ(test::urgencyOfThread(), 0x19U); // QOS_CLASS_USER_INITIATED
    }).join();
}

TEST(QuitAnswers, NoProcessIsNotRunningAndNoWillingOneDoesNotRespond) {
    EXPECT_EQ(mac::quitOutcome({}), QuitOutcome::NotRunning);
    EXPECT_EQ(mac::quitOutcome({false, false}), QuitOutcome::NoResponse);
    EXPECT_EQ(mac::quitOutcome({false, true}), QuitOutcome::Requested);
}

} // namespace
} // namespace vellmoor
