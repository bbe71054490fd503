#include "Cleaning.h"

#include "EngineHome.h"
#include "ScopedUnprivileged.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace vellmoor::test {
namespace {

using namespace std::chrono_literals;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

CleanupTarget ticked(const Path& path, std::int64_t bytes = 100) {
    CleanupTarget target;
    target.url = path;
    target.name = path.filename();
    target.bytes = bytes;
    target.files = 1;
    target.isSelected = true;
    return target;
}

CleanupItem row(const std::vector<Path>& paths, CleanerModule module = CleanerModule::systemJunk) {
    CleanupItem item;
    item.module = module;
    item.risk = CleanupRisk::safe;
    item.isCleanable = true;
    item.isSelected = true;
    for (const Path& path : paths) {
        item.targets.push_back(ticked(path));
    }
    return item;
}

CleanupReport clean(const EngineHome& home, const std::vector<CleanupItem>& items) {
    ScanContext context = home.context();
    return vellmoor::clean(context, items, 0ms);
}

CleanupReport clean(const EngineHome& home, const std::vector<Path>& paths) {
    return clean(home, std::vector<CleanupItem>{row(paths)});
}

std::string contents(const Path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<Path> changed(const EngineHome& home, Operation operation) {
    std::vector<Path> paths;
    for (const Change& change : home.platform.changes()) {
        if (change.operation == operation) {
            paths.push_back(change.path);
        }
    }
    return paths;
}

/// Rules that hold on both systems.
class Cleaning : public ::testing::TestWithParam<System> {
protected:
    EngineHome home{GetParam()};
    const TrashFolder trash = home.platform.homeTrash();
    const bool isMac = GetParam() == System::Mac;

    Path trashed(const std::string& name) const { return trash.contents / name; }
    void expectRemovedForGood(const Path& path) const {
        EXPECT_FALSE(home.has(path));
        EXPECT_THAT(changed(home, Operation::RemoveFromTrash), ElementsAre(path));
        EXPECT_THAT(changed(home, Operation::MoveToTrash), IsEmpty());
    }
};

INSTANTIATE_TEST_SUITE_P(On, Cleaning, ::testing::Values(System::Mac, System::Linux),
                         [](const auto& instance) { return instance.param == System::Mac ? "Mac" : "Linux"; });

TEST_P(Cleaning, NothingSelectedGivesAnEmptyReport) {
    const CleanupReport report = clean(home, std::vector<CleanupItem>{});
    EXPECT_EQ(report.attemptedCount, 0);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.freedBytes, 0);
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(report.memoryBefore);
    EXPECT_FALSE(report.memoryAfter);
}

TEST_P(Cleaning, AnOrdinaryFileMovesToTheTrash) {
    const Path file = home.text("Stuff/report.txt", "words");
    const CleanupReport report = clean(home, {file});
    EXPECT_FALSE(home.has(file));
    EXPECT_EQ(contents(trashed("report.txt")), "words");
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.freedBytes, 100);
}

TEST_P(Cleaning, AFolderMovesToTheTrashWithEverythingInIt) {
    home.text("Stuff/cache/inner/part", "words");
    clean(home, {home.place("Stuff/cache")});
    EXPECT_FALSE(home.has("Stuff/cache"));
    EXPECT_EQ(contents(trashed("cache/inner/part")), "words");
}

TEST_P(Cleaning, AnItemInTheTrashIsRemovedForGood) {
    const Path item = home.file(trashed("old/inner/file")).parent_path().parent_path();
    const CleanupReport report = clean(home, {item});
    expectRemovedForGood(item);
    EXPECT_EQ(report.removedCount, 1);
}

TEST_P(Cleaning, TheTimeOfTheReportIsTheEndOfTheClean) {
    const TimePoint before = std::chrono::system_clock::now();
    const CleanupReport report = clean(home, {home.file("Stuff/a")});
    EXPECT_GE(report.completedAt, before);
    EXPECT_LE(report.completedAt, std::chrono::system_clock::now());
}

