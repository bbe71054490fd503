// Moves into a real Trash, in the throw-away home that main.cpp sets.
#include "Files.h"
#include "LinuxPlatform.h"
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"
#include "TrashHelp.h"
#include "TrashNotes.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <string>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using test::requestFor;
using test::ScopedMount;
using test::ScopedUnprivileged;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;

std::string contentOf(const Path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class LinuxTrash : public ::testing::Test {
protected:
    LinuxTrash() : LinuxTrash("data") {}
    explicit LinuxTrash(const Path& data)
        : home_(folder_.folder("home")),
          trash_{.folder = home_ / data / "Trash", .contents = home_ / data / "Trash/files", .anchor = home_ / data} {}

    [[nodiscard]] TrashPlaces places() const {
        TrashPlaces all{.home = trash_, .known = {}, .volumeForms = {}, .anchors = {home_}};
        const std::string user = std::to_string(::getuid());
        all.volumeForms = {{.folder = Path(".Trash") / user, .needsStickyParent = true, .needsRealFolder = true},
                           {.folder = ".Trash-" + user, .needsRealFolder = true}};
        if (platform_.exists(trash_.folder)) {
            all.known.push_back(trash_);
        }
        return all;
    }
    Removal move(const RemovalRequest& request) { return test::moveToTrash(platform_, request, places()); }
    Removal move(const Path& path) { return move(requestFor(platform_, path)); }
    bool takes(const Path& path) { return move(path).result == RemovalResult::Done; }

    Path write(const Path& relative, const std::string& text = "text") const {
        return folder_.text(Path("home") / relative, text);
    }
    [[nodiscard]] std::vector<std::string> notes() const {
        std::vector<std::string> names;
        for (const FolderEntry& entry :
             platform_.entries(trash_.folder / "info").value_or(std::vector<FolderEntry>())) {
            names.push_back(entry.name);
        }
        return names;
    }
    [[nodiscard]] std::string noteOf(const std::string& name) const {
        return contentOf(trash_.folder / "info" / (name + ".trashinfo"));
    }

    test::TemporaryFolder folder_;
    Path home_;
    TrashFolder trash_;
    LinuxPlatform platform_;
};

TEST_F(LinuxTrash, TakesAFileWithANoteOfItsPlaceAndSaysWhereItLies) {
    const Path file = write("folder/one file.txt", "mine");
    const Removal moved = move(file);
    EXPECT_EQ(moved.result, RemovalResult::Done);
    EXPECT_EQ(moved.place, trash_.contents / "one file.txt");
    EXPECT_FALSE(platform_.exists(file));
    EXPECT_EQ(contentOf(moved.place), "mine");
    EXPECT_THAT(noteOf("one file.txt"), MatchesRegex("\\[Trash Info\\]\nPath=" + home_.string() +
                                                     "/folder/one%20file\\.txt\nDeletionDate=20[0-9-]+T[0-9:]+\n"));
    struct stat status{};
    ::lstat(trash_.folder.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0700U);
}

TEST_F(LinuxTrash, TheNoteNamesTheRealPlace) {
    write("real/file");
    folder_.link(home_ / "real", "home/alias");
    TrashPlaces all = places();
    all.anchors.push_back(home_ / "alias");
    EXPECT_EQ(test::moveToTrash(platform_, requestFor(platform_, home_ / "alias/file"), all).result,
              RemovalResult::Done);
    EXPECT_THAT(noteOf("file"), ::testing::HasSubstr("Path=" + home_.string() + "/real/file\n"));
}

TEST_F(LinuxTrash, KeepsEachOfSeveralItemsOfOneName) {
    const auto session = platform_.trashSession(places());
    for (const char* folder : {"a", "b", "c"}) {
        const Path file = write(Path(folder) / "note.txt", folder);
        EXPECT_EQ(session->moveToTrash(requestFor(platform_, file)).result, RemovalResult::Done);
    }
    session->finish();
    EXPECT_TRUE(takes(write("d/note.txt", "d")));
    EXPECT_EQ(contentOf(trash_.contents / "note.txt"), "a");
    EXPECT_EQ(contentOf(trash_.contents / "note.2.txt"), "b");
    EXPECT_EQ(contentOf(trash_.contents / "note.3.txt"), "c");
    EXPECT_EQ(contentOf(trash_.contents / "note.4.txt"), "d");
}

TEST_F(LinuxTrash, AnItemWithoutNoteIsNotReplaced) {
    write("data/Trash/files/file", "of nobody");
    EXPECT_TRUE(takes(write("file", "mine")));
    EXPECT_EQ(contentOf(trash_.contents / "file"), "of nobody");
    EXPECT_EQ(contentOf(trash_.contents / "file.2"), "mine");
    EXPECT_THAT(notes(), ::testing::ElementsAre("file.2.trashinfo"));
}

TEST_F(LinuxTrash, TakesALinkItselfAndAWholeFolder) {
    const Path inner = write("tree/inner/file");
    folder_.link(home_ / "tree", "home/link to tree");
    folder_.link("/nowhere", "home/dangling");
    EXPECT_TRUE(takes(home_ / "link to tree"));
    EXPECT_TRUE(takes(home_ / "dangling"));
    EXPECT_TRUE(platform_.exists(inner));
    EXPECT_TRUE(takes(home_ / "tree"));
    EXPECT_TRUE(platform_.exists(trash_.contents / "tree/inner/file"));
    EXPECT_TRUE(platform_.facts(trash_.contents / "dangling")->isSymlink);
}

TEST_F(LinuxTrash, ANameOfAnyLengthAndAnyBytesGetsAWholeNote) {
    for (const std::size_t length : {238U, 239U, 244U, 245U, 246U, 250U, 255U}) {
        const std::string name = std::string(length - 4, 'n') + ".txt";
        const Removal moved = move(write(name, std::to_string(length)));
        ASSERT_EQ(moved.result, RemovalResult::Done) << length << moved.reason;
        EXPECT_EQ(contentOf(moved.place), std::to_string(length));
        EXPECT_THAT(noteOf(moved.place.filename()), ::testing::HasSubstr("/" + name + "\n")) << length;
        EXPECT_TRUE(moved.place.native().ends_with(".txt")) << length;
    }
    const Removal odd = move(write("caf\xe9\n"));
    EXPECT_EQ(odd.result, RemovalResult::Done);
    EXPECT_THAT(noteOf("caf\xe9\n"), ::testing::HasSubstr("/caf%E9%0A\n"));
}

TEST_F(LinuxTrash, AMissingFileIsGoneAndOneBehindAClosedFolderIsNot) {
    EXPECT_EQ(move(home_ / "missing").result, RemovalResult::Vanished);
    EXPECT_EQ(move(home_ / "missing/file").result, RemovalResult::Vanished);
    const Path file = write("closed/file", "mine");
    const RemovalRequest request = requestFor(platform_, file);
    folder_.setMode("home/closed", 0);
    {
        const ScopedUnprivileged unprivileged;
        const Removal moved = move(request);
        EXPECT_EQ(moved.result, RemovalResult::Failed);
        EXPECT_EQ(moved.reason, "Permission denied");
    }
    folder_.setMode("home/closed", 0700);
    EXPECT_EQ(contentOf(file), "mine");
}

TEST_F(LinuxTrash, LeavesAFileWhoseFolderForbidsItAndNoNote) {
    const Path file = write("locked/file", "mine");
    folder_.setMode("home/locked", 0555);
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_EQ(move(file).reason, "Permission denied");
    }
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_THAT(notes(), IsEmpty());
}

