// Facts of single paths as macOS tells them. The folders are real, flags and mounts come from tests/support/darwin.
#include "DarwinSystem.h"
#include "FileContent.h"
#include "MacPlatform.h"
#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"
#include "disk/MacPaths.h"
#include "disk/PosixFiles.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor {
namespace {

using namespace std::chrono_literals;
using test::contentOf;
using test::DarwinSystem;
using test::DarwinTraits;
using test::ScopedUnprivileged;
using test::TemporaryFolder;
using ::testing::IsEmpty;
using ::testing::Optional;
using ::testing::UnorderedElementsAre;

constexpr std::uint32_t hiddenFlag = 0x8000; // UF_HIDDEN

const MacPlatform platform{};

std::set<std::string> names(const std::vector<FolderEntry>& entries, bool FolderEntry::* only = nullptr) {
    std::set<std::string> result;
    for (const FolderEntry& entry : entries) {
        if (only == nullptr || entry.*only) {
            result.insert(entry.name);
        }
    }
    return result;
}

TEST(MacFiles, FactsOfAFileAreThoseOfItsBlocks) {
    const TemporaryFolder folder;
    const Path file = folder.file("file", 100'000);
    const TimePoint moment = TimePoint(1'700'000'000s) + 123'456us;
    folder.setModified("file", moment);
    const auto facts = platform.facts(file);
    ASSERT_TRUE(facts);
    EXPECT_TRUE(facts->isRegularFile);
    EXPECT_FALSE(facts->isDirectory || facts->isSymlink || facts->isSticky);
    EXPECT_EQ(facts->allocatedBytes, test::allocatedBytes(file));
    EXPECT_GE(facts->allocatedBytes, 100'000);
    EXPECT_EQ(facts->modified, moment);
    EXPECT_EQ(facts->owner, ::geteuid());
    struct stat status{};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(facts->device, status.st_dev);
    EXPECT_EQ(facts->inode, status.st_ino);
}

TEST(MacFiles, FactsOfALinkAreThoseOfTheLinkItself) {
    const TemporaryFolder folder;
    folder.file("target", 100'000);
    const auto facts = platform.facts(folder.link("target", "link"));
    ASSERT_TRUE(facts);
    EXPECT_TRUE(facts->isSymlink);
    EXPECT_FALSE(facts->isRegularFile);
    EXPECT_LT(facts->allocatedBytes, 8192);
    EXPECT_TRUE(platform.facts(folder.link("nowhere", "dangling")));
    EXPECT_FALSE(platform.facts(folder / "missing"));
}

TEST(MacFiles, AStickyFolderIsToldFromAnOrdinaryOne) {
    const TemporaryFolder folder;
    folder.folder("sticky");
    folder.setMode("sticky", 01777);
    EXPECT_TRUE(platform.facts(folder / "sticky")->isSticky);
    EXPECT_TRUE(platform.facts(folder / "sticky")->isDirectory);
    EXPECT_FALSE(platform.facts(folder.folder("plain"))->isSticky);
}

TEST(MacFiles, ATimeBeyondAllCalendarsCanStillBeReckonedWith) {
    for (const std::time_t seconds :
         {std::numeric_limits<std::time_t>::max(), std::numeric_limits<std::time_t>::min()}) {
        const TimePoint time = files::timePoint({.tv_sec = seconds, .tv_nsec = 999'999'999});
        EXPECT_EQ(time > TimePoint(), seconds > 0);
        EXPECT_EQ(time - TimePoint(1'700'000'000s) > 0s, seconds > 0);
    }
    EXPECT_EQ(files::timePoint({.tv_sec = -2, .tv_nsec = 500'000'000}), TimePoint(-1500ms));
}

TEST(MacFiles, OnlyWhatALinkLeadsToExists) {
    const TemporaryFolder folder;
    folder.file("target");
    EXPECT_TRUE(platform.exists(folder / "target"));
    EXPECT_TRUE(platform.exists(folder.link("target", "link")));
    EXPECT_FALSE(platform.exists(folder.link("nowhere", "dangling")));
    EXPECT_FALSE(platform.exists(folder / "missing"));
    EXPECT_FALSE(platform.exists(folder / "target/below"));
    EXPECT_FALSE(platform.exists(""));
}

TEST(MacFiles, WhatIsClosedIsNotReadable) {
    const TemporaryFolder folder;
    folder.file("open");
    folder.file("closed");
    folder.file("closed folder/inside");
    folder.folder("open folder");
    folder.setMode("closed", 0);
    folder.setMode("closed folder", 0);
    const ScopedUnprivileged unprivileged;
    EXPECT_TRUE(platform.isReadable(folder / "open"));
    EXPECT_TRUE(platform.isReadable(folder / "open folder"));
    EXPECT_TRUE(platform.isReadable(folder.link("open folder", "link")));
    EXPECT_FALSE(platform.isReadable(folder / "closed"));
    EXPECT_FALSE(platform.isReadable(folder / "closed folder"));
    EXPECT_FALSE(platform.isReadable(folder / "closed folder/inside"));
    EXPECT_FALSE(platform.isReadable(folder / "missing"));
    EXPECT_FALSE(platform.isReadable(folder.link("nowhere", "dangling")));
}

TEST(MacFiles, AReadableFifoDoesNotBlock) {
    const TemporaryFolder folder;
    const Path fifo = folder.fifo("fifo");
    EXPECT_TRUE(platform.isReadable(fifo));
    EXPECT_EQ(platform.fileContents(fifo, 10), std::nullopt);
    EXPECT_EQ(platform.fileStart(fifo, 10), std::nullopt);
    EXPECT_FALSE(platform.entries(fifo));
}

TEST(MacFiles, OnlyAProgramIsExecutable) {
    const TemporaryFolder folder;
    folder.file("tool");
    EXPECT_FALSE(platform.isExecutable(folder / "tool"));
    folder.setMode("tool", 0755);
    EXPECT_TRUE(platform.isExecutable(folder / "tool"));
    EXPECT_FALSE(platform.isExecutable(folder / "missing"));
}

TEST(MacFiles, AListingTellsTypesAndHiddenNames) {
    const TemporaryFolder folder;
    folder.file("file");
    folder.file("folder/inside");
    folder.link("folder", "link");
    folder.fifo("fifo");
    folder.file(".hidden file");
    folder.folder(".hidden folder");
    const auto entries = platform.entries(folder.path());
    ASSERT_TRUE(entries);
    EXPECT_EQ(entries->size(), 6U);
    EXPECT_THAT(names(*entries, &FolderEntry::isDirectory), UnorderedElementsAre("folder", ".hidden folder"));
    EXPECT_THAT(names(*entries, &FolderEntry::isRegularFile), UnorderedElementsAre("file", ".hidden file"));
    EXPECT_THAT(names(*entries, &FolderEntry::isSymlink), UnorderedElementsAre("link"));
    EXPECT_THAT(names(*entries, &FolderEntry::isHidden), UnorderedElementsAre(".hidden file", ".hidden folder"));
}

TEST(MacFiles, AListingTellsWhatFinderHides) {
    const TemporaryFolder folder;
    folder.folder("Library");
    folder.file("shown");
    DarwinTraits traits;
    traits.flags = {{"Library", hiddenFlag | 1}, {"shown", 1}};
    const DarwinSystem darwin(traits);
    const auto entries = platform.entries(folder.path());
    ASSERT_TRUE(entries);
    EXPECT_THAT(names(*entries, &FolderEntry::isHidden), UnorderedElementsAre("Library"));
    EXPECT_THAT(names(*entries, &FolderEntry::isDirectory), UnorderedElementsAre("Library"));
}

TEST(MacFiles, AnEntryThatCannotBeAskedIsListedAsShown) {
    const TemporaryFolder folder;
    folder.file("file");
    folder.folder("folder");
    DarwinTraits traits;
    traits.entryErrors = {{"file", EPERM}, {"folder", EPERM}};
    traits.statErrors = {{"file", EPERM}};
    const DarwinSystem darwin(traits);
    const auto entries = platform.entries(folder.path());
    ASSERT_TRUE(entries);
    EXPECT_THAT(names(*entries), UnorderedElementsAre("file", "folder"));
    EXPECT_THAT(names(*entries, &FolderEntry::isRegularFile), IsEmpty()); // nobody could tell
    EXPECT_THAT(names(*entries, &FolderEntry::isDirectory), UnorderedElementsAre("folder"));
    EXPECT_THAT(names(*entries, &FolderEntry::isHidden), IsEmpty());
}

TEST(MacFiles, NoListedEntryCostsACallOfItsOwn) {
    const TemporaryFolder folder;
    folder.file("file");
    folder.folder("folder");
    folder.link("file", "link");
    const DarwinSystem darwin({});
    EXPECT_EQ(platform.entries(folder.path())->size(), 3U);
    EXPECT_THAT(darwin.statted(), IsEmpty());
}

TEST(MacFiles, AFolderWithManyEntriesIsListedToItsEnd) {
    const TemporaryFolder folder;
    for (int i = 0; i < 500; ++i) {
        folder.file(std::to_string(i));
    }
    const DarwinSystem darwin({.batchBytes = 1000, .padding = 3});
    EXPECT_EQ(names(*platform.entries(folder.path())).size(), 500U);
}

TEST(MacFiles, AFolderThatBreaksOffWhileItIsListedFails) {
    const TemporaryFolder folder;
    for (int i = 0; i < 50; ++i) {
        folder.file(std::to_string(i));
    }
    DarwinTraits traits{.batchBytes = 1000};
    traits.failure = [](const std::string&, unsigned batches) { return batches > 0 ? EIO : 0; };
    {
        const DarwinSystem darwin(traits);
        EXPECT_EQ(platform.entries(folder.path()).error(), files::reason(EIO));
    }
    traits.failure = {};
    traits.damage = [](std::span<char> batch, int&) { std::fill(batch.begin(), batch.end(), '\0'); };
    const DarwinSystem darwin(traits);
    EXPECT_EQ(platform.entries(folder.path()).error(), files::reason(EIO));
}

TEST(MacFiles, AMountPointIsListedLikeAnyFolder) {
    const TemporaryFolder folder;
    folder.folder("disk");
    DarwinTraits traits;
    traits.mountStatus = {{"disk", 1}};
    const DarwinSystem darwin(traits);
    EXPECT_THAT(names(*platform.entries(folder.path()), &FolderEntry::isDirectory), UnorderedElementsAre("disk"));
}

TEST(MacFiles, AListingLeavesHalvesOfFilesOut) {
    const TemporaryFolder folder;
    folder.file("file");
    folder.file("._file");
    folder.file("._");
    folder.file(".x");
    const auto entries = platform.entries(folder.path());
    ASSERT_TRUE(entries);
    EXPECT_THAT(names(*entries), UnorderedElementsAre("file", ".x"));
}

TEST(MacFiles, AListingFollowsALinkAndSaysWhyItFails) {
    const TemporaryFolder folder;
    folder.file("folder/inside");
    folder.folder("closed");
    folder.setMode("closed", 0);
    EXPECT_EQ(platform.entries(folder.link("folder", "link"))->size(), 1U);
    EXPECT_EQ(platform.entries(folder / "missing").error(), files::reason(ENOENT));
    EXPECT_EQ(platform.entries(folder / "folder/inside").error(), files::reason(ENOTDIR));
    const ScopedUnprivileged unprivileged;
    EXPECT_EQ(platform.entries(folder / "closed").error(), files::reason(EACCES));
}

TEST(MacFiles, NamesThatAreNotUtf8AreListedByteForByte) {
    const TemporaryFolder folder;
    folder.file("\xff\xfe");
    EXPECT_THAT(names(*platform.entries(folder.path())), UnorderedElementsAre("\xff\xfe"));
}

TEST(MacFiles, ContentsAndStartAreThoseOfAFile) {
    const TemporaryFolder folder;
    const Path file = folder.text("file", "contents");
    EXPECT_THAT(platform.fileContents(file, 8), Optional(std::string("contents")));
    EXPECT_EQ(platform.fileContents(file, 7), std::nullopt);
    EXPECT_THAT(platform.fileStart(file, 3), Optional(std::string("con")));
    EXPECT_THAT(platform.fileStart(file, 100), Optional(std::string("contents")));
    EXPECT_EQ(platform.fileStart(folder.link("file", "link"), 3), std::nullopt);
    EXPECT_EQ(platform.fileContents(folder.path(), 8), std::nullopt);
    EXPECT_EQ(platform.fileContents(folder / "missing", 8), std::nullopt);
}

TEST(MacFiles, ALinksTextAndAPathWithoutLinksAreTold) {
    const TemporaryFolder folder;
    folder.file("folder/file");
    folder.link("folder", "link");
    EXPECT_THAT(platform.linkTarget(folder / "link"), Optional(Path("folder")));
    EXPECT_EQ(platform.linkTarget(folder / "folder"), std::nullopt);
    EXPECT_THAT(platform.realPath(folder / "link/file"), Optional(folder / "folder/file"));
    EXPECT_EQ(platform.realPath(folder / "link/missing"), std::nullopt);
}

// Every call that could reach into a folder of a cloud is made so that nothing is fetched, and the thread is as
// it was afterwards.
TEST(MacFiles, NothingIsFetchedFromACloud) {
    const TemporaryFolder folder;
    folder.file("folder/file");
    const DarwinSystem darwin({});
    ASSERT_TRUE(test::threadMayFetch());
    EXPECT_TRUE(platform.facts(folder / "folder"));
    EXPECT_TRUE(platform.exists(folder / "folder/file"));
    EXPECT_TRUE(platform.isReadable(folder / "folder"));
    EXPECT_EQ(platform.entries(folder / "folder")->size(), 1U);
    EXPECT_TRUE(platform.fileContents(folder / "folder/file", 10));
    EXPECT_TRUE(platform.fileStart(folder / "folder/file", 10));
    EXPECT_FALSE(platform.isMountPoint(folder / "folder"));
    EXPECT_GE(darwin.statted().size(), 5U);
    EXPECT_EQ(darwin.unguardedCalls(), 0U);
    EXPECT_TRUE(test::threadMayFetch());
}

TEST(MacFiles, AMountPointIsToldFromAnOrdinaryFolder) {
    const TemporaryFolder folder;
    folder.file("disk/inside");
    folder.folder("data/disk");
    folder.link("disk", "link");
    folder.link(".", "here");
    DarwinTraits traits;
    traits.mounts = {"/", (folder / "disk").native(), (folder / "data/disk").native()};
    const DarwinSystem darwin(traits);
    EXPECT_TRUE(platform.isMountPoint(folder / "disk"));
    EXPECT_TRUE(platform.isMountPoint(folder / "here/disk"));
    EXPECT_TRUE(platform.isMountPoint("/"));
    EXPECT_FALSE(platform.isMountPoint(folder / "link")); // itself it is none
    EXPECT_FALSE(platform.isMountPoint(folder.link("nowhere", "dangling")));
    EXPECT_FALSE(platform.isMountPoint(folder / "disk/inside"));
    EXPECT_FALSE(platform.isMountPoint(folder / "data"));
    EXPECT_FALSE(platform.isMountPoint(folder.path()));
    EXPECT_FALSE(platform.isMountPoint(folder / "missing"));
}

TEST(MacFiles, AFileIsCreatedOnceAndRemoved) {
    const TemporaryFolder folder;
    folder.folder("folder");
    EXPECT_TRUE(platform.createFile(folder / "file", "text"));
    EXPECT_EQ(contentOf(folder / "file"), "text");
    EXPECT_EQ(platform.createFile(folder / "file", "other").error(), files::reason(EEXIST));
    EXPECT_EQ(platform.createFile(folder.link("nowhere", "link"), "other").error(), files::reason(EEXIST));
    EXPECT_EQ(contentOf(folder / "file"), "text");
    EXPECT_TRUE(platform.removeFile(folder / "file"));
    EXPECT_FALSE(platform.exists(folder / "file"));
    EXPECT_FALSE(platform.removeFile(folder / "folder"));
    EXPECT_TRUE(platform.exists(folder / "folder"));
    EXPECT_TRUE(platform.removeFile(folder / "link"));
}

/// A system of which these paths exist.
Path standardizedAmong(const std::set<Path>& existing, const Path& path) {
    return mac::standardized(path, [&](const Path& asked) { return existing.contains(asked); });
}

TEST(MacStandardized, SlashesDotsAndTheEndAreTidied) {
    EXPECT_EQ(standardizedAmong({}, "/Users//ann/./Downloads/"), "/Users/ann/Downloads");
    EXPECT_EQ(standardizedAmong({}, "/"), "/");
    EXPECT_EQ(standardizedAmong({}, "//."), "/");
    EXPECT_EQ(standardizedAmong({}, "a/./b/"), "a/b");
    EXPECT_EQ(standardizedAmong({}, ""), "");
}

TEST(MacStandardized, PrivateIsDroppedWhereTheRestExists) {
    const std::set<Path> existing{"/tmp/x", "/var", "/tmp", "/Users/ann", "/usr/bin", "/optional"};
    EXPECT_EQ(standardizedAmong(existing, "/private/tmp/x"), "/tmp/x");
    EXPECT_EQ(standardizedAmong(existing, "/private/var"), "/var");
    EXPECT_EQ(standardizedAmong(existing, "/private/optional"), "/optional");
    EXPECT_EQ(standardizedAmong(existing, "/private/tmp/missing"), "/private/tmp/missing");
    EXPECT_EQ(standardizedAmong(existing, "/private/Users/ann"), "/private/Users/ann");
    EXPECT_EQ(standardizedAmong(existing, "/private/usr/bin"), "/private/usr/bin");
    EXPECT_EQ(standardizedAmong(existing, "/private"), "/private");
    EXPECT_EQ(standardizedAmong(existing, "/privateer/tmp"), "/privateer/tmp");
    EXPECT_EQ(standardizedAmong({"/private/tmp"}, "/private/private/tmp"), "/private/private/tmp");
}

TEST(MacStandardized, AStepUpIsTakenWhereALinkLeads) {
    const TemporaryFolder folder;
    folder.file("real/inner/file");
    folder.file("real/beside");
    folder.link("real/inner", "link");
    EXPECT_EQ(mac::standardized(folder / "link/../beside"), folder / "real/beside");
    EXPECT_EQ(mac::standardized(folder / "link/file"), folder / "link/file"); // no other link is resolved
    EXPECT_EQ(mac::standardized(folder / "missing/../x"), folder / "x");      // nothing there to follow
    EXPECT_EQ(mac::standardized("a/../../b"), "../b");
}

} // namespace
} // namespace vellmoor
