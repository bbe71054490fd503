// Where a walk on macOS does not go: what lies in a cloud, and other disks.
#include "DarwinAbi.h"
#include "DarwinSystem.h"
#include "DarwinTree.h"
#include "Recorder.h"
#include "TemporaryFolder.h"
#include "ThreadPolicy.h"

#include <gmock/gmock.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace vellmoor::walk::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;
using ::testing::UnorderedElementsAre;
using vellmoor::test::allocatedBytes;
using vellmoor::test::DarwinSystem;
using vellmoor::test::DarwinTraits;
using vellmoor::test::TemporaryFolder;
using vellmoor::test::threadMayFetch;

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

} // namespace
} // namespace vellmoor::walk::test