TEST_P(Cleaning, ARowThatIsNotCleanableRemovesNothingAndCountsNothing) {
    const Path file = home.file("Stuff/a");
    CleanupItem item = row({file});
    item.isCleanable = false;
    const CleanupReport report = clean(home, std::vector{item});
    EXPECT_TRUE(home.has(file));
    EXPECT_EQ(report.attemptedCount, 0);
    EXPECT_EQ(report.freedBytes, 0);
}

TEST_P(Cleaning, ARowThatIsNotSelectedRemovesNothing) {
    const Path file = home.file("Stuff/a");
    CleanupItem item = row({file});
    item.isSelected = false;
    const CleanupReport report = clean(home, std::vector{item});
    EXPECT_TRUE(home.has(file));
    EXPECT_EQ(report.attemptedCount, 0);
}

TEST_P(Cleaning, ATargetThatIsNotSelectedStays) {
    const Path stays = home.file("Stuff/stays");
    const Path goes = home.file("Stuff/goes");
    CleanupItem item = row({stays, goes});
    item.targets.front().isSelected = false;
    const CleanupReport report = clean(home, std::vector{item});
    EXPECT_TRUE(home.has(stays));
    EXPECT_FALSE(home.has(goes));
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.freedBytes, 100);
}

TEST_P(Cleaning, WhatAppearedAfterTheScanStays) {
    const Path listed = home.file("Stuff/cache/listed");
    const Path later = home.file("Stuff/cache/later");
    clean(home, {listed});
    EXPECT_TRUE(home.has(later));
}

TEST_P(Cleaning, AVanishedTargetIsNeitherRemovedNorFailedButWasAttempted) {
    const CleanupReport report = clean(home, {home.place("Stuff/gone"), home.file("Stuff/here")});
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.freedBytes, 200);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_THAT(report.failures, IsEmpty());
}

TEST_P(Cleaning, ATargetThatVanishesAtTheLastMomentIsNoFailure) {
    const Path file = home.file("Stuff/here");
    home.platform.beforeChange = [&](Operation, const Path&) { std::filesystem::remove(file); };
    const CleanupReport report = clean(home, {file});
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_THAT(report.failures, IsEmpty());
}

TEST_P(Cleaning, ATargetBelowOneThatIsAlreadyTrashedIsSkipped) {
    const Path inner = home.file("Stuff/cache/inner");
    const CleanupReport report = clean(home, {home.place("Stuff/cache"), inner});
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_TRUE(std::filesystem::exists(trashed("cache/inner")));
}

TEST_P(Cleaning, AFailedMoveLeavesTheFileAndSaysWhy) {
    const Path file = home.text("Stuff/a", "words");
    home.platform.fail(Operation::MoveToTrash, file, "The disk is not ready.");
    const CleanupReport report = clean(home, {file});
    EXPECT_THAT(report.failures, ElementsAre("a: The disk is not ready."));
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.freedBytes, 100); // an estimate from before the clean
    EXPECT_EQ(contents(file), "words");
}

TEST_P(Cleaning, AFailedMoveNeverBecomesADeletion) {
    home.file("Stuff/cache/a");
    home.platform.fail(Operation::MoveToTrash, {}, "Not supported");
    clean(home, {home.place("Stuff/cache")});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_TRUE(home.has("Stuff/cache/a"));
}

TEST_P(Cleaning, AFailedRemovalLeavesTheItemInTheTrash) {
    const Path item = home.text(trashed("old"), "words");
    home.platform.fail(Operation::RemoveFromTrash, item, "The disk is not ready.");
    const CleanupReport report = clean(home, {item});
    EXPECT_THAT(report.failures, ElementsAre("old: The disk is not ready."));
    EXPECT_EQ(contents(item), "words");
}

TEST_P(Cleaning, AFailureDoesNotEndTheClean) {
    const Path first = home.file("Stuff/first");
    const Path second = home.file("Stuff/second");
    home.platform.fail(Operation::MoveToTrash, first, "Busy");
    const CleanupReport report = clean(home, {first, second});
    EXPECT_TRUE(home.has(first));
    EXPECT_FALSE(home.has(second));
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 1);
}

