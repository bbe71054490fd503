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

MemoryApp appOf(std::vector<std::int32_t> pids) {
    MemoryApp app;
    app.pids = std::move(pids);
    return app;
}

TEST(Quitting, AnApplicationWithoutLivingProcessIsNotRunning) {
    std::int32_t gone = 0;
    {
        const Child child(waits);
        gone = child.pid();
    }
    EXPECT_EQ(request(appOf({gone})), QuitOutcome::NotRunning);
    EXPECT_EQ(request(appOf({})), QuitOutcome::NotRunning);
    EXPECT_EQ(request(appOf({0, -1, 1})), QuitOutcome::NotRunning);
}

TEST(Quitting, NeverTouchesItself) {
    EXPECT_EQ(request(appOf({::getpid()})), QuitOutcome::NotRunning);
}

TEST(Quitting, AProgramIsAskedToTerminate) {
    const Child child(waits);
    EXPECT_EQ(request(appOf({child.pid()})), QuitOutcome::Requested);
    EXPECT_FALSE(child.isAlive());
}

TEST(Quitting, AProgramThatDoesNotAnswerIsNeverKilled) {
    const Child child(ignores);
    EXPECT_EQ(request(appOf({child.pid()}), 300ms), QuitOutcome::NoResponse);
    EXPECT_TRUE(child.isAlive());
}

TEST(Quitting, OneProcessLeftMeansNoResponse) {
    const Child polite(waits);
    const Child stubborn(ignores);
    EXPECT_EQ(request(appOf({polite.pid(), stubborn.pid()}), 500ms), QuitOutcome::NoResponse);
    EXPECT_FALSE(polite.isAlive());
}

TEST(Quitting, AProcessOfSomebodyElseIsNotTouched) {
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
    EXPECT_EQ(request(appOf({pid})), QuitOutcome::NotRunning);
    EXPECT_EQ(::kill(pid, SIGKILL), 0);
    ::waitpid(pid, nullptr, 0);
}

TEST(MainProcesses, AreThoseWithoutParentInTheGroup) {
    EXPECT_THAT(mainProcesses({{10, 1, 0}, {11, 10, 0}, {12, 11, 0}, {20, 5, 0}}),
                ElementsAre(Field(&Process::pid, 10), Field(&Process::pid, 20)));
}

TEST(ProcessLines, AreReadWhateverTheNameHolds) {
    const std::string rest = " 1 1 0 -1 4194560 1 2 3 4 5 6 7 8 20 0 1 0 987654 1000 200";
    const auto process = parseStat("42 (a) b (c) S 7" + rest);
    ASSERT_TRUE(process);
    EXPECT_EQ(process->pid, 42);
    EXPECT_EQ(process->parent, 7);
    EXPECT_EQ(process->started, 987654U);
}

TEST(ProcessLines, OfAnEndedOrUnreadableProcessAreNothing) {
    const std::string rest = " 7 1 1 0 -1 4194560 1 2 3 4 5 6 7 8 20 0 1 0 987654 1000 200";
    EXPECT_FALSE(parseStat("42 (a) Z" + rest));
    EXPECT_FALSE(parseStat("42 (a) X" + rest));
    EXPECT_FALSE(parseStat("42 (a) S 7"));
    EXPECT_FALSE(parseStat(""));
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
    BusApplication(const char* name, const char* path, std::int32_t endsProcess) : process_(endsProcess) {
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
    static void activated(GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* parameters,
                          GDBusMethodInvocation* invocation, void* self) {
        const char* action = nullptr;
        g_variant_get(parameters, "(&sava{sv})", &action, nullptr, nullptr);
        auto* application = static_cast<BusApplication*>(self);
        application->quits_ += std::string(action) == "quit" ? 1 : 0;
        if (application->process_ > 0) {
            ::kill(application->process_, SIGKILL); // stands for an orderly end
        }
        g_dbus_method_invocation_return_value(invocation, nullptr);
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
            "</method></interface></node>",
            nullptr);
        GDBusInterfaceVTable table{};
        table.method_call = activated;
        g_dbus_connection_register_object(connection, path, node->interfaces[0], &table, this, nullptr, nullptr);
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

    std::int32_t process_;
    std::atomic<int> quits_{0};
    std::atomic<bool> ready_{false};
    GMainLoop* loop_ = nullptr;
    std::thread thread_;
};

TEST(QuittingOverTheBus, AsksTheApplicationsOwnAction) {
    const Bus bus;
    const Child child(ignores); // only the action can end it
    const BusApplication application("org.vellmoor.Test-App", "/org/vellmoor/Test_App", child.pid());
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Test-App";
    EXPECT_EQ(request(app), QuitOutcome::Requested);
    EXPECT_EQ(application.quits(), 1);
}

TEST(QuittingOverTheBus, GoesOnToTerminatingWhenTheActionDoesNothing) {
    const Bus bus;
    const Child child(waits);
    const BusApplication application("org.vellmoor.Idle", "/org/vellmoor/Idle", 0);
    MemoryApp app = appOf({child.pid()});
    app.bundleIdentifier = "org.vellmoor.Idle";
    EXPECT_EQ(request(app, 300ms), QuitOutcome::Requested);
    EXPECT_EQ(application.quits(), 1);
    EXPECT_FALSE(child.isAlive());
}

TEST(QuittingOverTheBus, ANameThatNobodyOwnsIsNotCalled) {
    const Bus bus;
    const Child child(waits);
    const BusApplication application("org.vellmoor.Other", "/org/vellmoor/Other", 0);
    for (const char* name : {"org.vellmoor.Missing", "no bus name", ""}) {
        MemoryApp app = appOf({child.pid()});
        app.bundleIdentifier = name;
        EXPECT_NE(request(app, 300ms), QuitOutcome::NoResponse);
    }
    EXPECT_EQ(application.quits(), 0);
}

} // namespace
} // namespace vellmoor::quit
