// Trees of every kind go whole: odd files, closed folders, more levels than there are descriptors.
#include "Descriptors.h"
#include "ScopedUnprivileged.h"
#include "TrashRemovalFixture.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <string>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace vellmoor {
namespace {

using test::DescriptorLimit;
using test::openDescriptors;
using test::ScopedUnprivileged;

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

// Too deep for one path: made from inside.
void makeDeep(const Path& top, int depth, unsigned mode) {
    int here = ::open(top.c_str(), O_RDONLY | O_DIRECTORY);
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

// A dozen for the tree, the others for the Trash folder itself, above those that are open now.
rlim_t fewDescriptors() {
    const int lowestFree = ::dup(0);
    ::close(lowestFree);
    return static_cast<rlim_t>(lowestFree) + 18;
}

TEST_F(TrashRemoval, ATreeTwoThousandDeepGoesWithFewDescriptors) {
    makeDeep(trash_.contents, 2100, 0755);
    const DescriptorLimit few(fewDescriptors());
    EXPECT_TRUE(remove("deep folder"));
    EXPECT_FALSE(isIn("deep folder"));
}

TEST_F(TrashRemoval, ADeepTreeOfReadOnlyFoldersGoes) {
    makeDeep(trash_.contents, 200, 0500);
    const ScopedUnprivileged unprivileged;
    const DescriptorLimit few(fewDescriptors());
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
    makeDeep(trash_.contents, 50, 0755);
    const unsigned before = openDescriptors();
    EXPECT_TRUE(remove("deep folder"));
    EXPECT_FALSE(remove("../../outside"));
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
} // namespace vellmoor