TEST_F(LinuxTrash, AnotherFileThanTheOneShownStays) {
    const Path file = write("file", "shown");
    const RemovalRequest request = requestFor(platform_, file);
    write("other", "not shown");
    fs::rename(home_ / "other", file);
    EXPECT_EQ(move(request).result, RemovalResult::Changed);
    EXPECT_EQ(contentOf(file), "not shown");
    EXPECT_THAT(notes(), IsEmpty());
}

TEST_F(LinuxTrash, AFileThatWasWrittenSinceStays) {
    const Path file = write("file", "shown");
    const RemovalRequest request = requestFor(platform_, file);
    std::ofstream(file, std::ios::app) << " and more";
    EXPECT_EQ(move(request).result, RemovalResult::Changed);
    EXPECT_EQ(contentOf(file), "shown and more");
}

TEST_F(LinuxTrash, ALogThatGrewAndACacheThatWasReplacedGo) {
    const Path file = write("app.log", "shown");
    const RemovalRequest request = requestFor(platform_, file, Sameness::Kind);
    write("other", "a new one, and longer");
    fs::rename(home_ / "other", file);
    EXPECT_EQ(move(request).result, RemovalResult::Done);
    const RemovalRequest folder = requestFor(platform_, write("cache/file").parent_path(), Sameness::Kind);
    fs::remove_all(home_ / "cache");
    folder_.link(home_ / "precious", "home/cache");
    EXPECT_EQ(move(folder).result, RemovalResult::Changed); // a link is no cache folder
}

