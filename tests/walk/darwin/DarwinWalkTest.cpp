// What is macOS's own in a walk. The system's calls come from tests/support/darwin, the folders are real.
#include "DarwinAbi.h"
#include "DarwinSystem.h"
#include "Recorder.h"
#include "TemporaryFolder.h"
#include "ThreadPolicy.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <map>
#include <mutex>
#include <sys/stat.h>
#include <thread>

namespace fs = std::filesystem;

namespace vellmoor::walk::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::IsSubsetOf;
using ::testing::Not;
using ::testing::UnorderedElementsAre;
using vellmoor::test::allocatedBytes;
using vellmoor::test::DarwinSystem;
using vellmoor::test::DarwinTraits;
using vellmoor::test::TemporaryFolder;
using vellmoor::test::threadMayFetch;

constexpr std::uint32_t hiddenFlag = 0x8000, datalessFlag = 0x4000'0000; // UF_HIDDEN, SF_DATALESS

std::set<std::string> filesOnDisk(const fs::path& root, std::int64_t& bytes) {
    std::set<std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.symlink_status().type() == fs::file_type::regular) {
            files.insert(entry.path().lexically_relative(root).native());
            bytes += allocatedBytes(entry.path());
        }
    }
    return files;
}

void fill(const TemporaryFolder& home) {
    for (int i = 0; i < 60; ++i) {
        const std::string folder = "folder " + std::to_string(i % 7) + "/" + std::string(static_cast<unsigned>(i), 'n');
        home.file(folder + "/file " + std::to_string(i), std::int64_t{700} * i);
        home.file("folder " + std::to_string(i % 7) + "/" + std::to_string(i), i);
        home.link("..", folder + "/link");
    }
}

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

TEST(DarwinWalk, AFolderInACloudIsVisitedAndNeverOpened) {
    const TemporaryFolder home;
    home.file("cloud/file");
    home.file("placeholder");
    home.file("here/file");
    DarwinTraits traits;
    traits.flags = {{"cloud", datalessFlag}, {"placeholder", datalessFlag}};
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("cloud", "placeholder", "here", "here/file"));
    EXPECT_THAT(darwin.listed(), Not(Contains("cloud")));
}

TEST(DarwinWalk, AFolderInACloudIsToldByItsNameWhereTheListingLeavesFlagsOut) {
    const TemporaryFolder home;
    home.file("cloud/file");
    home.file("hidden");
    home.file("file", 5000);
    DarwinTraits traits;
    traits.flags = {{"cloud", datalessFlag}, {"hidden", hiddenFlag}};
    traits.withheld.commonattr = ATTR_CMN_FLAGS;
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("cloud", "file"));
    EXPECT_THAT(darwin.listed(), Not(Contains("cloud")));
    EXPECT_EQ(recorder.bytes(), allocatedBytes(home / "file"));
}

/// Counts visits from threads that may fetch; the caller's waits on its way until a helper has come.
class FetchCounter : public Visitor {
public:
    Action entry(const Entry&, unsigned worker) override {
        std::unique_lock lock(mutex);
        free += threadMayFetch() ? 1U : 0U;
        helperCame = helperCame || worker != 0;
        changed.notify_all();
        if (worker == 0 && ++visits > 100) {
            changed.wait_for(lock, std::chrono::seconds(30), [this] { return helperCame; });
        }
        return Action::Continue;
    }
    std::mutex mutex;
    std::condition_variable changed;
    unsigned visits = 0;
    unsigned free = 0;
    bool helperCame = false;
};

TEST(DarwinWalk, NoThreadOfTheWalkMayFetchAndTheCallersMayAgainAfterwards) {
    const TemporaryFolder home;
    fill(home);
    const DarwinSystem darwin({});
    FetchCounter counter;
    Options options;
    options.threads = 8;
    ASSERT_TRUE(threadMayFetch());
    EXPECT_EQ(walk(home.path(), options, counter), Outcome::Complete);
    EXPECT_TRUE(counter.helperCame);
    EXPECT_EQ(counter.free, 0U);
    EXPECT_EQ(darwin.unguardedCalls(), 0U);
    EXPECT_TRUE(threadMayFetch());
    Recorder recorder(home.path());
    {
        const ThreadPolicy outer;
        (void)record(recorder, home.path(), 1);
        EXPECT_FALSE(threadMayFetch()); // as it was
    }
}

TEST(DarwinWalk, AMountPointIsNotTouched) {
    const TemporaryFolder home;
    home.file("disk/inside");
    home.file("folder/disk/inside");
    home.file("folder/file");
    DarwinTraits traits;
    traits.mounts = {"/", "/System/Volumes/Data", (home / "disk").native(),
                     "/System/Volumes/Data" + (home / "folder/disk").native()};
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("folder", "folder/file"));
    EXPECT_THAT(darwin.listed(), UnorderedElementsAre(home.path().filename().native(), "folder"));
}

