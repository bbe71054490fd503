// Trees that nobody made for us. Each runs with one, two and eight workers and gives the same result.
#include "Descriptors.h"
#include "Recorder.h"
#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"
#include "Walk.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace vellmoor::walk::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSubsetOf;
using ::testing::UnorderedElementsAre;
using vellmoor::test::AlmostNoDescriptors;
using vellmoor::test::DescriptorLimit;
using vellmoor::test::openDescriptors;
using vellmoor::test::ScopedUnprivileged;
using vellmoor::test::takesName;
using vellmoor::test::TemporaryFolder;

// Sums without paths: those of the deepest trees would fill the memory.
class Sums : public Visitor {
public:
    Action entry(const Entry& entry, unsigned /*worker*/) override {
        files += entry.type == EntryType::File ? 1U : 0U;
        folders += entry.type == EntryType::Directory ? 1U : 0U;
        bytes += entry.allocatedBytes;
        for (std::uint32_t deepest = depth;
             entry.depth > deepest && !depth.compare_exchange_weak(deepest, entry.depth);) {
        }
        return Action::Continue;
    }
    std::atomic<unsigned> files{0}, folders{0};
    std::atomic<std::int64_t> bytes{0};
    std::atomic<std::uint32_t> depth{0};
};

class HostileTree : public ::testing::TestWithParam<unsigned> {
protected:
    Outcome sum(const fs::path& root, Sums& sums, bool wantsNames = false) {
        Options options;
        options.threads = GetParam();
        options.wantsNames = wantsNames;
        return walk(root, options, sums);
    }
    // UBSan opens a pipe when it sees a virtual call for the first time: to be done while that is possible.
    void warmUp(const fs::path& root) {
        Sums sums;
        ASSERT_EQ(sum(root, sums), Outcome::Complete);
    }
};
INSTANTIATE_TEST_SUITE_P(Threads, HostileTree, ::testing::Values(1U, 2U, 8U), ::testing::PrintToStringParamName());

// `levels` folders one in the other; in each also a folder "side" with a file, when `sides`.
void makeDeep(const fs::path& top, int levels, const std::string& name, bool sides) {
    int fd = ::open(top.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < levels; ++i) {
        if (sides) {
            ASSERT_EQ(::mkdirat(fd, "side", 0755), 0);
            const int file = ::openat(fd, "side/file", O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
            ASSERT_GE(file, 0);
            ::close(file);
        }
        ASSERT_EQ(::mkdirat(fd, name.c_str(), 0755), 0);
        const int next = ::openat(fd, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        ASSERT_GE(next, 0);
        ::close(fd);
        fd = next;
    }
    ::close(fd);
}

TEST_P(HostileTree, GivesTheSameVisitsForAnyNumberOfThreads) {
    const TemporaryFolder home;
    std::set<std::string> expected;
    for (int i = 0; i < 30; ++i) {
        for (int j = 0; j < 10; ++j) {
            const std::string folder = "a" + std::to_string(i) + "/b" + std::to_string(j);
            home.file(folder + "/c/file", i * 1000);
            home.file(folder + "/file", j * 1000);
            home.link("..", folder + "/link");
        }
    }
    std::int64_t bytes = 0;
    for (const auto& entry : fs::recursive_directory_iterator(home.path())) {
        expected.insert(entry.path().native().substr(home.path().native().size() + 1));
        bytes += entry.is_regular_file() && !entry.is_symlink() ? vellmoor::test::allocatedBytes(entry.path()) : 0;
    }
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_EQ(recorder.all(), expected);
    EXPECT_EQ(recorder.visits, expected.size());
    EXPECT_EQ(recorder.bytes(), bytes);
}

TEST_P(HostileTree, NamesThatAreNotUtf8AreKeptByteForByte) {
    const TemporaryFolder home;
    const std::string name = "\xff\xfe caf\xe9 \n\t\"\\";
    if (!takesName(home.path(), name)) {
        GTEST_SKIP() << "this file system has only names in UTF-8";
    }
    home.file(name + "/" + name);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre(name, name + "/" + name));
}

TEST_P(HostileTree, NamesOfTheGreatestLengthAreWhole) {
    const TemporaryFolder home;
    const std::string name(255, 'n');
    home.file(name + "/" + name);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.files(), ElementsAre(name + "/" + name));
}

