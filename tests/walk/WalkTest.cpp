// What is visited, with which facts, and what a visitor's answers do.
#include "Walk.h"

#include "Recorder.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <limits>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor::walk::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using vellmoor::test::allocatedBytes;
using vellmoor::test::TemporaryFolder;

TEST(Walk, VisitsEverythingBelowTheRootButNotTheRoot) {
    const TemporaryFolder home;
    home.file("a");
    home.file("b/c/d");
    home.folder("empty");
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("a", "b", "b/c", "b/c/d", "empty"));
    EXPECT_EQ(recorder.visits, 5U);
}

TEST(Walk, TellsTypeDepthAllocatedBytesAndModificationTimeOfAFile) {
    const TemporaryFolder home;
    const auto file = home.file("folder/file", 10'000);
    home.setModified("folder/file",
                     std::chrono::system_clock::time_point(std::chrono::milliseconds(1'600'000'000'250)));
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    const Seen& seen = recorder.seen.at("folder/file");
    EXPECT_EQ(seen.type, EntryType::File);
    EXPECT_EQ(seen.depth, 2U);
    EXPECT_GE(seen.allocatedBytes, 10'000);
    EXPECT_EQ(seen.allocatedBytes, allocatedBytes(file));
    EXPECT_EQ(seen.modifiedNs, 1'600'000'000'250'000'000);
}

TEST(Walk, TellsATimeBefore1970) {
    const TemporaryFolder home;
    home.file("old");
    home.setModified("old", std::chrono::system_clock::time_point(std::chrono::milliseconds(-1'500)));
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    EXPECT_EQ(recorder.seen.at("old").modifiedNs, -1'500'000'000);
}

TEST(Walk, ATimeBeyondAllCalendarsIsTheLatestThatFits) {
    const TemporaryFolder home;
    home.file("future");
    const timespec times[2] = {{0, UTIME_OMIT}, {20'000'000'000, 0}};
    if (::utimensat(AT_FDCWD, (home / "future").c_str(), times, 0) != 0) {
        GTEST_SKIP() << "this file system has no such time: " << std::generic_category().message(errno);
    }
    struct stat facts{};
    ASSERT_EQ(::stat((home / "future").c_str(), &facts), 0);
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    // A disk may keep shorter numbers than it is given.
    constexpr std::int64_t latest = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(recorder.seen.at("future").modifiedNs,
              facts.st_mtime > latest / 1'000'000'000 ? latest : facts.st_mtime * 1'000'000'000);
}

TEST(Walk, FoldersHaveNoBytesOfTheirOwn) {
    const TemporaryFolder home;
    home.folder("folder");
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    EXPECT_EQ(recorder.seen.at("folder").type, EntryType::Directory);
    EXPECT_EQ(recorder.bytes(), 0);
}

TEST(Walk, ASparseFileCountsItsAllocatedBlocksOnly) {
    const TemporaryFolder home;
    home.sparse("image", std::int64_t{1} << 40);
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    EXPECT_THAT(recorder.files(), ElementsAre("image"));
    EXPECT_EQ(recorder.bytes(), allocatedBytes(home / "image"));
    EXPECT_LT(recorder.bytes(), 1 << 20);
}

TEST(Walk, AHardLinkCountsEachTimeItIsMet) {
    const TemporaryFolder home;
    const auto one = home.file("one", 8192);
    home.hardLink("one", "folder/two");
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    EXPECT_THAT(recorder.files(), UnorderedElementsAre("one", "folder/two"));
    EXPECT_EQ(recorder.bytes(), 2 * allocatedBytes(one));
}

TEST(Walk, LinksAreVisitedAndNeverFollowed) {
    const TemporaryFolder outside;
    outside.file("big", 100'000);
    const TemporaryFolder home;
    home.link(outside.path(), "out");
    home.link(outside / "big", "file");
    home.link("..", "folder/up");
    home.link("loop", "loop");
    home.link("nowhere", "dangling");
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("out", "file", "folder", "folder/up", "loop", "dangling"));
    for (const std::string name : {"out", "file", "folder/up", "loop", "dangling"}) {
        EXPECT_EQ(recorder.seen.at(name).type, EntryType::Symlink) << name;
    }
    EXPECT_EQ(recorder.bytes(), 0);
}

TEST(Walk, PipesSocketsAndDevicesAreOtherAndEmpty) {
    const TemporaryFolder home;
    home.fifo("pipe");
    const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (home / "socket").native().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(fd, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    ::close(fd);
    const bool hasDevice = ::mknod((home / "device").c_str(), S_IFCHR | 0600, 0x103) == 0; // needs a privilege
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_EQ(recorder.visits, hasDevice ? 3U : 2U);
    for (const auto& [name, seen] : recorder.seen) {
        EXPECT_EQ(seen.type, EntryType::Other) << name;
        EXPECT_EQ(seen.allocatedBytes, 0) << name;
    }
}

TEST(Walk, HiddenNamesAreNeitherVisitedNorEntered) {
    const TemporaryFolder home;
    home.file(".hidden");
    home.file(".folder/file");
    home.file("folder/.hidden");
    home.file("folder/..also");
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    EXPECT_THAT(recorder.all(), ElementsAre("folder"));
}

TEST(Walk, HiddenNamesAreVisitedWhenAskedFor) {
    const TemporaryFolder home;
    home.file(".folder/.file");
    home.file("...");
    Recorder recorder(home.path());
    Options options;
    options.skipHidden = false;
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre(".folder", ".folder/.file", "..."));
}

TEST(Walk, ARootWithAHiddenNameIsWalked) {
    const TemporaryFolder home;
    home.file(".npm/_cacache/file");
    Recorder recorder(home / ".npm");
    (void)record(recorder, home / ".npm");
    EXPECT_THAT(recorder.files(), ElementsAre("_cacache/file"));
}

TEST(Walk, APrunedFolderIsNotEntered) {
    const TemporaryFolder home;
    home.file("node_modules/a/b");
    home.file("src/a");
    Recorder recorder(home.path());
    recorder.onEntry = [](const Entry& entry) {
        return entry.name == "node_modules" ? Action::Prune : Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("node_modules", "src", "src/a"));
}

TEST(Walk, TheParentsDescriptorAndTheNameReachTheEntry) {
    const TemporaryFolder home;
    home.text("a/b/file", "contents");
    std::string contents(8, ' ');
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.type == EntryType::File) {
            const int fd = ::openat(entry.parentFd, entry.name.data(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
            EXPECT_EQ(::read(fd, contents.data(), contents.size()), 8);
            ::close(fd);
        }
        return Action::Continue;
    };
    (void)record(recorder, home.path());
    EXPECT_EQ(contents, "contents");
}

TEST(Walk, ARelativeRootGivesAbsolutePaths) {
    const TemporaryFolder home;
    home.file("folder/file");
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(home.path());
    Recorder recorder(home / "folder");
    const Outcome outcome = record(recorder, "folder");
    std::filesystem::current_path(before);
    EXPECT_EQ(outcome, Outcome::Complete);
    EXPECT_THAT(recorder.all(), ElementsAre("file"));
}

TEST(Walk, ASlashAtTheEndOfTheRootChangesNothing) {
    const TemporaryFolder home;
    home.file("folder/file");
    Recorder recorder(home / "folder");
    EXPECT_EQ(record(recorder, (home / "folder").native() + "//"), Outcome::Complete);
    EXPECT_THAT(recorder.all(), ElementsAre("file"));
}

TEST(Walk, PathsBelowTheSystemsRootHaveOneSlash) {
    std::string path;
    Recorder recorder("/");
    recorder.onEntry = [&](const Entry& entry) {
        path = entry.path().native();
        return Action::Stop;
    };
    EXPECT_EQ(record(recorder, "/", 1), Outcome::Stopped);
    EXPECT_TRUE(path.starts_with("/") && !path.starts_with("//")) << path;
}

TEST(Walk, ALinkAsRootIsNotFollowed) {
    const TemporaryFolder home;
    home.file("folder/file");
    const auto link = home.link("folder", "link");
    Recorder recorder(link);
    EXPECT_EQ(record(recorder, link), Outcome::Unreadable);
    EXPECT_EQ(record(recorder, link.native() + "/"), Outcome::Unreadable);
    EXPECT_THAT(recorder.all(), IsEmpty());
}

TEST(Walk, ALinkAmongTheParentsOfTheRootIsFollowed) {
    const TemporaryFolder home;
    home.file("real/folder/file");
    home.link("real", "link");
    Recorder recorder(home / "link/folder");
    EXPECT_EQ(record(recorder, home / "link/folder"), Outcome::Complete);
    EXPECT_THAT(recorder.all(), ElementsAre("file"));
}

TEST(Walk, ARootThatIsNoFolderIsUnreadable) {
    const TemporaryFolder home;
    const auto file = home.file("file");
    const auto pipe = home.fifo("pipe");
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, file), Outcome::Unreadable);
    EXPECT_EQ(record(recorder, pipe), Outcome::Unreadable);
    EXPECT_EQ(record(recorder, home / "missing"), Outcome::Unreadable);
    EXPECT_EQ(record(recorder, ""), Outcome::Unreadable);
    EXPECT_THAT(recorder.all(), IsEmpty());
}

TEST(Walk, APackageIsVisitedAndNotEntered) {
    const TemporaryFolder home;
    home.file("Tool.app/Contents/big");
    home.file("Plain.folder/file");
    home.file("app/file");
    std::mutex mutex;
    std::set<std::string> asked;
    Options options;
    options.isPackage = [&](const std::filesystem::path& path) {
        const std::lock_guard lock(mutex);
        asked.insert(path.filename());
        return path.extension() == ".app";
    };
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_THAT(recorder.all(),
                UnorderedElementsAre("Tool.app", "Plain.folder", "Plain.folder/file", "app", "app/file"));
    EXPECT_THAT(asked, UnorderedElementsAre("Tool.app", "Plain.folder"));
}

TEST(Walk, AnExtensionIsAskedAboutOnceByEachWorker) {
    const TemporaryFolder home;
    for (int i = 0; i < 20; ++i) {
        home.file(std::to_string(i) + ".app/file");
        home.file(std::to_string(i) + ".folder/file");
    }
    unsigned asked = 0;
    Options options;
    options.threads = 1;
    options.isPackage = [&](const std::filesystem::path& path) {
        ++asked;
        return path.extension() == ".app";
    };
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_EQ(recorder.files().size(), 20U);
    EXPECT_EQ(asked, 2U);
}

TEST(Walk, ManyExtensionsAreAllAskedAbout) {
    const TemporaryFolder home;
    for (int i = 0; i < 1500; ++i) {
        home.folder("folder." + std::to_string(i));
    }
    std::set<std::string> asked;
    Options options;
    options.threads = 1;
    options.isPackage = [&](const std::filesystem::path& path) { return !asked.insert(path.extension()).second; };
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_EQ(asked.size(), 1500U);
}

TEST(WalkNames, EachFolderBelowTheRootIsShownOnceWithAllItsNames) {
    const TemporaryFolder home;
    home.file("top");
    home.file("a/.dropbox");
    home.file("a/file");
    home.folder("a/b");
    Options options;
    options.wantsNames = true;
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_EQ(recorder.directoryCalls, 2U);
    EXPECT_THAT(recorder.namesOf["a"], UnorderedElementsAre(".dropbox", "file", "b"));
    EXPECT_THAT(recorder.namesOf["a/b"], IsEmpty());
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("top", "a", "a/file", "a/b"));
}

TEST(WalkNames, APrunedFolderIsLeftAsAWholeAfterItsNamesWereSeen) {
    const TemporaryFolder home;
    home.file("synced/.stfolder/x");
    home.file("synced/file");
    home.file("synced/deep/file");
    home.file("plain/file");
    Options options;
    options.wantsNames = true;
    Recorder recorder(home.path());
    recorder.onDirectory = [](const Directory& directory) {
        EXPECT_EQ(directory.name, directory.place.path().filename().native());
        EXPECT_EQ(directory.depth, 1U);
        return std::ranges::find(directory.names, ".stfolder") != directory.names.end() ? Action::Prune
                                                                                        : Action::Continue;
    };
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("synced", "plain", "plain/file"));
}

TEST(WalkNames, TheRootIsNotAskedSoAMarkerInItIsIgnored) {
    const TemporaryFolder home;
    home.file(".stfolder");
    home.file("file");
    Options options;
    options.wantsNames = true;
    Recorder recorder(home.path());
    recorder.onDirectory = [](const Directory&) { return Action::Prune; };
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_EQ(recorder.directoryCalls, 0U);
    EXPECT_THAT(recorder.all(), ElementsAre("file"));
}

TEST(WalkNames, AFolderThatWasPrunedAsAnEntryIsNotRead) {
    const TemporaryFolder home;
    home.file("node_modules/file");
    Options options;
    options.wantsNames = true;
    Recorder recorder(home.path());
    recorder.onEntry = [](const Entry&) { return Action::Prune; };
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_EQ(recorder.directoryCalls, 0U);
}

} // namespace
} // namespace vellmoor::walk::test
