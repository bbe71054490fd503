#include "programs/XWindows.h"

#include <algorithm>
#include <cstdlib>
#include <limits.h>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <xcb/xcb.h>

namespace vellmoor::xwindows {
namespace {

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

template <class Reply>
using Owned = std::unique_ptr<Reply, decltype(&std::free)>;

constexpr std::uint32_t largestList = 1 << 16; // 32-bit units of a property
constexpr std::uint32_t fromPager = 2;         // the hints' word for "the user asked by way of another program"

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name) {
    const auto cookie = xcb_intern_atom(connection, 1, static_cast<std::uint16_t>(name.size()), name.data());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr), &std::free);
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

Owned<xcb_get_property_reply_t> property(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name,
                                         xcb_atom_t type) {
    const auto cookie = xcb_get_property(connection, 0, window, name, type, 0, largestList);
    return {xcb_get_property_reply(connection, cookie, nullptr), &std::free};
}

std::vector<std::uint32_t> numbers(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t name,
                                   xcb_atom_t type) {
    const auto reply = property(connection, window, name, type);
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + xcb_get_property_value_length(reply.get()) / 4};
}

// A window of another machine may carry the number of one of our processes.
bool isLocal(xcb_connection_t* connection, xcb_window_t window) {
    const auto reply = property(connection, window, XCB_ATOM_WM_CLIENT_MACHINE, XCB_ATOM_STRING);
    const std::size_t length = reply ? static_cast<std::size_t>(xcb_get_property_value_length(reply.get())) : 0;
    if (length == 0) {
        return true;
    }
    const std::string machine(static_cast<const char*>(xcb_get_property_value(reply.get())), length);
    char own[HOST_NAME_MAX + 1] = {};
    return ::gethostname(own, HOST_NAME_MAX) != 0 || machine == own;
}

void askToClose(xcb_connection_t* connection, xcb_window_t root, xcb_window_t window, xcb_atom_t closeWindow) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = closeWindow;
    event.data.data32[0] = XCB_CURRENT_TIME;
    event.data.data32[1] = fromPager;
    xcb_send_event(connection, 0, root, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; });
    return lower;
}

// Instance and class, each ended by a NUL (ICCCM, WM_CLASS); toolkits write the identifier into one or the other.
bool hasClass(xcb_connection_t* connection, xcb_window_t window, const std::string& wanted) {
    const auto reply = property(connection, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING);
    if (!reply) {
        return false;
    }
    std::string_view rest(static_cast<const char*>(xcb_get_property_value(reply.get())),
                          static_cast<std::size_t>(xcb_get_property_value_length(reply.get())));
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find('\0'));
        if (lowerCase(name) == wanted) {
            return true;
        }
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    }
    return false;
}

// Asks every window to close for which `isWanted` answers true.
template <class Predicate>
bool closeEach(Predicate isWanted) {
    if (std::getenv("DISPLAY") == nullptr) {
        return false;
    }
    const Connection owner(xcb_connect(nullptr, nullptr));
    xcb_connection_t* connection = owner.get();
    if (xcb_connection_has_error(connection) != 0) {
        return false;
    }
    const xcb_atom_t clientList = atom(connection, "_NET_CLIENT_LIST");
    const xcb_atom_t closeWindow = atom(connection, "_NET_CLOSE_WINDOW");
    if (clientList == XCB_ATOM_NONE || closeWindow == XCB_ATOM_NONE) {
        return false; // no window manager knows these
    }
    bool asked = false;
    for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection)); screen.rem > 0; xcb_screen_next(&screen)) {
        const xcb_window_t root = screen.data->root;
        for (const xcb_window_t window : numbers(connection, root, clientList, XCB_ATOM_WINDOW)) {
            if (isWanted(connection, window) && isLocal(connection, window)) {
                askToClose(connection, root, window, closeWindow);
                asked = true;
            }
        }
    }
    // A round trip: the server has taken every request before the connection ends.
    const Owned<xcb_get_input_focus_reply_t> done{
        xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), &std::free};
    return asked;
}

} // namespace

bool requestClose(const std::vector<std::int32_t>& pids) {
    return closeEach([&](xcb_connection_t* connection, xcb_window_t window) {
        const auto pid = numbers(connection, window, atom(connection, "_NET_WM_PID"), XCB_ATOM_CARDINAL);
        return !pid.empty() && std::ranges::find(pids, static_cast<std::int32_t>(pid[0])) != pids.end();
    });
}

bool requestClose(std::string_view windowClass) {
    return closeEach([wanted = lowerCase(windowClass)](xcb_connection_t* connection, xcb_window_t window) {
        return !wanted.empty() && hasClass(connection, window, wanted);
    });
}

} // namespace vellmoor::xwindows
