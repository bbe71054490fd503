// What the walk asks of the system, and no more.
#include "SystemCalls.h"

#include "Descriptors.h"
#include "Recorder.h"
#include "ScopedUnprivileged.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

namespace vellmoor::walk::test {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;
using vellmoor::test::AlmostNoDescriptors;
using vellmoor::test::openDescriptors;
using vellmoor::test::ScopedUnprivileged;
using vellmoor::test::TemporaryFolder;

TEST(WalkCalls, FactsAreAskedForOnceAndOnlyForFilesAndFolders) {
    const TemporaryFolder home;
    home.file("file");
    home.file("folder/inner");
    home.link("file", "link");
    home.fifo("pipe");
    home.file(".hidden");
    Recorder recorder(home.path());
    const SystemCalls calls;
    (void)record(recorder, home.path());
    EXPECT_EQ(recorder.visits, 5U);
    EXPECT_THAT(calls.names(), UnorderedElementsAre("file", "folder", "inner"));
}

TEST(WalkCalls, AFileSystemThatTellsNoTypesGivesTheSameVisits) {
    const TemporaryFolder home;
    home.file("file", 5000);
    home.file("folder/inner", 5000);
    home.link("folder", "link");
    home.fifo("pipe");
    Recorder plain(home.path());
    (void)record(plain, home.path());
    Recorder unknown(home.path());
    const SystemCalls calls;
    SystemCalls::hideTypes();
    EXPECT_EQ(record(unknown, home.path()), Outcome::Complete);
    EXPECT_THAT(calls.names(), UnorderedElementsAre("file", "folder", "inner", "link", "pipe"));
    EXPECT_EQ(unknown.all(), plain.all());
    EXPECT_EQ(unknown.bytes(), plain.bytes());
    for (const auto& [name, seen] : plain.seen) {
        EXPECT_EQ(unknown.seen.at(name).type, seen.type) << name;
    }
}

TEST(WalkCalls, ALinkThatCannotBeReachedIsVisitedAsItNeedsNoFacts) {
    const TemporaryFolder home;
    home.link("file", "listable/link");
    home.setMode("listable", 0444); // names, but no entry can be reached
    const ScopedUnprivileged unprivileged;
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Complete);
    EXPECT_THAT(recorder.all(), UnorderedElementsAre("listable", "listable/link"));
}

// One for the root, and none to learn which folders must not be touched.
TEST(WalkCalls, WithoutADescriptorForTheListOfMountsTheRootIsUnreadable) {
    const TemporaryFolder home;
    home.file("file");
    Recorder before(home.path());
    ASSERT_EQ(record(before, home.path()), Outcome::Complete); // UBSan opens a pipe at the first virtual call
    const AlmostNoDescriptors one(1);
    Recorder recorder(home.path());
    EXPECT_EQ(record(recorder, home.path()), Outcome::Unreadable);
    EXPECT_EQ(recorder.visits, 0U);
}

TEST(WalkCalls, NoDescriptorStaysOpen) {
    const TemporaryFolder home;
    for (int i = 0; i < 50; ++i) {
        home.file("a/" + std::to_string(i) + "/b/file");
    }
    const unsigned before = openDescriptors();
    for (const Action action : {Action::Continue, Action::Prune, Action::Stop}) {
        Recorder recorder(home.path());
        recorder.onEntry = [&](const Entry& entry) { return entry.depth == 2 ? action : Action::Continue; };
        (void)record(recorder, home.path(), 4);
        EXPECT_EQ(openDescriptors(), before);
    }
}

} // namespace
} // namespace vellmoor::walk::test