// Whoever swaps the file while it is being moved never gets another one into the Trash for good.
TEST_F(LinuxTrash, AStrangerThatTookTheNameInTheLastMomentGoesBack) {
    const Path target = home_ / "target";
    const Path precious = home_ / "precious";
    for (int round = 0; round < 200; ++round) {
        write("target", "target");
        write("precious", "precious");
        const RemovalRequest request = requestFor(platform_, target);
        std::atomic<bool> done = false;
        std::thread attacker([&] {
            while (!done) {
                ::renameat2(AT_FDCWD, target.c_str(), AT_FDCWD, precious.c_str(), RENAME_EXCHANGE);
            }
        });
        const Removal moved = move(request);
        done = true;
        attacker.join();
        ASSERT_TRUE(contentOf(target) == "precious" || contentOf(precious) == "precious")
            << round << " " << moved.reason << " " << moved.place;
        if (moved.result == RemovalResult::Done) {
            ASSERT_EQ(contentOf(moved.place), "target");
        }
        fs::remove(target);
        fs::remove(precious);
    }
}

TEST_F(LinuxTrash, AFolderOnTheWayThatBecameALinkIsNotFollowed) {
    write("folder/file", "shown");
    const RemovalRequest request{.path = home_ / "folder/file", .identity = {}, .sameness = Sameness::Kind};
    write("precious/file", "precious");
    fs::rename(home_ / "folder", home_ / "away");
    folder_.link(home_ / "precious", "home/folder");
    const Removal moved = move(request);
    EXPECT_EQ(moved.result, RemovalResult::Failed);
    EXPECT_EQ(moved.reason, "Too many levels of symbolic links");
    EXPECT_EQ(contentOf(home_ / "precious/file"), "precious");
}

TEST_F(LinuxTrash, ATrashThatIsSwappedWhileItIsFilledIsNotFollowedByItsPath) {
    folder_.folder("home/data/Trash/files");
    folder_.folder("home/data/Trash/info");
    folder_.folder("home/elsewhere/files");
    folder_.folder("home/elsewhere/info");
    const auto session = platform_.trashSession(places());
    fs::rename(trash_.folder, home_ / "moved away");
    folder_.link(home_ / "elsewhere", "home/data/Trash");
    EXPECT_EQ(session->moveToTrash(requestFor(platform_, write("file"))).result, RemovalResult::Done);
    EXPECT_TRUE(platform_.exists(home_ / "moved away/files/file"));
    EXPECT_FALSE(platform_.exists(home_ / "elsewhere/files/file"));
}

TEST_F(LinuxTrash, ALinkThatComesWhereTheTrashWasMissingIsNotFollowed) {
    folder_.folder("home/data");
    folder_.folder("home/elsewhere");
    const auto session = platform_.trashSession(places());
    folder_.link(home_ / "elsewhere", "home/data/Trash");
    const Path file = write("file", "mine");
    const Removal moved = session->moveToTrash(requestFor(platform_, file));
    EXPECT_EQ(moved.result, RemovalResult::Failed);
    EXPECT_EQ(moved.reason, "Too many levels of symbolic links");
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_TRUE(platform_.entries(home_ / "elsewhere")->empty());
}

TEST_F(LinuxTrash, FoldersOfTheTrashThatAreLinksAreNotUsed) {
    folder_.folder("home/data/Trash");
    folder_.folder("home/precious");
    folder_.link(home_ / "precious", "home/data/Trash/files");
    const Path file = write("file", "mine");
    EXPECT_EQ(move(file).reason, "Too many levels of symbolic links");
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_TRUE(platform_.entries(home_ / "precious")->empty());
}

TEST_F(LinuxTrash, WhatLiesInATrashThatIsNotListedNowIsNotMovedIntoIt) {
    ASSERT_TRUE(takes(write("old.txt", "old")));
    const Path inside = trash_.contents / "old.txt";
    const Removal removal = move(inside);
    EXPECT_EQ(removal.result, RemovalResult::Failed);
    EXPECT_EQ(removal.reason, files::reason(EAGAIN));
    EXPECT_EQ(contentOf(inside), "old");
    EXPECT_THAT(notes(), ElementsAre("old.txt.trashinfo"));
}