TEST_P(HostileTree, AFolderOfAHundredThousandEntriesIsReadToItsEnd) {
    const TemporaryFolder home;
    home.folder("wide");
    const int fd = ::open((home / "wide").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int i = 0; i < 100'000; ++i) {
        const std::string name = "file number " + std::to_string(i);
        const int file = ::openat(fd, name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644);
        ASSERT_GE(file, 0);
        ::close(file);
    }
    ::close(fd);
    for (const bool wantsNames : {false, true}) {
        Sums sums;
        EXPECT_EQ(sum(home.path(), sums, wantsNames), Outcome::Complete);
        EXPECT_EQ(sums.files, 100'000U);
    }
}

TEST_P(HostileTree, ManyFoldersInOneAreAllEntered) {
    const TemporaryFolder home;
    for (int i = 0; i < 1000; ++i) {
        home.file(std::to_string(i) + "/file");
    }
    Sums sums;
    EXPECT_EQ(sum(home.path(), sums), Outcome::Complete);
    EXPECT_EQ(sums.folders, 1000U);
    EXPECT_EQ(sums.files, 1000U);
}

TEST_P(HostileTree, ATreeFarDeeperThanAPathMayBeLongIsWalkedToItsEnd) {
    const TemporaryFolder home;
    ASSERT_NO_FATAL_FAILURE(makeDeep(home.path(), 3000, std::string(200, 'd'), false));
    Sums sums;
    EXPECT_EQ(sum(home.path(), sums), Outcome::Complete);
    EXPECT_EQ(sums.depth, 3000U);
    EXPECT_EQ(sums.folders, 3000U);
}

TEST_P(HostileTree, AnEntryBelowPathMaxStillTellsItsPath) {
    const TemporaryFolder home;
    const std::string name(200, 'd');
    ASSERT_NO_FATAL_FAILURE(makeDeep(home.path(), 100, name, false));
    std::size_t longest = 0;
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) { // a chain: one after the other
        longest = entry.path().native().size();
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_EQ(longest, home.path().native().size() + 100 * 201);
}

TEST_P(HostileTree, SixtyFourDescriptorsAreEnoughForADeepTreeWithAFolderWaitingOnEachLevel) {
    const TemporaryFolder home;
    ASSERT_NO_FATAL_FAILURE(makeDeep(home.path(), 500, std::string(200, 'd'), true));
    const DescriptorLimit limit(64);
    Sums sums;
    EXPECT_EQ(sum(home.path(), sums), Outcome::Complete);
    EXPECT_EQ(sums.files, 500U);
    EXPECT_EQ(sums.folders, 1000U);
}

TEST_P(HostileTree, AFolderMovedAwayWhileItIsClosedToSpareDescriptorsIsPassedOver) {
    const TemporaryFolder home;
    ASSERT_NO_FATAL_FAILURE(makeDeep(home.path(), 50, "down", true));
    const DescriptorLimit limit(64);
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.depth == 50 && entry.name == "down") {
            fs::rename(home / "down", home / ".moved");
        }
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_GE(recorder.visits, 100U);
    EXPECT_LE(recorder.visits, 150U);
}

TEST_P(HostileTree, MostDescriptorsAreLeftToOthers) {
    const TemporaryFolder home;
    ASSERT_NO_FATAL_FAILURE(makeDeep(home.path(), 150, "down", true));
    const DescriptorLimit limit(128);
    const unsigned before = openDescriptors();
    std::atomic<unsigned> most{0};
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry&) {
        most = std::max(most.load(), openDescriptors());
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_LE(most, before + 128 / 8 + 1 + 2 * GetParam()); // waiting; the root; what each worker has in hand
}

TEST_P(HostileTree, ThreeFreeDescriptorsAreEnough) {
    const TemporaryFolder home;
    for (int i = 0; i < 60; ++i) {
        std::string folder = std::to_string(i);
        for (int level = 0; level < 4; ++level) {
            home.file(folder + "/one");
            home.file(folder + "/two");
            folder += "/down";
        }
    }
    warmUp(home.path());
    const AlmostNoDescriptors few(3);
    Sums sums;
    EXPECT_EQ(sum(home.path(), sums), Outcome::Complete);
    EXPECT_EQ(sums.files, 480U);
}

