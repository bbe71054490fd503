#include "programs/QuitAction.h"

#include "GlibPointers.h"
#include "disk/Files.h"
#include "programs/Quit.h"

#include <gio/gio.h>

#include <algorithm>
#include <cstdlib>

namespace vellmoor::quit {
namespace {

// A connection of its own: the shared one would start a bus where there is none.
glib::Object<GDBusConnection> sessionBus() {
    std::string address;
    if (const char* given = std::getenv("DBUS_SESSION_BUS_ADDRESS"); given != nullptr && *given != '\0') {
        address = given;
    } else if (const char* runtime = std::getenv("XDG_RUNTIME_DIR"); runtime != nullptr && *runtime == '/') {
        const Path socket = Path(runtime) / "bus";
        if (!files::existsFollowed(socket)) {
            return nullptr;
        }
        const glib::Text escaped(g_dbus_address_escape_value(socket.c_str()));
        address = std::string("unix:path=") + escaped.get();
    } else {
        return nullptr;
    }
    constexpr auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                             G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    return glib::Object<GDBusConnection>(
        g_dbus_connection_new_for_address_sync(address.c_str(), flags, nullptr, nullptr, nullptr));
}

struct Call {
    const char* name;
    const char* path;
    const char* interface;
    const char* method;
};

struct Reply {
    glib::VariantPointer value;
    glib::ErrorPointer error;

    // The receiver has the call but did not answer: it is busy, or went away over it.
    [[nodiscard]] bool isMissing() const {
        return error && (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_TIMED_OUT) ||
                         g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_TIMEOUT) ||
                         g_error_matches(error.get(), G_DBUS_ERROR, G_DBUS_ERROR_NO_REPLY));
    }
};

Reply call(GDBusConnection* bus, const Call& what, GVariant* parameters, const char* reply, Deadline deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    const glib::VariantPointer owned(parameters == nullptr ? nullptr : g_variant_ref_sink(parameters));
    GError* error = nullptr;
    glib::VariantPointer value(g_dbus_connection_call_sync(
        bus, what.name, what.path, what.interface, what.method, owned.get(), G_VARIANT_TYPE(reply),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, std::max(static_cast<int>(left.count()), 1), nullptr, &error));
    return {std::move(value), glib::ErrorPointer(error)};
}

bool isOwned(GDBusConnection* bus, const std::string& name, Deadline deadline) {
    constexpr Call hasOwner{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"};
    const Reply answer = call(bus, hasOwner, g_variant_new("(s)", name.c_str()), "(b)", deadline);
    gboolean owned = FALSE;
    if (answer.value) {
        g_variant_get(answer.value.get(), "(b)", &owned);
    }
    return owned != FALSE;
}

// Whether the application tells its actions and "quit" is none of them: GTK answers the activation of an unknown
// action as if all were well.
bool lacksQuit(GDBusConnection* bus, const char* name, const char* path, Deadline deadline) {
    const Call list{name, path, "org.gtk.Actions", "List"};
    const Reply actions = call(bus, list, nullptr, "(as)", deadline);
    if (!actions.value) {
        return false;
    }
    const glib::VariantPointer names(g_variant_get_child_value(actions.value.get(), 0));
    const std::unique_ptr<const char*, glib::Release<g_free>> words(g_variant_get_strv(names.get(), nullptr));
    return g_strv_contains(words.get(), "quit") == FALSE;
}

} // namespace

bool activateQuitAction(const std::string& busName, Deadline deadline) {
    if (g_dbus_is_name(busName.c_str()) == FALSE) {
        return false;
    }
    const auto bus = sessionBus();
    const std::string path = objectPath(busName);
    if (!bus || g_variant_is_object_path(path.c_str()) == FALSE || !isOwned(bus.get(), busName, deadline) ||
        lacksQuit(bus.get(), busName.c_str(), path.c_str(), deadline)) {
        return false;
    }
    const Call activate{busName.c_str(), path.c_str(), "org.freedesktop.Application", "ActivateAction"};
    const Reply answer =
        call(bus.get(), activate, g_variant_new("(sava{sv})", "quit", nullptr, nullptr), "()", deadline);
    return answer.value != nullptr || answer.isMissing();
}

std::string objectPath(std::string_view busName) {
    std::string path = "/";
    for (const char character : busName) {
        path += character == '.' ? '/' : character == '-' ? '_' : character;
    }
    return path;
}

} // namespace vellmoor::quit