TEST_F(LinuxTrash, AClosedTrashTakesItAndGetsItsModeBack) {
    folder_.folder("home/data/Trash/files");
    folder_.folder("home/data/Trash/info");
    const Path file = write("file", "mine");
    for (const char* name : {"files", "info", ""}) {
        folder_.setMode(Path("home/data/Trash") / name, 0500);
    }
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_TRUE(takes(file));
    }
    EXPECT_EQ(contentOf(trash_.contents / "file"), "mine");
    for (const char* name : {"files", "info", ""}) {
        struct stat status{};
        ::lstat((trash_.folder / name).c_str(), &status);
        EXPECT_EQ(status.st_mode & 07777U, 0500U) << name;
    }
}

TEST_F(LinuxTrash, WhatHoldsAMountStays) {
    folder_.text("precious/document", "precious");
    folder_.folder("home/cache/deep/mount");
    const ScopedMount mount = ScopedMount::bind(folder_ / "precious", home_ / "cache/deep/mount");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(move(home_ / "cache").result, RemovalResult::HoldsMount);
    EXPECT_EQ(move(home_ / "cache/deep/mount").result, RemovalResult::HoldsMount);
    EXPECT_EQ(contentOf(home_ / "cache/deep/mount/document"), "precious");
}

TEST_F(LinuxTrash, AMountThatComesWhileTheCleanRunsIsNoticed) {
    const auto session = platform_.trashSession(places());
    EXPECT_EQ(session->moveToTrash(requestFor(platform_, write("first"))).result, RemovalResult::Done);
    folder_.folder("home/cache/mount");
    const ScopedMount mount = ScopedMount::memory(home_ / "cache/mount");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(session->moveToTrash(requestFor(platform_, home_ / "cache")).result, RemovalResult::HoldsMount);
}

TEST_F(LinuxTrash, ADiskThatTakesNoTrashKeepsItsFiles) {
    folder_.folder("home/memory");
    const ScopedMount mount = ScopedMount::memory(home_ / "memory");
    VELLMOOR_NEEDS_MOUNT(mount);
    const Path file = write("memory/file", "mine");
    EXPECT_EQ(move(file).result, RemovalResult::NoTrash);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_FALSE(platform_.exists(home_ / ("memory/.Trash-" + std::to_string(::getuid()))));
}

/// A disk beside the home, as a stick is one.
class LinuxTrashOnAStick : public LinuxTrash {
protected:
    const Path stick_ = folder_.folder("stick");
    ScopedMount disk_ = ScopedMount::disk(folder_ / "image", stick_);
    const std::string user_ = std::to_string(::getuid());
};

TEST_F(LinuxTrashOnAStick, TakesItsFilesItselfWithANoteRelativeToIt) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = folder_.text("stick/a folder/file", "mine");
    const Removal moved = move(file);
    EXPECT_EQ(moved.result, RemovalResult::Done);
    EXPECT_EQ(moved.place, stick_ / (".Trash-" + user_) / "files/file");
    EXPECT_EQ(contentOf(moved.place), "mine");
    EXPECT_THAT(contentOf(stick_ / (".Trash-" + user_) / "info/file.trashinfo"),
                ::testing::HasSubstr("Path=a%20folder/file\n"));
    EXPECT_FALSE(platform_.exists(trash_.contents / "file"));
}

TEST_F(LinuxTrashOnAStick, ASharedTrashIsUsedWhenItIsARealStickyFolder) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    folder_.folder("stick/.Trash");
    EXPECT_EQ(move(folder_.text("stick/first", "1")).place, stick_ / (".Trash-" + user_) / "files/first");
    folder_.setMode("stick/.Trash", 01777);
    EXPECT_EQ(move(folder_.text("stick/second", "2")).place, stick_ / ".Trash" / user_ / "files/second");
    fs::rename(stick_ / ".Trash", stick_ / "shared");
    folder_.link("shared", "stick/.Trash");
    EXPECT_EQ(move(folder_.text("stick/third", "3")).place, stick_ / (".Trash-" + user_) / "files/third");
}

TEST_F(LinuxTrashOnAStick, ATrashThatIsALinkIsNotUsed) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    folder_.folder("stick/precious/files");
    folder_.link("precious", "stick/.Trash-" + user_);
    const Path file = folder_.text("stick/file", "mine");
    EXPECT_EQ(move(file).result, RemovalResult::NoTrash);
    EXPECT_EQ(contentOf(file), "mine");
}

TEST_F(LinuxTrashOnAStick, ThatCannotBeWrittenKeepsItsFiles) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = folder_.text("stick/folder/file", "mine");
    folder_.setMode("stick", 0555);
    {
        const ScopedUnprivileged unprivileged;
        EXPECT_EQ(move(file).result, RemovalResult::NoTrash);
    }
    EXPECT_EQ(contentOf(file), "mine");
}

