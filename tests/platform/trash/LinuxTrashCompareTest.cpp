// Only what was shown goes, and nothing goes another way: whatever took its name or a folder's on the way, stays.
#include "FileContent.h"
#include "LinuxTrashFixture.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <thread>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;
using test::contentOf;
using test::requestFor;
using ::testing::IsEmpty;

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

} // namespace
} // namespace vellmoor
