#include "Quit.h"

#include "LinuxPlatform.h"
#include "TemporaryFolder.h"

#include <gio/gio.h>
#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ; // NOLINT: POSIX gives it no header

namespace vellmoor::quit {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::Field;

// A program of ours to be quit; killed and reaped at the end whatever it did.
class Child {
public:
    // `script` runs in a shell that reports "ready" once its traps are set.
    explicit Child(const std::string& script) {
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string text = script;
        std::string shell = "sh";
        std::string option = "-c";
        std::array<char*, 4> words{shell.data(), option.data(), text.data(), nullptr};
        EXPECT_EQ(::posix_spawn(&pid_, "/bin/sh", &actions, nullptr, words.data(), environ), 0);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        char ready = 0;
        EXPECT_EQ(::read(ends[0], &ready, 1), 1);
        ::close(ends[0]);
    }
    ~Child() {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    [[nodiscard]] std::int32_t pid() const { return pid_; }
    [[nodiscard]] bool isAlive() const {
        return ::waitid(P_PID, static_cast<id_t>(pid_), &info_, flags) == 0 && info_.si_pid == 0;
    }

private:
    static constexpr int flags = WEXITED | WNOHANG | WNOWAIT;
    pid_t pid_ = 0;
    mutable siginfo_t info_{};
};

const std::string waits = "echo ready; exec sleep 300";
const std::string ignores = "trap '' TERM; echo ready; while :; do sleep 0.05; done";

/// The kernel's ticks at which a process began; 0 for one that is gone.
std::uint64_t startOf(std::int32_t pid) {
    const auto text = LinuxPlatform().fileContents("/proc/" + std::to_string(pid) + "/stat", 4096);
    const auto line = text ? parseProcessLine(*text) : std::nullopt;
    return line ? line->started : 0;
}

MemoryApp appOf(std::vector<std::int32_t> pids) {
    MemoryApp app;
    std::ranges::transform(pids, std::back_inserter(app.starts), startOf);
    app.pids = std::move(pids);
    return app;
}

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

TEST(ObjectPaths, StandForBusNames) {
    EXPECT_EQ(objectPath("org.gnome.Text-Editor"), "/org/gnome/Text_Editor");
}

// A session bus of our own, and on it an application that counts how often its "quit" action is activated.
class Bus {
public:
    Bus() : bus_(g_test_dbus_new(G_TEST_DBUS_NONE)) { g_test_dbus_up(bus_); }
    ~Bus() {
        g_test_dbus_down(bus_);
        g_object_unref(bus_);
        ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

private:
    GTestDBus* bus_;
};

class BusApplication {
public:
    struct Manner {
        std::int32_t endsProcess = 0;     ///< the process that the action ends; 0: none
        std::vector<std::string> actions; ///< what it tells of its actions; empty: nothing
        bool answers = true;
    };

    BusApplication(const char* name, const char* path, Manner manner) : manner_(std::move(manner)) {
        thread_ = std::thread([this, name, path] { serve(name, path); });
        while (!ready_) {
            std::this_thread::yield();
        }
    }
    ~BusApplication() {
        g_main_loop_quit(loop_);
        thread_.join();
    }
    BusApplication(const BusApplication&) = delete;
    BusApplication& operator=(const BusApplication&) = delete;

    [[nodiscard]] int quits() const { return quits_; }

private:
    static void called(GDBusConnection*, const char*, const char*, const char*, const char* method,
                       GVariant* parameters, GDBusMethodInvocation* invocation, void* self) {
        auto* application = static_cast<BusApplication*>(self);
        const Manner& manner = application->manner_;
        if (std::string_view(method) == "List") {
            GVariantBuilder names;
            g_variant_builder_init(&names, G_VARIANT_TYPE("as"));
            for (const std::string& action : manner.actions) {
                g_variant_builder_add(&names, "s", action.c_str());
            }
            g_dbus_method_invocation_return_value(invocation, g_variant_new("(as)", &names));
            return;
        }
        const char* action = nullptr;
        g_variant_get(parameters, "(&sava{sv})", &action, nullptr, nullptr);
        application->quits_ += std::string(action) == "quit" ? 1 : 0;
        if (manner.endsProcess > 0) {
            ::kill(manner.endsProcess, SIGKILL); // stands for an orderly end
        }
        if (manner.answers) {
            g_dbus_method_invocation_return_value(invocation, nullptr);
        } else {
            g_object_unref(invocation); // the call stays without an answer
        }
    }