TEST(DarwinWalk, ARootThatIsAMountPointOrReachedThroughALinkIsWalked) {
    const TemporaryFolder home;
    home.file("real/disk/inside");
    home.file("real/file");
    const auto link = home.link(".", "link");
    DarwinTraits traits;
    traits.mounts = {(home / "real").native(), (home / "real/disk").native()};
    const DarwinSystem darwin(traits);
    Recorder recorder(link / "real");
    EXPECT_EQ(record(recorder, link / "real"), Outcome::Complete);
    EXPECT_THAT(recorder.all(), ElementsAre("file"));
}

TEST(DarwinWalk, WhatTheListingCallsAMountOrATriggerIsNotTouched) {
    const TemporaryFolder home;
    home.file("mounted/file");
    home.file("trigger/file");
    home.file("folder/file");
    DarwinTraits traits;
    traits.mountStatus = {{"mounted", DIR_MNTSTATUS_MNTPOINT}, {"trigger", DIR_MNTSTATUS_TRIGGER}};
    const DarwinSystem darwin(traits);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("folder", "folder/file"));
    EXPECT_THAT(darwin.listed(), Not(Contains("mounted")));
    EXPECT_THAT(darwin.listed(), Not(Contains("trigger")));
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

/// A folder of 100 files of which only some batches can be read, beside a healthy one.
class BrokenFolder : public ::testing::TestWithParam<bool> {
protected:
    BrokenFolder() {
        for (int i = 0; i < 100; ++i) {
            home_.file("broken/" + std::to_string(i));
            inBroken_.insert("broken/" + std::to_string(i));
        }
        home_.file("healthy/file");
        traits_.batchBytes = 600;
    }
    Outcome walkAll() {
        const DarwinSystem darwin(traits_);
        Options options;
        options.wantsNames = GetParam();
        return walk(home_.path(), options, recorder_);
    }
    void failAfter(unsigned batchesBefore, int error) {
        traits_.failure = [=](const std::string& folder, unsigned batches) {
            return folder.ends_with("/broken") && batches >= batchesBefore ? error : 0;
        };
    }
    // The files of the broken folder that were visited.
    std::set<std::string> found() {
        std::set<std::string> files = recorder_.files();
        EXPECT_EQ(files.erase("healthy/file"), 1U);
        EXPECT_THAT(files, IsSubsetOf(inBroken_));
        return files;
    }

    TemporaryFolder home_;
    std::set<std::string> inBroken_;
    DarwinTraits traits_;
    Recorder recorder_{home_.path()};
};
INSTANTIATE_TEST_SUITE_P(Names, BrokenFolder, ::testing::Bool(),
                         [](const auto& test) { return test.param ? "ReadWhole" : "ReadInBatches"; });

TEST_P(BrokenFolder, AnErrorOnTheWayIsSaidAndWhatCameBeforeIsVisited) {
    failAfter(3, EIO);
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    EXPECT_FALSE(found().empty());
    EXPECT_LT(found().size(), 100U);
}

TEST_P(BrokenFolder, AnErrorAtTheStartIsAnUnreadableFolder) {
    failAfter(0, EPERM);
    EXPECT_EQ(walkAll(), Outcome::Complete);
    EXPECT_THAT(found(), IsEmpty());
}

TEST_P(BrokenFolder, AFolderThatIsDeletedMeanwhileHasEndedInOrder) {
    failAfter(3, ENOENT);
    EXPECT_EQ(walkAll(), Outcome::Complete);
    EXPECT_FALSE(found().empty());
}

TEST_P(BrokenFolder, ALengthThatMakesNoSenseCostsTheRestOfItsBatchOnly) {
    unsigned damaged = 0;
    traits_.damage = [&](std::span<char> batch, int& records) {
        if (records > 2 && damaged == 0) {
            ++damaged;
            std::uint32_t first = 0;
            std::memcpy(&first, batch.data(), sizeof first);
            std::memset(batch.data() + first, 0xff, sizeof first);
        }
    };
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    EXPECT_EQ(damaged, 1U);
    EXPECT_GE(found().size(), 90U);
    EXPECT_LT(found().size(), 100U);
}

TEST_P(BrokenFolder, ABatchThatIsShorterThanItsNumberOfRecordsIsRead) {
    unsigned damaged = 0;
    traits_.damage = [&](std::span<char> batch, int& records) {
        if (records > 2 && damaged == 0) {
            ++damaged;
            records = 1'000'000;
            std::memset(batch.data() + batch.size(), 0, 24); // the stand-in is given 64 KiB
        }
    };
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    EXPECT_EQ(found(), inBroken_);
}

TEST_P(BrokenFolder, ARecordWithoutAUsableNameCostsItselfOnly) {
    traits_.damage = [](std::span<char> batch, int&) {
        const std::string_view name("77\0", 3);
        const auto at = std::ranges::search(batch, name);
        if (!at.empty()) {
            at[0] = '/';
        }
    };
    EXPECT_EQ(walkAll(), Outcome::Incomplete);
    inBroken_.erase("broken/77");
    EXPECT_EQ(found(), inBroken_);
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