TEST_P(HostileTree, AWalkThatGetsNoDescriptorSaysThatSomethingIsMissing) {
    const TemporaryFolder home;
    home.file("a/b/file");
    warmUp(home.path());
    const AlmostNoDescriptors few(2);
    Sums sums;
    EXPECT_EQ(sum(home.path(), sums), Outcome::Incomplete);
    EXPECT_EQ(sums.folders, 2U);
    EXPECT_EQ(sums.files, 0U);
}

TEST_P(HostileTree, WithoutDescriptorsTheRootIsUnreadable) {
    const TemporaryFolder home;
    home.file("file");
    warmUp(home.path());
    const AlmostNoDescriptors none(0);
    Sums sums;
    EXPECT_EQ(sum(home.path(), sums), Outcome::Unreadable);
    EXPECT_EQ(sums.files, 0U);
}

TEST_P(HostileTree, AnUnreadableFolderIsPassedOver) {
    const TemporaryFolder home;
    home.file("closed/file", 5000);
    home.file("open/file");
    home.setMode("closed", 0);
    const ScopedUnprivileged unprivileged;
    ASSERT_NE(::access((home / "closed").c_str(), R_OK), 0) << "the fixture is not unreadable";
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("closed", "open", "open/file"));
}

TEST_P(HostileTree, AnUnreadableRootIsReported) {
    const TemporaryFolder home;
    home.file("closed/file");
    home.setMode("closed", 0);
    const ScopedUnprivileged unprivileged;
    Recorder recorder(home / "closed");
    EXPECT_EQ(record(recorder, home / "closed", GetParam()), Outcome::Unreadable);
}

TEST_P(HostileTree, FilesWhoseFactsCannotBeReadAreNotVisited) {
    const TemporaryFolder home;
    home.file("listable/file", 5000);
    home.setMode("listable", 0444); // names, but no entry can be reached
    const ScopedUnprivileged unprivileged;
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), ElementsAre("listable"));
}

TEST_P(HostileTree, AFolderReplacedByALinkBeforeItIsEnteredIsNotFollowed) {
    const TemporaryFolder outside;
    outside.file("secret", 5000);
    const TemporaryFolder home;
    home.file("folder/file");
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.name == "folder") {
            fs::remove_all(home / "folder");
            home.link(outside.path(), "folder");
        }
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), ElementsAre("folder"));
}

TEST_P(HostileTree, AFolderMovedWhileItsChildrenWaitIsStillWalked) {
    const TemporaryFolder home;
    home.file("folder/a/file");
    home.file("folder/b/file");
    std::atomic<int> met{0};
    Sums sums;
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.depth == 2 && ++met == 2) {
            fs::rename(home / "folder", home / ".moved");
        }
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_EQ(recorder.files().size(), 2U);
}

TEST_P(HostileTree, ATreeThatIsDeletedMeanwhileEndsTheWalkInOrder) {
    const TemporaryFolder home;
    std::set<std::string> made;
    for (int i = 0; i < 100; ++i) {
        for (int j = 0; j < 10; ++j) {
            const std::string file = "top/" + std::to_string(i) + "/" + std::to_string(j);
            home.file(file);
            made.insert(file);
        }
    }
    std::thread deleting;
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.name == "top") {
            deleting = std::thread([&] { fs::remove_all(home / "top"); });
        }
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    deleting.join();
    EXPECT_THAT(recorder.files(), IsSubsetOf(made));
}

TEST_P(HostileTree, AFolderDeletedByTheVisitorThatSeesItIsPassedOver) {
    const TemporaryFolder home;
    home.file("gone/a/file");
    home.file("kept/file");
    Recorder recorder(home.path());
    recorder.onEntry = [&](const Entry& entry) {
        if (entry.name == "gone") {
            fs::remove_all(entry.path());
        }
        return Action::Continue;
    };
    EXPECT_EQ(record(recorder, home.path(), GetParam()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("gone", "kept", "kept/file"));
}

} // namespace
} // namespace vellmoor::walk::test
