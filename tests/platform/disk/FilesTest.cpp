#include "disk/Files.h"

#include "FileContent.h"
#include "LinuxPlatform.h"
#include "ScopedMount.h"
#include "ScopedUnprivileged.h"
#include "StandInPlatform.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

using namespace std::chrono_literals;
using test::contentOf;
using test::ScopedMount;
using test::ScopedUnprivileged;
using test::TemporaryFolder;
using ::testing::ElementsAre;
using ::testing::Eq;
using ::testing::IsEmpty;
using ::testing::Optional;

std::vector<std::string> systemOrder(const Path& folder) {
    std::vector<std::string> names;
    DIR* directory = ::opendir(folder.c_str());
    while (const dirent* entry = ::readdir(directory)) {
        if (const std::string name = entry->d_name; name != "." && name != "..") {
            names.push_back(name);
        }
    }
    ::closedir(directory);
    return names;
}

class Files : public ::testing::Test {
protected:
    TemporaryFolder folder_;
    LinuxPlatform platform_;
};

TEST_F(Files, FactsOfALinkAreThoseOfTheLinkItself) {
    folder_.file("target", 100'000);
    const auto facts = platform_.facts(folder_.link("target", "link"));
    ASSERT_TRUE(facts);
    EXPECT_TRUE(facts->isSymlink);
    EXPECT_FALSE(facts->isRegularFile);
    EXPECT_LT(facts->allocatedBytes, 8192);
}

TEST_F(Files, ASparseFileCountsItsBlocksAndNotItsLength) {
    EXPECT_LT(platform_.facts(folder_.sparse("sparse", 1 << 30))->allocatedBytes, 1 << 20);
    const Path full = folder_.file("full", 1'000'000);
    EXPECT_EQ(platform_.facts(full)->allocatedBytes, test::allocatedBytes(full));
    EXPECT_GE(platform_.facts(full)->allocatedBytes, 1'000'000);
}

TEST_F(Files, TheModificationDateIsKeptBelowTheSecond) {
    const TimePoint moment = TimePoint(1'700'000'000s) + 123'456us;
    folder_.file("dated");
    folder_.setModified("dated", moment);
    EXPECT_EQ(platform_.facts(folder_ / "dated")->modified, moment);
}

TEST_F(Files, AStickyFolderIsToldFromAnOrdinaryOne) {
    folder_.folder("sticky");
    folder_.setMode("sticky", 01777);
    folder_.folder("plain");
    EXPECT_TRUE(platform_.facts(folder_ / "sticky")->isSticky);
    EXPECT_FALSE(platform_.facts(folder_ / "plain")->isSticky);
}

TEST_F(Files, NothingHasNoFacts) {
    EXPECT_FALSE(platform_.facts(folder_ / "missing"));
}

TEST_F(Files, ADanglingLinkExistsOnLinuxAndDoesNotOnMacOS) {
    const Path dangling = folder_.link("nowhere", "dangling");
    const test::StandInPlatform mac(test::System::Mac, folder_.path());
    const test::StandInPlatform scriptedLinux(test::System::Linux, folder_.path());
    EXPECT_TRUE(platform_.exists(dangling));
    EXPECT_TRUE(scriptedLinux.exists(dangling));
    EXPECT_FALSE(mac.exists(dangling));
}

TEST_F(Files, EntriesComeInTheSystemsOrder) {
    for (int number = 0; number < 200; ++number) {
        folder_.file("entry " + std::to_string(number * 7919 % 200));
    }
    std::vector<std::string> names;
    const auto entries = platform_.entries(folder_.path());
    for (const FolderEntry& entry : *entries) {
        names.push_back(entry.name);
    }
    EXPECT_EQ(names.size(), 200U);
    EXPECT_EQ(names, systemOrder(folder_.path()));
}

TEST_F(Files, EntriesTellKindsAndHiddenNames) {
    folder_.folder("one/folder");
    folder_.file("one/.hidden");
    folder_.link("folder", "one/link");
    folder_.fifo("one/pipe");
    std::map<std::string, FolderEntry> byName;
    const auto entries = platform_.entries(folder_ / "one");
    for (const FolderEntry& entry : *entries) {
        byName[entry.name] = entry;
    }
    ASSERT_EQ(byName.size(), 4U);
    EXPECT_TRUE(byName["folder"].isDirectory && !byName["folder"].isHidden);
    EXPECT_TRUE(byName[".hidden"].isRegularFile && byName[".hidden"].isHidden);
    EXPECT_TRUE(byName["link"].isSymlink && !byName["link"].isDirectory);
    EXPECT_FALSE(byName["pipe"].isRegularFile || byName["pipe"].isDirectory || byName["pipe"].isSymlink);
}

TEST_F(Files, ANameThatIsNotUtf8ComesWithItsBytes) {
    folder_.file("one/caf\xe9");
    const auto entries = platform_.entries(folder_ / "one");
    ASSERT_EQ(entries->size(), 1U);
    EXPECT_EQ(entries->front().name, "caf\xe9");
    EXPECT_TRUE(platform_.exists(folder_ / "one" / entries->front().name));
}

TEST_F(Files, AFolderThatCannotBeListedTellsWhy) {
    folder_.folder("closed");
    folder_.setMode("closed", 0);
    const ScopedUnprivileged unprivileged;
    EXPECT_EQ(platform_.entries(folder_ / "closed").error(), "Permission denied");
    EXPECT_EQ(platform_.entries(folder_ / "missing").error(), "No such file or directory");
    EXPECT_EQ(platform_.entries(folder_.file("file")).error(), "Not a directory");
}

TEST_F(Files, AListedFolderMayBeALink) {
    folder_.file("real/file");
    EXPECT_EQ(platform_.entries(folder_.link("real", "link"))->size(), 1U);
}

TEST_F(Files, AFolderIsReadableOnlyWhenItCanBeListedAndEntered) {
    folder_.folder("listable");
    folder_.setMode("listable", 0444);
    folder_.folder("open");
    folder_.setMode("open", 0555);
    folder_.file("secret");
    folder_.setMode("secret", 0200);
    const ScopedUnprivileged unprivileged;
    EXPECT_FALSE(platform_.isReadable(folder_ / "listable"));
    EXPECT_TRUE(platform_.isReadable(folder_ / "open"));
    EXPECT_FALSE(platform_.isReadable(folder_ / "secret"));
    EXPECT_FALSE(platform_.isReadable(folder_ / "missing"));
}

TEST_F(Files, AProgramIsExecutableOnlyWithItsMode) {
    folder_.text("tool", "#!/bin/sh\n");
    EXPECT_FALSE(platform_.isExecutable(folder_ / "tool"));
    folder_.setMode("tool", 0755);
    EXPECT_TRUE(platform_.isExecutable(folder_ / "tool"));
}

TEST_F(Files, AFileUpToTheLimitIsReadAndALongerOneIsNot) {
    const Path file = folder_.text("file", "12345");
    EXPECT_THAT(platform_.fileContents(file, 5), Optional(Eq("12345")));
    EXPECT_FALSE(platform_.fileContents(file, 4));
    EXPECT_THAT(platform_.fileContents(folder_.file("empty"), 0), Optional(IsEmpty()));
}

TEST_F(Files, AKernelFileIsReadToItsEndThoughItsLengthIsZero) {
    const auto status = platform_.fileContents("/proc/self/status", 1 << 20);
    ASSERT_TRUE(status);
    EXPECT_THAT(*status, ::testing::HasSubstr("VmRSS:"));
}

TEST_F(Files, NothingThatCouldBlockOrNeverEndIsRead) {
    EXPECT_FALSE(platform_.fileContents(folder_.fifo("pipe"), 100));
    EXPECT_FALSE(platform_.fileContents(folder_.link("pipe", "link to the pipe"), 100));
    EXPECT_FALSE(platform_.fileContents("/dev/zero", 100));
    EXPECT_FALSE(platform_.fileContents(folder_.path(), 100));
    EXPECT_FALSE(platform_.fileContents(folder_.link("nowhere", "dangling"), 100));
}

TEST_F(Files, AFileIsReadThroughALinkToIt) {
    folder_.text("dotfiles/profile", "text");
    EXPECT_THAT(platform_.fileContents(folder_.link("dotfiles/profile", "profile"), 100), Optional(Eq("text")));
}

TEST_F(Files, ALinkAnswersItsTextAndNothingElseDoes) {
    EXPECT_THAT(platform_.linkTarget(folder_.link("../some where", "link")), Optional(Path("../some where")));
    EXPECT_FALSE(platform_.linkTarget(folder_.file("file")));
}

TEST_F(Files, ARealPathResolvesEveryLinkAndARealPlaceLeavesTheLast) {
    folder_.file("real/file");
    folder_.link("real", "alias");
    folder_.link("file", "real/link");
    EXPECT_THAT(platform_.realPath(folder_ / "alias/link"), Optional(folder_ / "real/file"));
    EXPECT_THAT(platform_.realPlace(folder_ / "alias/link"), Optional(folder_ / "real/link"));
    EXPECT_FALSE(platform_.realPath(folder_ / "missing"));
}

TEST_F(Files, AMoveNeverReplacesWhatIsThere) {
    const Path from = folder_.text("from", "new");
    const Path to = folder_.text("to", "old");
    EXPECT_EQ(platform_.moveItem(from, to).error(), "File exists");
    EXPECT_EQ(contentOf(to), "old");
    EXPECT_EQ(contentOf(from), "new");
}

TEST_F(Files, AMoveReplacesNeitherAnEmptyFolderNorADanglingLink) {
    const Path from = folder_.folder("from");
    EXPECT_FALSE(platform_.moveItem(from, folder_.folder("empty")));
    EXPECT_FALSE(platform_.moveItem(from, folder_.link("nowhere", "dangling")));
    EXPECT_TRUE(platform_.exists(from));
}

TEST_F(Files, AMoveTakesALinkItselfAndAFolderAsAWhole) {
    folder_.file("tree/inner");
    folder_.link("/nowhere", "link");
    EXPECT_TRUE(platform_.moveItem(folder_ / "tree", folder_ / "moved"));
    EXPECT_TRUE(platform_.moveItem(folder_ / "link", folder_ / "moved link"));
    EXPECT_TRUE(platform_.exists(folder_ / "moved/inner"));
    EXPECT_THAT(platform_.linkTarget(folder_ / "moved link"), Optional(Path("/nowhere")));
}

TEST_F(Files, ANewFolderComesWithThoseAboveAndAnExistingOneIsNoFailure) {
    EXPECT_TRUE(platform_.createFolder(folder_ / "a/b/c"));
    EXPECT_TRUE(platform_.createFolder(folder_ / "a/b/c"));
    EXPECT_TRUE(platform_.facts(folder_ / "a/b/c")->isDirectory);
    folder_.file("file");
    EXPECT_FALSE(platform_.createFolder(folder_ / "file"));
    EXPECT_FALSE(platform_.createFolder(folder_ / "file/below"));
}

TEST_F(Files, ANewFileReplacesNothingAndGoesThroughNoLink) {
    EXPECT_TRUE(platform_.createFile(folder_ / "new", "text"));
    EXPECT_EQ(contentOf(folder_ / "new"), "text");
    EXPECT_EQ(platform_.createFile(folder_ / "new", "other").error(), "File exists");
    EXPECT_EQ(contentOf(folder_ / "new"), "text");
    EXPECT_FALSE(platform_.createFile(folder_.link("elsewhere", "dangling"), "text"));
    EXPECT_FALSE(platform_.exists(folder_ / "elsewhere"));
}

TEST_F(Files, AFileThatDoesNotFitOnTheDiskLeavesNothingBehind) {
    const Path small = folder_.folder("small");
    const ScopedMount mount = ScopedMount::memory(small, "size=64k");
    VELLMOOR_NEEDS_MOUNT(mount);
    EXPECT_EQ(platform_.createFile(small / "big", std::string(1 << 20, 'x')).error(), "No space left on device");
    EXPECT_FALSE(platform_.exists(small / "big"));
}

TEST_F(Files, RemovingAFileRefusesAFolderAndTakesALinkItself) {
    folder_.file("folder/file");
    folder_.link("folder", "link");
    EXPECT_FALSE(platform_.removeFile(folder_ / "folder"));
    EXPECT_TRUE(platform_.removeFile(folder_ / "link"));
    EXPECT_TRUE(platform_.exists(folder_ / "folder/file"));
    EXPECT_EQ(platform_.removeFile(folder_ / "link").error(), "No such file or directory");
}

TEST_F(Files, AFileIsNotMovedToAnotherFileSystemByCopying) {
    const Path other = folder_.folder("other");
    const ScopedMount mount = ScopedMount::memory(other);
    VELLMOOR_NEEDS_MOUNT(mount);
    const Path file = folder_.text("file", "text");
    EXPECT_EQ(platform_.moveItem(file, other / "file").error(), "Invalid cross-device link");
    EXPECT_EQ(contentOf(file), "text");
    EXPECT_FALSE(platform_.exists(other / "file"));
}

TEST_F(Files, CapacityCountsWhatTheUserMayFill) {
    const Path other = folder_.folder("other");
    const ScopedMount mount = ScopedMount::memory(other, "size=1m");
    VELLMOOR_NEEDS_MOUNT(mount);
    const auto before = platform_.capacity(other);
    ASSERT_TRUE(before);
    EXPECT_EQ(before->totalBytes, 1 << 20);
    EXPECT_TRUE(platform_.createFile(other / "file", std::string(512 << 10, 'x')));
    EXPECT_EQ(before->availableBytes - platform_.capacity(other)->availableBytes, 512 << 10);
    EXPECT_FALSE(platform_.capacity(other / "missing"));
}

} // namespace
} // namespace vellmoor
