// Which processes of an application that was shown are its own still, when it is asked to quit.
#include "memory/MemoryLinuxFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {
namespace {

using test::LinuxApps;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST_F(LinuxApps, TheProcessesThatWereShownAndStillAreItsOwnAreAskedToQuit) {
    addEntry("org.example.One", "One", "one");
    const std::string scope = unit("app-gnome-org.example.One-10.scope");
    add({.pid = 10, .group = scope, .pages = 10});
    add({.pid = 11, .group = scope, .pages = 10});
    add({.pid = 12, .group = scope, .pages = 10, .started = 300});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_THAT(found[0].starts, ElementsAre(100U, 100U, 300U));
    std::filesystem::remove_all(home.place("/proc/11"));
    std::filesystem::remove_all(home.place("/proc/12"));
    add({.pid = 12, .group = scope, .pages = 10, .started = 900}); // another one, with the number of the old
    add({.pid = 13, .group = scope, .pages = 10});                 // a second instance, with content of its own
    EngineContext context = home.context();
    const MemoryApp living = withLivingProcesses(context, found[0]);
    EXPECT_THAT(living.pids, ElementsAre(10));
    EXPECT_THAT(living.starts, ElementsAre(100U));
}

TEST_F(LinuxApps, AnApplicationThatWasStartedAnewIsNotTheOneThatWasShown) {
    addEntry("org.example.One", "One", "one");
    add({.pid = 10, .group = unit("app-gnome-org.example.One-10.scope"), .pages = 10});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    std::filesystem::remove_all(home.place("/proc/10"));
    add({.pid = 20, .group = unit("app-gnome-org.example.One-20.scope"), .pages = 10, .started = 900});
    EngineContext context = home.context();
    EXPECT_THAT(withLivingProcesses(context, found[0]).pids, IsEmpty());
}

TEST_F(LinuxApps, ANumberThatBelongsToAnotherProcessByNowIsNotAsked) {
    addEntry("org.example.One", "One", "one");
    addEntry("org.example.Two", "Two", "two");
    add({.pid = 10, .group = unit("app-gnome-org.example.One-10.scope"), .pages = 10});
    const std::vector<MemoryApp> found = apps();
    ASSERT_THAT(found, SizeIs(1));
    std::filesystem::remove_all(home.place("/proc/10"));
    add({.pid = 10, .group = unit("app-gnome-org.example.Two-10.scope"), .pages = 10});
    EngineContext context = home.context();
    const MemoryApp current = withLivingProcesses(context, found[0]);
    EXPECT_EQ(current.id, found[0].id);
    EXPECT_THAT(current.pids, IsEmpty());
}

} // namespace
} // namespace vellmoor