/// A home on a small disk of its own.
class LinuxTrashOnASmallDisk : public LinuxTrash {
protected:
    explicit LinuxTrashOnASmallDisk(const std::string& options = "size=1m,nr_inodes=20")
        : disk_(ScopedMount::memory(home_, options)) {}

    void fill() const {
        for (int number = 0; platform_.createFile(home_ / ("filler" + std::to_string(number)), "x"); ++number) {
        }
    }

    ScopedMount disk_;
};

TEST_F(LinuxTrashOnASmallDisk, NoRoomForTheNoteIsToldAndNothingMoves) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = write("file", "mine");
    EXPECT_TRUE(takes(write("first")));
    fill();
    EXPECT_EQ(move(file).result, RemovalResult::DiskFull);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_THAT(notes(), ::testing::ElementsAre("first.trashinfo"));
}

TEST_F(LinuxTrashOnASmallDisk, NoRoomForTheTextOfTheNoteLeavesNoEmptyOne) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    const Path file = write("file", "mine");
    EXPECT_TRUE(takes(write("first")));
    (void)platform_.createFile(home_ / "filler", std::string(900 << 10, 'x'));
    for (int number = 0; platform_.createFile(home_ / "small", std::string(4096, 'x')) && number < 1000; ++number) {
        fs::rename(home_ / "small", home_ / ("small" + std::to_string(number)));
    }
    EXPECT_EQ(move(file).result, RemovalResult::DiskFull);
    EXPECT_EQ(contentOf(file), "mine");
    EXPECT_THAT(notes(), ::testing::ElementsAre("first.trashinfo"));
}

TEST_F(LinuxTrashOnASmallDisk, ADiskThatBecameReadOnlyIsToldSo) {
    VELLMOOR_NEEDS_MOUNT(disk_);
    EXPECT_TRUE(takes(write("first")));
    const Path file = write("file", "mine");
    disk_.makeReadOnly();
    VELLMOOR_NEEDS_MOUNT(disk_);
    EXPECT_EQ(move(file).result, RemovalResult::ReadOnly);
    EXPECT_EQ(contentOf(file), "mine");
}

// A thread to which the kernel answers as for a file system that cannot promise not to replace.
void withoutNoReplace(const std::function<void()>& deed) {
    std::thread([&] {
        sock_filter steps[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_renameat2, 0, 3),
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args[4])),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, RENAME_NOREPLACE, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog program{std::size(steps), steps};
        if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
            ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0) {
            deed();
        }
    }).join();
}

TEST_F(LinuxTrash, AFileSystemThatCannotPromiseNotToReplaceLosesNothing) {
    int steps = 0;
    withoutNoReplace([&] {
        ASSERT_EQ(::renameat2(AT_FDCWD, "/missing", AT_FDCWD, "/x", RENAME_NOREPLACE), -1);
        ASSERT_EQ(errno, EINVAL);
        EXPECT_TRUE(takes(write("a/file", "first")));
        EXPECT_TRUE(takes(write("b/file", "second")));
        EXPECT_TRUE(takes(write("c/tree/inner", "third").parent_path()));
        EXPECT_TRUE(takes(write("d/tree/inner", "fourth").parent_path()));
        EXPECT_EQ(platform_.moveItem(write("from", "new"), write("to", "old")).error(), "File exists");
        EXPECT_EQ(platform_.moveItem(write("folder/x").parent_path(), write("full/y").parent_path()).error(),
                  "File exists");
        EXPECT_FALSE(platform_.moveItem(home_ / "missing", home_ / "never"));
        ++steps;
    });
    if (steps == 0 && !HasFailure()) {
        GTEST_SKIP() << "system call filters are not permitted here";
    }
    EXPECT_EQ(contentOf(trash_.contents / "file"), "first");
    EXPECT_EQ(contentOf(trash_.contents / "file.2"), "second");
    EXPECT_EQ(contentOf(trash_.contents / "tree/inner"), "third");
    EXPECT_EQ(contentOf(trash_.contents / "tree.2/inner"), "fourth");
    EXPECT_EQ(contentOf(home_ / "to"), "old");
    EXPECT_EQ(contentOf(home_ / "from"), "new");
    EXPECT_FALSE(platform_.exists(home_ / "never"));
}