TEST_P(Cleaning, WhatFollowsTheFirstFailureOfADyingDiskStays) {
    const Path first = home.file("Stuff/first");
    const Path second = home.file("Stuff/second");
    const Path third = home.file("Stuff/third");
    home.platform.failAfter(1, "Input/output error");
    const CleanupReport report = clean(home, {first, second, third});
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_THAT(report.failures, ElementsAre("second: Input/output error", "third: Input/output error"));
    EXPECT_TRUE(home.has(second));
    EXPECT_TRUE(home.has(third));
}

TEST_P(Cleaning, SevenFailuresAreCountedAndTheFirstFiveShown) {
    std::vector<Path> files;
    for (int i = 1; i <= 7; ++i) {
        files.push_back(home.file("Stuff/" + std::to_string(i)));
    }
    home.platform.fail(Operation::MoveToTrash, {}, "Busy");
    const CleanupReport report = clean(home, files);
    EXPECT_EQ(report.failedCount, 7);
    EXPECT_THAT(report.failures, ElementsAre("1: Busy", "2: Busy", "3: Busy", "4: Busy", "5: Busy"));
    EXPECT_THAT(files, Each(::testing::Truly([&](const Path& file) { return home.has(file); })));
}

TEST_P(Cleaning, AFileInAFolderThatCannotBeWrittenStaysAndTheCauseIsShown) {
    const Path file = home.text("Stuff/locked/a", "words");
    home.setMode("Stuff/locked", 0555);
    CleanupReport report;
    {
        const ScopedUnprivileged unprivileged;
        report = clean(home, {file});
    }
    EXPECT_EQ(report.failedCount, 1);
    ASSERT_THAT(report.failures, SizeIs(1));
    EXPECT_THAT(report.failures.front(), StartsWith("a: "));
    EXPECT_GT(report.failures.front().size(), std::string("a: ").size());
    EXPECT_EQ(contents(file), "words");
}

TEST_P(Cleaning, ALinkMovesToTheTrashAndWhatItNamesStays) {
    const Path document = home.text("Documents/thesis", "words");
    const Path link = home.link(document, "Stuff/link");
    clean(home, {link});
    EXPECT_FALSE(home.has(link));
    EXPECT_TRUE(std::filesystem::is_symlink(trashed("link")));
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, AFolderThatBecameALinkSinceTheScanMovesAsALink) {
    const Path document = home.text("Documents/thesis", "words");
    const Path target = home.link(document.parent_path(), "Stuff/cache");
    clean(home, {target});
    EXPECT_FALSE(home.has(target));
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, ALinkInTheTrashIsRemovedAsALink) {
    const Path document = home.text("Documents/thesis", "words");
    const Path link = home.link(document.parent_path(), trashed("link"));
    const CleanupReport report = clean(home, {link});
    EXPECT_THAT(report.failures, IsEmpty());
    expectRemovedForGood(link);
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, ALinkInTheTrashThatNamesTheHomeIsRemovedAsALink) {
    const Path document = home.text("Documents/thesis", "words");
    const Path link = home.link(home.home, trashed("link"));
    const CleanupReport report = clean(home, {link});
    EXPECT_THAT(report.failures, IsEmpty());
    expectRemovedForGood(link);
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, LinksDeepInATrashedFolderAreNotFollowed) {
    const Path document = home.text("Documents/thesis", "words");
    home.link(document.parent_path(), trashed("old/inner/folder-link"));
    home.link(document, trashed("old/file-link"));
    const CleanupReport report = clean(home, {trashed("old")});
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_FALSE(home.has(trashed("old")));
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, NothingBehindALinkInTheTrashIsRemovedForGood) {
    home.text("Documents/thesis", "words");
    home.link(home.place("Documents"), trashed("folder"));
    clean(home, {trashed("folder/thesis")});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_TRUE(home.has("Documents/thesis") || home.has(trashed("thesis")));
}

