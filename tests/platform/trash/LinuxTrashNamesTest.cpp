// Under which name an item lies in the Trash: nothing is replaced there, and every name has room for its note.
#include "FileContent.h"
#include "LinuxTrashFixture.h"
#include "trash/TrashNotes.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <iterator>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <string>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>

namespace vellmoor {
namespace {

using test::contentOf;
using test::requestFor;

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

} // namespace
} // namespace vellmoor
