// An application that offers an action to quit is asked by it, and then nothing else is sent.
#include "ChildProcess.h"
#include "programs/Quit.h"

#include <gio/gio.h>
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace vellmoor::quit {
namespace {

using namespace std::chrono_literals;
using test::appOf;
using test::Child;
using test::ignores;
using test::waits;

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
        GVariant* answer = g_dbus_connection_call_sync(
            connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
            g_variant_new("(su)", name, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
        EXPECT_NE(answer, nullptr) << "nobody is on the bus under that name: " << name;
        if (answer != nullptr) {
            g_variant_unref(answer);
        }
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