TEST_P(Cleaning, ATrashThatBecameALinkToAnotherFolderIsNotEmptied) {
    const Path document = home.text("Documents/thesis", "words");
    home.file(trashed("thesis"));
    std::filesystem::rename(trash.folder, home.place("moved-away"));
    std::filesystem::create_symlink(home.place("Documents"), trash.folder);
    clean(home, {trashed("thesis")});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, TheHomeAndWhatLiesAboveItAreRefused) {
    const Path document = home.text("Documents/thesis", "words");
    const CleanupReport report = clean(home, {home.home, home.home.parent_path(), "/"});
    EXPECT_EQ(report.failedCount, 3);
    EXPECT_THAT(report.failures,
                ElementsAre(StartsWith(home.home.filename().string() + ": "),
                            StartsWith(home.home.parent_path().filename().string() + ": "), StartsWith("/: ")));
    EXPECT_THAT(home.platform.changes(), IsEmpty());
    EXPECT_EQ(contents(document), "words");
}

TEST_P(Cleaning, EveryProtectedFolderOfTheLayoutIsRefused) {
    std::vector<Path> folders;
    for (const Path& path : home.layout.protectedPaths) {
        folders.push_back(home.folder(path));
    }
    const CleanupReport report = clean(home, folders);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(static_cast<std::size_t>(report.failedCount), folders.size());
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_P(Cleaning, ADetourToAProtectedFolderIsRefused) {
    home.folder("Stuff");
    home.text("Documents/thesis", "words");
    const CleanupReport report = clean(home, {home.home / "Stuff/../Documents/."});
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_TRUE(home.has("Documents/thesis"));
}

TEST_P(Cleaning, AMountPointIsRefused) {
    const Path disk = home.folder("Stuff/disk");
    home.file("Stuff/disk/a");
    home.platform.mountPoints.insert(disk);
    const CleanupReport report = clean(home, {disk});
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("disk: ")));
    EXPECT_TRUE(home.has("Stuff/disk/a"));
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_P(Cleaning, ARelativePathIsRefused) {
    const Path file = home.file("Stuff/a");
    const CleanupReport report = clean(home, {std::filesystem::relative(file)});
    EXPECT_THAT(report.failures, ElementsAre(StartsWith("a: ")));
    EXPECT_TRUE(home.has(file));
}

class MacCleaning : public ::testing::Test {
protected:
    EngineHome home{System::Mac};
};

TEST_F(MacCleaning, AnItemInAVolumesTrashIsRemovedForGood) {
    home.platform.volumes.push_back({home.folder("/Volumes/Stick"), "Stick"});
    const Path item = home.file("/Volumes/Stick/.Trashes/501/old");
    clean(home, {item});
    EXPECT_FALSE(home.has(item));
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), ElementsAre(item));
}

TEST_F(MacCleaning, TheTrashIsRecognisedInTheStandardisedPath) {
    home.file(".Trash/old");
    home.folder("Stuff");
    clean(home, {home.home / "Stuff/../.Trash/./old"});
    EXPECT_FALSE(home.has(".Trash/old"));
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), SizeIs(1));
}

TEST_F(MacCleaning, ADetourOutOfTheTrashIsNoTrash) {
    home.file("Stuff/a");
    home.folder(".Trash");
    clean(home, {home.home / ".Trash/../Stuff/a"});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_TRUE(home.has(".Trash/a"));
}

TEST_F(MacCleaning, ANameThatOnlyBeginsLikeTheTrashIsNoTrash) {
    const Path file = home.file(".Trash-old/a");
    clean(home, {file});
    EXPECT_THAT(changed(home, Operation::MoveToTrash), ElementsAre(file));
}

class LinuxCleaning : public ::testing::Test {
protected:
    EngineHome home{System::Linux};
    const TrashFolder trash = home.platform.homeTrash();
    const std::string user = std::to_string(home.platform.user);

    Path volume(const std::string& path) {
        const Path place = home.folder(path);
        home.platform.volumes.push_back({place, ""});
        return place;
    }
};

