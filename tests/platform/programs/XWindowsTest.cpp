// Against a real X server without a screen; the test itself plays the window manager.
#include "programs/XWindows.h"

#include <gmock/gmock.h>

#include <array>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

extern char** environ; // NOLINT: POSIX gives it no header

namespace vellmoor::xwindows {
namespace {

constexpr std::int32_t ourPid = 4242;
constexpr std::int32_t otherPid = 4243;

class XServer {
public:
    XServer() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
            return;
        }
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, ends[1], 3);
        ::posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        std::array<std::string, 5> words{"Xvfb", "-displayfd", "3", "-nolisten", "tcp"};
        std::array<char*, 6> pointers{words[0].data(), words[1].data(), words[2].data(),
                                      words[3].data(), words[4].data(), nullptr};
        isRunning_ = ::posix_spawnp(&pid_, "Xvfb", &actions, nullptr, pointers.data(), environ) == 0;
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        std::string number;
        for (char digit = 0; isRunning_ && ::read(ends[0], &digit, 1) == 1 && digit != '\n';) {
            number += digit;
        }
        ::close(ends[0]);
        isReady_ = !number.empty();
        ::setenv("DISPLAY", (":" + number).c_str(), 1);
    }
    ~XServer() {
        ::unsetenv("DISPLAY");
        if (isRunning_) {
            ::kill(pid_, SIGTERM);
            ::waitpid(pid_, nullptr, 0);
        }
    }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    [[nodiscard]] bool isReady() const { return isReady_; }

private:
    pid_t pid_ = 0;
    bool isRunning_ = false;
    bool isReady_ = false;
};

class WindowManager {
public:
    WindowManager() : connection_(xcb_connect(nullptr, nullptr)) {
        root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        const std::uint32_t wanted = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
        xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &wanted);
        closeWindow_ = atom("_NET_CLOSE_WINDOW");
    }
    ~WindowManager() { xcb_disconnect(connection_); }
    WindowManager(const WindowManager&) = delete;
    WindowManager& operator=(const WindowManager&) = delete;

    xcb_window_t window(std::int32_t pid) {
        const xcb_window_t made = xcb_generate_id(connection_);
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, made, root_, 0, 0, 10, 10, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto number = static_cast<std::uint32_t>(pid);
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, made, atom("_NET_WM_PID"), XCB_ATOM_CARDINAL, 32, 1,
                            &number);
        xcb_change_property(connection_, XCB_PROP_MODE_APPEND, root_, atom("_NET_CLIENT_LIST"), XCB_ATOM_WINDOW, 32, 1,
                            &made);
        sync();
        return made;
    }
    void setClass(xcb_window_t window, const std::string& instance, const std::string& name) {
        const std::string both = instance + '\0' + name + '\0';
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(both.size()), both.data());
        sync();
    }
    void setMachine(xcb_window_t window, const std::string& name) {
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(name.size()), name.data());
        sync();
    }
    /// The windows that were asked to close so far.
    std::vector<xcb_window_t> closed() {
        sync();
        std::vector<xcb_window_t> windows;
        while (const std::unique_ptr<xcb_generic_event_t, decltype(&std::free)> event{xcb_poll_for_event(connection_),
                                                                                      &std::free}) {
            xcb_client_message_event_t message{};
            std::memcpy(&message, event.get(), sizeof message);
            if ((event->response_type & 0x7fU) == XCB_CLIENT_MESSAGE && message.type == closeWindow_) {
                windows.push_back(message.window);
            }
        }
        return windows;
    }

private:
    xcb_atom_t atom(const char* name) {
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> reply{
            xcb_intern_atom_reply(connection_, cookie, nullptr), &std::free};
        return reply->atom;
    }
    // The answer to any question comes after all that was sent before.
    void sync() { std::free(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr)); }

    xcb_connection_t* connection_;
    xcb_window_t root_ = 0;
    xcb_atom_t closeWindow_ = 0;
};

class XWindows : public ::testing::Test {
protected:
    void SetUp() override {
        if (!server_.isReady()) {
            GTEST_SKIP() << "Xvfb cannot be started here";
        }
        manager_.emplace();
    }

    XServer server_;
    std::optional<WindowManager> manager_;
};

TEST_F(XWindows, OfTheProcessesAreAskedToCloseAndNoOthers) {
    const xcb_window_t first = manager_->window(ourPid);
    manager_->window(otherPid);
    const xcb_window_t second = manager_->window(ourPid);
    EXPECT_TRUE(requestClose({ourPid}));
    EXPECT_THAT(manager_->closed(), ::testing::ElementsAre(first, second));
}

TEST_F(XWindows, OfAnotherMachineAreLeftAlone) {
    manager_->setMachine(manager_->window(ourPid), "some-other-machine");
    EXPECT_FALSE(requestClose({ourPid}));
    EXPECT_THAT(manager_->closed(), ::testing::IsEmpty());
}

TEST_F(XWindows, AreFoundByTheirClassOrInstanceInAnyCase) {
    const xcb_window_t byClass = manager_->window(ourPid);
    const xcb_window_t byInstance = manager_->window(otherPid);
    const xcb_window_t other = manager_->window(ourPid);
    manager_->setClass(byClass, "Navigator", "Org.mozilla.firefox");
    manager_->setClass(byInstance, "org.mozilla.firefox", "");
    manager_->setClass(other, "org.mozilla", "org.mozilla.firefox2");
    EXPECT_TRUE(requestClose("org.mozilla.Firefox"));
    EXPECT_THAT(manager_->closed(), ::testing::ElementsAre(byClass, byInstance));
}

TEST_F(XWindows, NoClassFindsNoWindow) {
    manager_->setClass(manager_->window(ourPid), "", "");
    EXPECT_FALSE(requestClose(""));
    EXPECT_THAT(manager_->closed(), ::testing::IsEmpty());
}

TEST_F(XWindows, ThatDoNotExistAreNotAskedFor) {
    manager_->window(otherPid);
    EXPECT_FALSE(requestClose({ourPid}));
    EXPECT_THAT(manager_->closed(), ::testing::IsEmpty());
}

TEST(WithoutXServer, NoWindowIsAskedToClose) {
    EXPECT_FALSE(requestClose({ourPid}));
    ::setenv("DISPLAY", ":98765", 1);
    EXPECT_FALSE(requestClose({ourPid}));
    ::unsetenv("DISPLAY");
}

} // namespace
} // namespace vellmoor::xwindows
