// What is macOS's own in a walk. The system's calls come from tests/support/darwin, the folders are real.
#include "DarwinAbi.h"
#include "DarwinSystem.h"
#include "DarwinTree.h"
#include "Recorder.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;

namespace vellmoor::walk::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using vellmoor::test::allocatedBytes;
using vellmoor::test::DarwinSystem;
using vellmoor::test::DarwinTraits;
using vellmoor::test::TemporaryFolder;

TEST(DarwinWalk, SmallBatchesOfOddLengthTellTheSameAsLargeOnes) {
    const TemporaryFolder home;
    fill(home);
    std::int64_t bytes = 0;
    const auto files = filesOnDisk(home.path(), bytes);
    for (const std::size_t batchBytes : {400U, 601U, 5000U}) {
        for (const std::size_t padding : {0U, 1U, 3U, 6U}) {
            const DarwinSystem darwin({.batchBytes = batchBytes, .padding = padding});
            for (const unsigned threads : {1U, 4U}) {
                Recorder recorder(home.path());
                EXPECT_EQ(record(recorder, home.path(), threads), Outcome::Complete);
                EXPECT_EQ(recorder.files(), files);
                EXPECT_EQ(recorder.bytes(), bytes);
                EXPECT_EQ(recorder.visits, recorder.seen.size());
            }
        }
    }
}

TEST(DarwinWalk, AFoldersNamesAreCollectedOverManyBatches) {
    const TemporaryFolder home;
    for (int i = 0; i < 2000; ++i) {
        home.file("wide/" + std::string(100, 'n') + std::to_string(i));
    }
    const DarwinSystem darwin({.batchBytes = 1000});
    Options options;
    options.wantsNames = true;
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_EQ(recorder.namesOf["wide"].size(), 2000U);
    EXPECT_EQ(recorder.files().size(), 2000U);
}

TEST(DarwinWalk, NoEntryCostsACallOfItsOwn) {
    const TemporaryFolder home;
    home.file("folder/file", 5000);
    home.link("folder", "link");
    home.fifo("pipe");
    const DarwinSystem darwin({});
    Recorder recorder(home.path());
    (void)record(recorder, home.path());
    EXPECT_EQ(recorder.visits, 4U);
    EXPECT_THAT(darwin.statted(), ElementsAre("", "")); // each folder that was opened
}

TEST(DarwinWalk, SizesAndDatesThatTheListingLeavesOutAreAskedForByName) {
    const TemporaryFolder home;
    home.file("folder/file", 10'000);
    const auto expected = allocatedBytes(home / "folder/file");
    for (const attribute_set_t withheld :
         {attribute_set_t{.fileattr = ATTR_FILE_ALLOCSIZE},
          attribute_set_t{.fileattr = ATTR_FILE_ALLOCSIZE | ATTR_FILE_DATAALLOCSIZE},
          attribute_set_t{.commonattr = ATTR_CMN_MODTIME}, attribute_set_t{.commonattr = ATTR_CMN_OBJTYPE},
          attribute_set_t{.commonattr = ATTR_CMN_FNDRINFO}, attribute_set_t{.dirattr = ATTR_DIR_MOUNTSTATUS}}) {
        const DarwinSystem darwin({.withheld = withheld});
        Recorder recorder(home.path());
        EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
        EXPECT_EQ(recorder.bytes(), expected);
        struct stat facts{};
        ASSERT_EQ(::stat((home / "folder/file").c_str(), &facts), 0);
        EXPECT_EQ(recorder.seen.at("folder/file").modifiedNs,
                  std::int64_t{facts.st_mtim.tv_sec} * 1'000'000'000 + facts.st_mtim.tv_nsec);
    }
}

TEST(DarwinWalk, AnEntryThatTheListingCouldNotReadIsAskedForByName) {
    const TemporaryFolder home;
    home.file("odd/file", 5000);
    home.file("gone");
    home.file("plain");
    DarwinTraits traits;
    traits.entryErrors = {{"odd", EACCES}, {"file", EIO}, {"gone", EACCES}};
    traits.statErrors = {{"gone", EACCES}};
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("odd", "odd/file", "plain"));
    EXPECT_EQ(recorder.bytes(), allocatedBytes(home / "odd/file"));
}

TEST(DarwinWalk, AnInterruptedCallIsMadeAgain) {
    const TemporaryFolder home;
    fill(home);
    std::int64_t bytes = 0;
    const auto files = filesOnDisk(home.path(), bytes);
    unsigned calls = 0;
    DarwinTraits traits;
    traits.batchBytes = 600;
    traits.failure = [&](const std::string&, unsigned) { return ++calls % 3 == 0 ? 0 : EINTR; };
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path(), 4), Outcome::Complete);
    EXPECT_EQ(recorder.files(), files);
    EXPECT_EQ(recorder.bytes(), bytes);
}

TEST(DarwinWalk, EveryHelperIsAsUrgentAsTheThreadThatWalks) {
    const TemporaryFolder home;
    fill(home);
    std::mutex lock;
    std::map<unsigned, unsigned> urgencies; // how many visits had which
    std::thread([&] {
        darwin_pthread_set_qos_class_self_np(0x19, 0); // QOS_CLASS_USER_INITIATED
        Recorder recorder(home.path());
        recorder.onEntry = [&](const Entry&) {
            const std::scoped_lock guard(lock);
            ++urgencies[vellmoor::test::urgencyOfThread()];
            return Action::Continue;
        };
        (void)record(recorder, home.path(), 4);
    }).join();
    ASSERT_EQ(urgencies.size(), 1U);
    EXPECT_EQ(urgencies.begin()->first, 0x19U);
}

TEST(DarwinWalk, WhatIsMarkedHiddenIsNeitherVisitedNorEntered) {
    const TemporaryFolder home;
    home.file("hidden/file");
    home.file("folder/hidden file");
    home.file("folder/file");
    DarwinTraits traits;
    traits.flags = {{"hidden", hiddenFlag}, {"hidden file", hiddenFlag}};
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("folder", "folder/file"));
    Options options;
    options.skipHidden = false;
    Recorder everything(home.path());
    EXPECT_EQ(walk(home.path(), options, everything), Outcome::Complete);
    EXPECT_EQ(everything.visits, 5U);
}

TEST(DarwinWalk, HalvesOfFilesOnForeignDisksDoNotExist) {
    const TemporaryFolder home;
    home.file("file");
    home.file("._file");
    home.file("folder/._x");
    home.file("._folder/file");
    home.file(".hidden");
    Options options;
    options.skipHidden = false;
    options.wantsNames = true;
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("file", "folder", ".hidden"));
    EXPECT_THAT(recorder.namesOf["folder"], IsEmpty());
}

TEST(DarwinWalk, FinderMarksAPackageWithoutExtension) {
    const TemporaryFolder home;
    home.file("Bundle/Contents/file");
    home.file("Library.photoslibrary/file");
    home.file("folder/file");
    std::mutex mutex;
    std::set<std::string> asked;
    Options options;
    options.isPackage = [&](const fs::path& path) {
        const std::lock_guard lock(mutex);
        asked.insert(path.filename());
        return path.filename() != "folder";
    };
    DarwinTraits traits;
    traits.bundles = {"Bundle"};
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(walk(home.path(), options, recorder), Outcome::Complete);
    EXPECT_THAT(asked, UnorderedElementsAre("Bundle", "Library.photoslibrary"));
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("Bundle", "Library.photoslibrary", "folder", "folder/file"));
}

} // namespace
} // namespace vellmoor::walk::test