TEST_F(LinuxCleaning, TheRestoreNoteAndTheSizeGoWithTheItem) {
    const Path item = home.file(trash.contents / "old file/inner").parent_path();
    const Path note = home.text(trash.folder / "info/old file.trashinfo", "[Trash Info]\nPath=/x\n");
    const Path other = home.text(trash.folder / "info/other.trashinfo", "[Trash Info]\nPath=/y\n");
    home.text(trash.folder / "directorysizes", "4096 1 old%20file\n8192 2 other\n");
    const CleanupReport report = clean(home, {item});
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_FALSE(home.has(item));
    EXPECT_FALSE(home.has(note));
    EXPECT_TRUE(home.has(other));
    EXPECT_EQ(contents(trash.folder / "directorysizes"), "8192 2 other\n");
}

TEST_F(LinuxCleaning, AFailedRemovalKeepsTheRestoreNote) {
    const Path item = home.file(trash.contents / "old");
    const Path note = home.text(trash.folder / "info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    home.platform.fail(Operation::RemoveFromTrash, item, "Busy");
    clean(home, {item});
    EXPECT_TRUE(home.has(item));
    EXPECT_TRUE(home.has(note));
}

TEST_F(LinuxCleaning, AReadOnlyTreeInTheTrashIsRemoved) {
    home.file(trash.contents / "tree/inner/file");
    home.setMode(trash.contents / "tree/inner", 0500);
    home.setMode(trash.contents / "tree", 0500);
    CleanupReport report;
    {
        const ScopedUnprivileged unprivileged;
        report = clean(home, {trash.contents / "tree"});
    }
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(home.has(trash.contents / "tree"));
}

TEST_F(LinuxCleaning, AnItemInEitherFormOfAVolumesTrashIsRemovedForGood) {
    const Path disk = volume("/media/STICK");
    const Path own = home.file(disk / (".Trash-" + user) / "files/a");
    const Path shared = home.file(disk / ".Trash" / user / "files/b");
    home.setMode(disk / ".Trash", 01777);
    const CleanupReport report = clean(home, {own, shared});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), ElementsAre(own, shared));
}

TEST_F(LinuxCleaning, ACopiedStickInTheHomeIsNoTrash) {
    const Path copy = home.text("stick-copy/.Trash-" + user + "/files/a", "words");
    clean(home, {copy});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
    EXPECT_EQ(contents(trash.contents / "a"), "words");
}

TEST_F(LinuxCleaning, TheMacTrashNameMeansNothing) {
    const Path file = home.text(".Trash/a", "words");
    clean(home, {file});
    EXPECT_EQ(contents(trash.contents / "a"), "words");
}

TEST_F(LinuxCleaning, RestoreNotesAreNotRemovedForGood) {
    const Path note = home.text(trash.folder / "info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    clean(home, {note});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
}

TEST_F(LinuxCleaning, AVolumeThatIsNoLongerMountedHasNoTrash) {
    const Path disk = volume("/media/STICK");
    const Path item = home.file(disk / (".Trash-" + user) / "files/a");
    home.platform.volumes.clear();
    clean(home, {item});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
}

TEST_F(LinuxCleaning, AForeignTrashIsNotEmptied) {
    const Path disk = volume("/media/STICK");
    const Path item = home.file(disk / (".Trash-" + user) / "files/a");
    ++home.platform.user;
    clean(home, {item});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
}

TEST_F(LinuxCleaning, TheTrashOfAHomeBehindALinkIsRecognisedByItsRealPath) {
    const Path linked = home.link(home.home, "/linked");
    home.environment = linuxEnvironmentOf(linked);
    home.useEnvironment();
    const Path item = home.file(".local/share/Trash/files/old");
    const Path note = home.text(".local/share/Trash/info/old.trashinfo", "[Trash Info]\nPath=/x\n");
    const CleanupReport report = clean(home, {item});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(home.has(item));
    EXPECT_FALSE(home.has(note));
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), SizeIs(1));
}

TEST_F(LinuxCleaning, TheTrashOfAHomeBehindALinkIsEmptiedThroughTheLink) {
    const Path linked = home.link(home.home, "/linked");
    home.environment = linuxEnvironmentOf(linked);
    home.useEnvironment();
    home.file(".local/share/Trash/files/old");
    const CleanupReport report = clean(home, {linked / ".local/share/Trash/files/old"});
    EXPECT_THAT(report.failures, IsEmpty());
    EXPECT_FALSE(home.has(".local/share/Trash/files/old"));
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), SizeIs(1));
}

