// What asking an application to quit and ending it do to its processes, and which these are.
#include "programs/Quit.h"

#include "ChildProcess.h"
#include "LinuxPlatform.h"
#include "TemporaryFolder.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace vellmoor::quit {
namespace {

using namespace std::chrono_literals;
using test::appOf;
using test::Child;
using test::ignores;
using test::waits;
using ::testing::ElementsAre;
using ::testing::Field;

class Quitting : public ::testing::Test {
protected:
    Quitting() { ::unsetenv("DISPLAY"); }
};

TEST_F(Quitting, AnApplicationWithoutLivingProcessIsNotRunning) {
    MemoryApp gone;
    {
        const Child child(waits);
        gone = appOf({child.pid()});
    }
    for (const MemoryApp& app : {gone, appOf({}), appOf({0, -1, 1})}) {
        EXPECT_EQ(request(app), QuitOutcome::NotRunning);
        EXPECT_EQ(end(app), QuitOutcome::NotRunning);
    }
}

TEST_F(Quitting, NeverTouchesItself) {
    EXPECT_EQ(end(appOf({::getpid()})), QuitOutcome::NotRunning);
}

TEST_F(Quitting, ANumberThatWasUsedAgainIsNotTouched) {
    const Child child(waits);
    MemoryApp app = appOf({child.pid()});
    --app.starts.front();
    EXPECT_EQ(request(app), QuitOutcome::NotRunning);
    EXPECT_EQ(end(app), QuitOutcome::NotRunning);
    app.starts.clear();
    EXPECT_EQ(end(app), QuitOutcome::NotRunning);
    EXPECT_TRUE(child.isAlive());
}

TEST_F(Quitting, AProgramThatCannotBeAskedIsSentNothing) {
    const Child child("trap 'exit 0' TERM HUP INT; echo ready; while :; do sleep 0.05; done");
    EXPECT_EQ(request(appOf({child.pid()})), QuitOutcome::CannotAsk);
    std::this_thread::sleep_for(300ms); // time enough for a signal to work
    EXPECT_TRUE(child.isAlive());
}

TEST_F(Quitting, AProgramThatCannotBeAskedIsEndedWhenTheUserSaysSo) {
    const Child child(waits);
    EXPECT_EQ(end(appOf({child.pid()})), QuitOutcome::Requested);
    EXPECT_FALSE(child.isAlive());
}

TEST_F(Quitting, AProgramThatDoesNotEndIsNeverKilled) {
    const Child child(ignores);
    EXPECT_EQ(end(appOf({child.pid()}), 300ms), QuitOutcome::NoResponse);
    EXPECT_TRUE(child.isAlive());
}

TEST_F(Quitting, OneProcessLeftMeansNoResponse) {
    const Child polite(waits);
    const Child stubborn(ignores);
    EXPECT_EQ(end(appOf({polite.pid(), stubborn.pid()}), 500ms), QuitOutcome::NoResponse);
    EXPECT_FALSE(polite.isAlive());
}

TEST_F(Quitting, OnlyMainProcessesAreSignalled) {
    const test::TemporaryFolder folder;
    const std::string note = (folder.path() / "note").string();
    // The main process ends by itself once it is signalled; the one below it writes what it is sent.
    const Child main("sh -c 'trap \"echo signalled >" + note +
                     "\" TERM; while :; do sleep 0.05; done' & trap 'sleep 0.3; kill -9 $!; exit 0' TERM; "
                     "echo ready; wait");
    const auto below = LinuxPlatform().fileContents(
        "/proc/" + std::to_string(main.pid()) + "/task/" + std::to_string(main.pid()) + "/children", 4096);
    ASSERT_TRUE(below);
    EXPECT_EQ(end(appOf({main.pid(), std::stoi(*below)})), QuitOutcome::Requested);
    EXPECT_FALSE(main.isAlive());
    EXPECT_FALSE(LinuxPlatform().exists(note));
}

TEST_F(Quitting, AProcessOfSomebodyElseIsNotTouched) {
    if (::getuid() != 0) {
        GTEST_SKIP() << "only root can start a process of somebody else";
    }
    const pid_t pid = ::fork();
    if (pid == 0) {
        const int changed = ::setuid(4242);
        ::pause();
        ::_exit(changed);
    }
    const std::string folder = "/proc/" + std::to_string(pid);
    while (LinuxPlatform().facts(folder)->owner == 0) {
        std::this_thread::yield();
    }
    EXPECT_EQ(end(appOf({pid})), QuitOutcome::NotRunning);
    EXPECT_EQ(::waitpid(pid, nullptr, WNOHANG), 0) << "it runs as before";
    EXPECT_EQ(::kill(pid, SIGKILL), 0);
    ::waitpid(pid, nullptr, 0);
}

/// In a process of an ordinary user: ends another one that lets nobody look into it.
int endOneThatLetsNobodyLook() {
    std::array<int, 2> ends{};
    if ((::getuid() == 0 && ::setuid(4242) != 0) || ::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return 1;
    }
    const pid_t secret = ::fork();
    if (secret == 0) {
        ::prctl(PR_SET_DUMPABLE, 0); // its folder in /proc belongs to root from now on
        const bool told = ::write(ends[1], "", 1) == 1;
        ::pause();
        ::_exit(told ? 0 : 1);
    }
    char ready = 1;
    if (::read(ends[0], &ready, 1) != 1 || request(appOf({secret})) != QuitOutcome::CannotAsk) {
        return 2;
    }
    return end(appOf({secret})) == QuitOutcome::Requested ? 0 : 3;
}

TEST_F(Quitting, AProcessThatLetsNobodyLookIsTheUsersStill) {
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::_exit(endOneThatLetsNobodyLook());
    }
    int status = 1;
    ::waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

ProcessLine line(std::int32_t pid, std::int32_t parent, std::string name = "app") {
    return {.pid = pid, .name = std::move(name), .parent = parent, .terminal = 0, .started = 0};
}

TEST(MainProcesses, AreThoseWithoutParentInTheGroup) {
    EXPECT_THAT(mainProcesses({line(10, 1), line(11, 10), line(12, 11), line(20, 5)}),
                ElementsAre(Field(&ProcessLine::pid, 10), Field(&ProcessLine::pid, 20)));
}

TEST(MainProcesses, OfAFlatpakAreTheFirstBelowItsWrappers) {
    EXPECT_THAT(mainProcesses({line(10, 1, "bwrap"), line(11, 10, "bwrap"), line(12, 10, "xdg-dbus-proxy"),
                               line(13, 11), line(14, 13)}),
                ElementsAre(Field(&ProcessLine::pid, 13)));
}

TEST(MainProcesses, DoNotBeginBelowTheSandboxOfAPage) {
    EXPECT_THAT(mainProcesses({line(10, 1), line(11, 10, "bwrap"), line(12, 11, "WebKitWebProcess")}),
                ElementsAre(Field(&ProcessLine::pid, 10)));
}

TEST(MainProcesses, ThatFormALoopAreHandled) {
    EXPECT_THAT(mainProcesses({line(10, 11, "bwrap"), line(11, 10, "bwrap")}), ::testing::IsEmpty());
}

} // namespace
} // namespace vellmoor::quit