    void serve(const char* name, const char* path) {
        GMainContext* context = g_main_context_new();
        g_main_context_push_thread_default(context);
        loop_ = g_main_loop_new(context, FALSE);
        constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                                 G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
        GDBusConnection* connection = g_dbus_connection_new_for_address_sync(std::getenv("DBUS_SESSION_BUS_ADDRESS"),
                                                                             flags, nullptr, nullptr, nullptr);
        GDBusNodeInfo* node = g_dbus_node_info_new_for_xml(
            "<node><interface name='org.freedesktop.Application'><method name='ActivateAction'>"
            "<arg type='s' direction='in'/><arg type='av' direction='in'/><arg type='a{sv}' direction='in'/>"
            "</method></interface><interface name='org.gtk.Actions'><method name='List'>"
            "<arg type='as' direction='out'/></method></interface></node>",
            nullptr);
        GDBusInterfaceVTable table{};
        table.method_call = called;
        for (int kind = 0; kind < (manner_.actions.empty() ? 1 : 2); ++kind) {
            g_dbus_connection_register_object(connection, path, node->interfaces[kind], &table, this, nullptr, nullptr);
        }
        g_variant_unref(g_dbus_connection_call_sync(
            connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
        ready_ = true;
        g_main_loop_run(loop_);
        g_dbus_connection_close_sync(connection, nullptr, nullptr);
        g_dbus_node_info_unref(node);
        g_object_unref(connection);
        g_main_loop_unref(loop_);
        g_main_context_pop_thread_default(context);
        g_main_context_unref(context);
    }

    Manner manner_;
    std::atomic<int> quits_{0};
    std::atomic<bool> ready_{false};
    GMainLoop* loop_ = nullptr;
    std::thread thread_;
};

TEST(QuittingOverTheBus, AsksTheApplicationsOwnAction) {
    const Bus bus;
    const Child child(ignores); // only the action can end it
    const BusApplication application("org.vellmoor.Test-App", "/org/vellmoor/Test_App", {.endsProcess = child.pid()});
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Test-App";
    EXPECT_EQ(request(app), QuitOutcome::Requested);
    EXPECT_EQ(application.quits(), 1);
}

TEST(QuittingOverTheBus, AsksAnApplicationThatKnowsTheAction) {
    const Bus bus;
    const Child child(ignores);
    const BusApplication application("org.vellmoor.Knows", "/org/vellmoor/Knows",
                                     {.endsProcess = child.pid(), .actions = {"about", "quit"}});
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Knows";
    EXPECT_EQ(request(app), QuitOutcome::Requested);
    EXPECT_EQ(application.quits(), 1);
}

TEST(QuittingOverTheBus, AnApplicationWithoutTheActionIsNotAsked) {
    const Bus bus;
    const Child child(waits);
    const BusApplication application("org.vellmoor.Lacks", "/org/vellmoor/Lacks", {.actions = {"about", "quit-all"}});
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Lacks";
    EXPECT_EQ(request(app, 2s), QuitOutcome::CannotAsk);
    EXPECT_EQ(application.quits(), 0);
    EXPECT_TRUE(child.isAlive());
}

TEST(QuittingOverTheBus, AnApplicationThatWasAskedIsSentNothingMore) {
    const Bus bus;
    const Child child(waits);
    const BusApplication application("org.vellmoor.Idle", "/org/vellmoor/Idle", {});
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Idle";
    EXPECT_EQ(request(app, 300ms), QuitOutcome::NoResponse);
    EXPECT_EQ(application.quits(), 1);
    EXPECT_TRUE(child.isAlive());
}

TEST(QuittingOverTheBus, AnApplicationThatAsksItsUserFirstHasTakenTheRequest) {
    const Bus bus;
    const Child child(waits);
    const BusApplication application("org.vellmoor.Asks", "/org/vellmoor/Asks", {.answers = false});
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Asks";
    EXPECT_EQ(request(app, 500ms), QuitOutcome::NoResponse);
    EXPECT_TRUE(child.isAlive());
}

TEST(QuittingOverTheBus, ANameThatNobodyOwnsIsNotCalled) {
    const Bus bus;
    const Child child(waits);
    const BusApplication application("org.vellmoor.Other", "/org/vellmoor/Other", {});
    for (const char* name : {"org.vellmoor.Missing", "no bus name", ""}) {
        MemoryApp app = appOf({child.pid()});
        app.bundleIdentifier = name;
        EXPECT_EQ(request(app, 2s), QuitOutcome::CannotAsk);
    }
    EXPECT_EQ(application.quits(), 0);
    EXPECT_TRUE(child.isAlive());
}

} // namespace
} // namespace vellmoor::quit