TEST_F(LinuxCleaning, AFilesFolderThatIsALinkMakesNoTrashOfWhatItNames) {
    const Path document = home.text("Documents/thesis", "words");
    home.folder(trash.folder);
    home.link(home.place("Documents"), trash.contents);
    clean(home, {document});
    EXPECT_THAT(changed(home, Operation::RemoveFromTrash), IsEmpty());
}

/// The memory row, over scripted tools of macOS.
class MemoryCleaning : public ::testing::Test {
protected:
    MemoryCleaning() {
        home.platform.tools[home.root / "usr/sbin/sysctl"] = [](const auto&) {
            return CommandResult{0, "17179869184\n", ""};
        };
        home.platform.tools[home.root / "usr/bin/vm_stat"] = [this](const auto&) {
            return CommandResult{0,
                                 "Mach Virtual Memory Statistics: (page size of 16384 bytes)\nPages free: " +
                                     std::to_string(freePages) + ".\n",
                                 ""};
        };
    }
    void scriptPurge(CommandResult result) {
        home.platform.tools[home.root / "usr/sbin/purge"] = [this, result](const auto&) {
            freePages += 1000;
            return result;
        };
    }
    static CleanupItem memoryRow() {
        CleanupItem item = row({"/dev/null"}, CleanerModule::memoryOptimization);
        item.targets.front().bytes = 5000;
        return item;
    }

    EngineHome home{System::Mac};
    int freePages = 1000;
};

TEST_F(MemoryCleaning, ASuccessCountsAndCarriesTheFiguresBeforeAndAfter) {
    scriptPurge({0, "", ""});
    const CleanupReport report = clean(home, std::vector{memoryRow()});
    EXPECT_EQ(report.attemptedCount, 1);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 0);
    EXPECT_EQ(report.freedBytes, 5000);
    ASSERT_TRUE(report.memoryBefore && report.memoryAfter);
    EXPECT_EQ(report.memoryBefore->freeBytes, 1000 * 16384);
    EXPECT_EQ(report.memoryAfter->freeBytes, 2000 * 16384);
}

TEST_F(MemoryCleaning, ASuccessWaitsForTheSystemToSettle) {
    scriptPurge({0, "", ""});
    ScanContext context = home.context();
    const auto start = std::chrono::steady_clock::now();
    vellmoor::clean(context, {memoryRow()}, 30ms);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 30ms);
}

TEST_F(MemoryCleaning, AFailureShowsItsMessageAndDoesNotWait) {
    scriptPurge({1, "purge is broken", ""});
    ScanContext context = home.context();
    const CleanupReport report = vellmoor::clean(context, {memoryRow()}, 24h);
    EXPECT_EQ(report.removedCount, 0);
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_THAT(report.failures, ElementsAre("purge is broken"));
    EXPECT_TRUE(report.memoryBefore && report.memoryAfter);
}

TEST_F(MemoryCleaning, ThePlaceholderIsNeverMovedOrRemoved) {
    scriptPurge({0, "", ""});
    clean(home, std::vector{memoryRow()});
    EXPECT_THAT(home.platform.changes(), IsEmpty());
}

TEST_F(MemoryCleaning, FilesAreCleanedBesideIt) {
    scriptPurge({1, "purge is broken", ""});
    const Path file = home.file("Stuff/a");
    const CleanupReport report = clean(home, std::vector{memoryRow(), row({file})});
    EXPECT_EQ(report.attemptedCount, 2);
    EXPECT_EQ(report.removedCount, 1);
    EXPECT_EQ(report.failedCount, 1);
    EXPECT_FALSE(home.has(file));
}

TEST_F(MemoryCleaning, WithoutAMemoryRowThereAreNoMemoryFigures) {
    const CleanupReport report = clean(home, {home.file("Stuff/a")});
    EXPECT_FALSE(report.memoryBefore);
    EXPECT_FALSE(report.memoryAfter);
}

} // namespace
} // namespace vellmoor::test
