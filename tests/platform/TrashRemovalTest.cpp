#include "Descriptor.h"
#include "LinuxPlatform.h"
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"
#include "TrashHelp.h"
#include "TrashNotes.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <fstream>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace vellmoor {
namespace {

using test::ScopedMount;
using test::ScopedUnprivileged;
using test::TemporaryFolder;

constexpr uid_t somebodyElse = 4242;

std::string contentOf(const Path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Lowers the limit of open files to `spare` above those open now.
class FewDescriptors {
public:
    explicit FewDescriptors(unsigned spare) {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        const int lowestFree = ::dup(0);
        ::close(lowestFree);
        const rlimit few{static_cast<rlim_t>(lowestFree) + spare, before_.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &few);
    }
    ~FewDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;

private:
    rlimit before_{};
};

class TrashRemoval : public ::testing::Test {
protected:
    TrashRemoval() {
        folder_.folder("Trash/files");
        folder_.folder("Trash/info");
    }

    Removal removal(const Path& path, const TrashFolder& trash) {
        return test::removeFromTrash(platform_, test::requestFor(platform_, path), trash);
    }
    Removal removal(const Path& name) { return removal(trash_.contents / name, trash_); }
    bool remove(const Path& name) { return removal(name).result == RemovalResult::Done; }
    Path note(const std::string& name) { return folder_.text("Trash/info/" + name + ".trashinfo", "[Trash Info]\n"); }
    [[nodiscard]] bool isIn(const Path& name) const { return platform_.exists(trash_.contents / name); }
    void makeDeep(int depth, unsigned mode) const;

    TemporaryFolder folder_;
    LinuxPlatform platform_;
    TrashFolder trash_{folder_ / "Trash", folder_ / "Trash/files", folder_.path()};
};

// Too deep for one path: made from inside.
void TrashRemoval::makeDeep(int depth, unsigned mode) const {
    int here = ::open(trash_.contents.c_str(), O_RDONLY | O_DIRECTORY);
    for (int level = 0; level < depth; ++level) {
        ASSERT_EQ(::mkdirat(here, "deep folder", 0755), 0);
        const int next = ::openat(here, "deep folder", O_RDONLY | O_DIRECTORY);
        ASSERT_GE(next, 0);
        ::close(::openat(next, "file", O_WRONLY | O_CREAT, 0644));
        if (level > 0) {
            ::fchmod(here, mode);
        }
        ::close(here);
        here = next;
    }
    ::close(here);
}

TEST_F(TrashRemoval, AnItemGoesWithItsRestoreNote) {
    folder_.file("Trash/files/item");
    const Path itsNote = note("item");
    const Path otherNote = note("other");
    EXPECT_TRUE(remove("item"));
    EXPECT_FALSE(isIn("item"));
    EXPECT_FALSE(platform_.exists(itsNote));
    EXPECT_TRUE(platform_.exists(otherNote));
}

TEST_F(TrashRemoval, AnItemWithoutNoteGoesToo) {
    folder_.file("Trash/files/item/inner");
    EXPECT_TRUE(remove("item"));
    EXPECT_FALSE(isIn("item"));
}

TEST_F(TrashRemoval, ATrashWithoutNotesFolderIsEmptiedToo) {
    ::rmdir((trash_.folder / "info").c_str());
    folder_.file("Trash/files/item");
    EXPECT_TRUE(remove("item"));
}

TEST_F(TrashRemoval, ALinkGoesAndWhatItNamesStays) {
    folder_.file("mine/file");
    folder_.link(folder_ / "mine", "Trash/files/link");
    folder_.link(folder_ / "mine/file", "Trash/files/folder/link to a file");
    folder_.link(folder_ / "mine", "Trash/files/folder/link to a folder");
    EXPECT_TRUE(remove("link"));
    EXPECT_TRUE(remove("folder"));
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
    EXPECT_FALSE(isIn("folder"));
}

TEST_F(TrashRemoval, PipesSocketsDanglingLinksAndOddNamesGo) {
    folder_.fifo("Trash/files/odd/pipe");
    folder_.link("loop", "Trash/files/odd/loop");
    folder_.file("Trash/files/odd/caf\xe9\n");
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    (trash_.contents / "odd/socket").string().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    EXPECT_TRUE(remove("odd"));
    EXPECT_FALSE(isIn("odd"));
}

TEST_F(TrashRemoval, ATreeOfReadOnlyAndClosedFoldersGoes) {
    folder_.file("Trash/files/module/read only/inner/file");
    folder_.setMode("Trash/files/module/read only/inner", 0555);
    folder_.setMode("Trash/files/module/read only", 0555);
    folder_.file("Trash/files/module/closed/file");
    folder_.setMode("Trash/files/module/closed", 0);
    folder_.file("Trash/files/module/not searchable/file");
    folder_.folder("Trash/files/module/not searchable/folder");
    folder_.setMode("Trash/files/module/not searchable", 0400);
    folder_.folder("Trash/files/module/empty");
    folder_.setMode("Trash/files/module/empty", 0400);
    folder_.setMode("Trash/files/module", 0500);
    const ScopedUnprivileged unprivileged;
    EXPECT_TRUE(remove("module"));
    EXPECT_FALSE(isIn("module"));
}

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

TEST_F(TrashRemoval, ATreeTwoThousandDeepGoesWithFewDescriptors) {
    makeDeep(2100, 0755);
    const FewDescriptors few(18); // a dozen for the tree, the others for the Trash folder itself
    EXPECT_TRUE(remove("deep folder"));
    EXPECT_FALSE(isIn("deep folder"));
}

TEST_F(TrashRemoval, ADeepTreeOfReadOnlyFoldersGoes) {
    makeDeep(200, 0500);
    const ScopedUnprivileged unprivileged;
    const FewDescriptors few(18); // a dozen for the tree, the others for the Trash folder itself
    EXPECT_TRUE(remove("deep folder"));
    EXPECT_FALSE(isIn("deep folder"));
}

TEST_F(TrashRemoval, AFolderOfTenThousandEntriesGoes) {
    for (int number = 0; number < 10'000; ++number) {
        folder_.link("x", "Trash/files/many/" + std::to_string(number));
    }
    EXPECT_TRUE(remove("many"));
    EXPECT_FALSE(isIn("many"));
}

TEST_F(TrashRemoval, NoDescriptorIsLeftOpen) {
    makeDeep(50, 0755);
    const std::size_t before = platform_.entries("/proc/self/fd")->size();
    EXPECT_TRUE(remove("deep folder"));
    EXPECT_FALSE(remove("../../outside"));
    EXPECT_EQ(platform_.entries("/proc/self/fd")->size(), before);
}

TEST_F(TrashRemoval, AnotherFileSystemBelowIsNotEntered) {
    const Path inner = folder_.folder("Trash/files/item/inner");
    const ScopedMount mount = ScopedMount::memory(inner);
    VELLMOOR_NEEDS_MOUNT(mount);
    ASSERT_TRUE(platform_.createFile(inner / "precious", "text"));
    EXPECT_EQ(removal("item").result, RemovalResult::HoldsMount);
    EXPECT_EQ(contentOf(inner / "precious"), "text");
}

TEST_F(TrashRemoval, AFolderOfTheSameDiskMountedBelowIsNotEntered) {
    folder_.text("mine/precious", "text");
    const Path inner = folder_.folder("Trash/files/item/inner");
    const ScopedMount mount = ScopedMount::bind(folder_ / "mine", inner);
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(removal("item").result, RemovalResult::HoldsMount);
    EXPECT_EQ(contentOf(folder_ / "mine/precious"), "text");
}

TEST_F(TrashRemoval, AnItemThatIsItselfAMountIsRefused) {
    const Path item = folder_.folder("Trash/files/item");
    const ScopedMount mount = ScopedMount::memory(item);
    VELLMOOR_NEEDS_MOUNT(mount);
    ASSERT_TRUE(platform_.createFile(item / "precious", "text"));
    EXPECT_FALSE(remove("item"));
    EXPECT_EQ(contentOf(item / "precious"), "text");
}

TEST_F(TrashRemoval, AReadOnlyFileSystemKeepsItemAndNote) {
    const Path volume = folder_.folder("volume");
    ScopedMount mount = ScopedMount::memory(volume);
    VELLMOOR_NEEDS_MOUNT(mount);
    const TrashFolder trash{volume / ".Trash-0", volume / ".Trash-0/files", volume};
    ASSERT_TRUE(platform_.createFolder(trash.contents));
    ASSERT_TRUE(platform_.createFolder(trash.folder / "info"));
    ASSERT_TRUE(platform_.createFile(trash.contents / "item", "text"));
    ASSERT_TRUE(platform_.createFile(trash.folder / "info/item.trashinfo", "note"));
    mount.makeReadOnly();
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(removal(trash.contents / "item", trash).result, RemovalResult::ReadOnly);
    EXPECT_EQ(contentOf(trash.contents / "item"), "text");
    EXPECT_EQ(contentOf(trash.folder / "info/item.trashinfo"), "note");
}

TEST_F(TrashRemoval, OnlyWhatLiesBelowTheContentsIsRemoved) {
    folder_.file("mine/file");
    folder_.file("Trash/filesystem/file");
    const Path itsNote = note("x");
    EXPECT_NE(removal(folder_ / "mine/file", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents, trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents / "", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents / "..", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(trash_.contents / "../info/x.trashinfo", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal(folder_ / "Trash/filesystem/file", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal("item", trash_).result, RemovalResult::Done);
    EXPECT_NE(removal("", trash_).result, RemovalResult::Done);
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
    EXPECT_TRUE(platform_.exists(folder_ / "Trash/filesystem/file"));
    EXPECT_TRUE(platform_.exists(itsNote));
}

TEST_F(TrashRemoval, AnItemIsNotReachedThroughALink) {
    folder_.file("mine/file");
    folder_.link(folder_ / "mine", "Trash/files/link");
    EXPECT_FALSE(remove("link/file"));
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
    const TrashFolder linked{folder_ / "other", folder_.link(folder_ / "mine", "other/files"), folder_.path()};
    EXPECT_EQ(removal(linked.contents / "file", linked).reason, "Too many levels of symbolic links");
    EXPECT_TRUE(platform_.exists(folder_ / "mine/file"));
}

TEST_F(TrashRemoval, APartOfAnItemGoesAloneAndTheNoteStays) {
    folder_.file("Trash/files/item/part");
    folder_.file("Trash/files/item/rest");
    const Path itsNote = note("item");
    const Path confusing = note("part");
    EXPECT_TRUE(remove("item/part"));
    EXPECT_TRUE(isIn("item/rest"));
    EXPECT_TRUE(platform_.exists(itsNote));
    EXPECT_TRUE(platform_.exists(confusing));
}

TEST_F(TrashRemoval, ANameTooLongForANoteGoes) {
    const std::string name(250, 'n');
    folder_.file("Trash/files/" + name);
    EXPECT_TRUE(remove(name));
    EXPECT_FALSE(isIn(name));
}

TEST_F(TrashRemoval, AnItemThatIsGoneAlreadyKeepsItsNoteForWhoeverTookIt) {
    const Path itsNote = note("gone");
    EXPECT_EQ(removal("gone").result, RemovalResult::Vanished);
    EXPECT_TRUE(platform_.exists(itsNote));
}

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

TEST_F(TrashRemoval, AnotherFileThanTheOneShownStays) {
    const Path shown = folder_.text("Trash/files/report.odt", "the old one");
    const RemovalRequest request = test::requestFor(platform_, shown);
    std::filesystem::rename(shown, folder_ / "restored");
    folder_.text("Trash/files/report.odt", "the new one");
    const Path itsNote = note("report.odt");
    EXPECT_EQ(test::removeFromTrash(platform_, request, trash_).result, RemovalResult::Changed);
    EXPECT_EQ(contentOf(shown), "the new one");
    EXPECT_TRUE(platform_.exists(itsNote));
}

TEST_F(TrashRemoval, ATrashThatIsSwappedWhileItIsEmptiedIsNotFollowedByItsPath) {
    folder_.text("Trash/files/item", "shown");
    folder_.text("precious/files/item", "precious");
    folder_.folder("precious/info");
    const auto session = platform_.trashSession({.home = trash_, .known = {trash_}, .volumeForms = {}, .anchors = {}});
    const RemovalRequest request = test::requestFor(platform_, trash_.contents / "item");
    std::filesystem::rename(trash_.folder, folder_ / "moved away");
    std::filesystem::rename(folder_ / "precious", trash_.folder);
    EXPECT_EQ(session->removeFromTrash(request, trash_).result, RemovalResult::Done);
    EXPECT_EQ(contentOf(trash_.contents / "item"), "precious");
    EXPECT_FALSE(platform_.exists(folder_ / "moved away/files/item"));
}

TEST_F(TrashRemoval, AClosedTrashGetsItsModeBack) {
    folder_.file("Trash/files/item");
    note("item");
    folder_.setMode("Trash/info", 0500);
    folder_.setMode("Trash/files", 0500);
    {
        const ScopedUnprivileged unprivileged;
        const Removal done = removal("item");
        EXPECT_EQ(done.result, RemovalResult::Done);
        EXPECT_FALSE(done.noteRemains);
    }
    struct stat status{};
    ::lstat(trash_.contents.c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0500U);
    ::lstat((trash_.folder / "info").c_str(), &status);
    EXPECT_EQ(status.st_mode & 07777U, 0500U);
    EXPECT_TRUE(platform_.entries(trash_.folder / "info")->empty());
}

TEST_F(TrashRemoval, AnItemThatIsGoneWhileItsNoteStaysIsToldSo) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can make a folder that nobody can change";
    }
    folder_.file("Trash/files/item");
    folder_.file("Trash/info/item.trashinfo/a folder in its place");
    const Removal done = removal("item");
    EXPECT_EQ(done.result, RemovalResult::Done);
    EXPECT_TRUE(done.noteRemains);
    EXPECT_FALSE(isIn("item"));
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

TEST_F(TrashRemoval, AFullDiskIsEmptied) {
    const Path volume = folder_.folder("volume");
    const ScopedMount mount = ScopedMount::memory(volume, "size=1m,nr_inodes=8");
    VELLMOOR_NEEDS_MOUNT(mount);
    const TrashFolder trash{volume / ".Trash-0", volume / ".Trash-0/files", volume};
    ASSERT_TRUE(platform_.createFolder(trash.contents));
    for (int number = 0; platform_.createFile(trash.contents / std::to_string(number), "x"); ++number) {
    }
    EXPECT_FALSE(platform_.createFolder(volume / "one more"));
    EXPECT_EQ(removal(trash.contents / "0", trash).result, RemovalResult::Done);
    EXPECT_FALSE(platform_.exists(trash.contents / "0"));
    EXPECT_TRUE(platform_.exists(trash.contents / "1"));
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