TEST_F(LinuxTrash, WhatItTookIsRemovedForGoodWithItsNote) {
    EXPECT_TRUE(takes(write("temporary")));
    const Path item = trash_.contents / "temporary";
    EXPECT_EQ(test::removeFromTrash(platform_, requestFor(platform_, item), trash_).result, RemovalResult::Done);
    EXPECT_FALSE(platform_.exists(item));
    EXPECT_THAT(notes(), IsEmpty());
}

TEST(TrashNames, ANumberStandsBeforeTheLastExtension) {
    EXPECT_EQ(trashName("a.tar.gz", 1, 255), "a.tar.gz");
    EXPECT_EQ(trashName("a.tar.gz", 2, 255), "a.tar.2.gz");
    EXPECT_EQ(trashName(".hidden", 3, 255), ".hidden.3");
    EXPECT_EQ(trashName("plain", 10, 255), "plain.10");
}

TEST(TrashNames, AreCutAtACharacterSoThatTheNoteFits) {
    const std::string name = std::string(100, 'x') + "水" + ".txt"; // three bytes at 100
    EXPECT_EQ(trashName(name, 1, 107 + 10), name);
    for (const std::size_t limit : {115U, 116U}) {
        EXPECT_EQ(trashName(name, 1, limit), std::string(100, 'x') + ".txt") << limit;
    }
    EXPECT_EQ(trashName(std::string(300, 'y'), 12, 255).size(), 245U);
    EXPECT_TRUE(trashName(std::string(300, 'y'), 12, 255).ends_with("y.12"));
    EXPECT_EQ(noteName(trashName("a." + std::string(260, 'z'), 2, 255)).size(), 255U);
}

class LinuxHome : public ::testing::Test {
protected:
    const Path home_ = std::getenv("HOME");
    LinuxPlatform platform_;
    void write(const Path& relative, const std::string& text) const {
        fs::create_directories((home_ / relative).parent_path());
        std::ofstream(home_ / relative) << text;
    }
};

TEST_F(LinuxHome, UserFoldersAreReadAfresh) {
    write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/下载\"\nXDG_VIDEOS_DIR=\"$HOME/\"\n");
    EXPECT_EQ(platform_.userFolders().downloads, home_ / "下载");
    EXPECT_EQ(platform_.userFolders().pictures, "");
    write(".config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Loads\"\n");
    EXPECT_EQ(platform_.userFolders().downloads, home_ / "Loads");
}

TEST_F(LinuxHome, TheProcessEnvironmentFollowsTheHome) {
    EXPECT_EQ(processEnvironment().home, home_);
    EXPECT_EQ(processEnvironment().cache, home_ / ".cache");
}

TEST_F(LinuxHome, AnInheritedAppImageIsNotTakenForOurOwn) {
    ::setenv("APPIMAGE", "/home/tester/Other.AppImage", 1);
    ::setenv("APPDIR", "/tmp/.mount_Other", 1);
    EXPECT_EQ(processEnvironment().ownAppImage, "");
    ::setenv("APPDIR", fs::canonical("/proc/self/exe").parent_path().c_str(), 1);
    EXPECT_EQ(processEnvironment().ownAppImage, "/home/tester/Other.AppImage");
    ::unsetenv("APPIMAGE");
    ::unsetenv("APPDIR");
}

TEST(LinuxHost, KnowsItselfAndItsMachine) {
    const LinuxPlatform platform;
    EXPECT_EQ(platform.ownPath(), fs::canonical("/proc/self/exe"));
    EXPECT_EQ(platform.userId(), ::getuid());
    EXPECT_GT(platform.physicalMemory(), 64 << 20);
    EXPECT_FALSE(platform.isPackage(platform.ownPath().parent_path()));
    EXPECT_TRUE(platform.runningApplications().empty());
}

TEST(LinuxHost, ThePreferredLanguageIsTheFirstOfTheEnvironment) {
    const LinuxPlatform platform;
    ::setenv("LANG", "zh_CN.UTF-8", 1);
    EXPECT_EQ(platform.preferredLanguage(), "zh_CN.UTF-8");
    ::setenv("LANGUAGE", "en_GB:zh", 1);
    EXPECT_EQ(platform.preferredLanguage(), "en_GB");
    ::unsetenv("LANGUAGE");
    ::setenv("LANG", "C.UTF-8", 1);
    EXPECT_FALSE(platform.preferredLanguage());
    ::setenv("LANG", "C", 1);
    EXPECT_FALSE(platform.preferredLanguage());
}

} // namespace
} // namespace vellmoor
