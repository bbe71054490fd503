#include "Quit.h"

#include "Files.h"
#include "GlibPointers.h"
#include "XWindows.h"

#include <gio/gio.h>

#include <algorithm>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <iterator>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace vellmoor::quit {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds lookAgain{50};
constexpr std::size_t statLimit = 4096;

std::optional<Process> processOf(std::int32_t pid) {
    const std::string folder = "/proc/" + std::to_string(pid);
    struct stat status{};
    if (pid <= 1 || pid == ::getpid() || ::stat(folder.c_str(), &status) != 0 || status.st_uid != ::getuid()) {
        return std::nullopt;
    }
    const auto line = files::contents(folder + "/stat", statLimit);
    return line ? parseStat(*line) : std::nullopt;
}

bool isAlive(const Process& process) {
    const auto now = processOf(process.pid);
    return now && now->started == process.started;
}

std::vector<Process> living(const std::vector<std::int32_t>& pids) {
    std::vector<Process> found;
    for (const std::int32_t pid : pids) {
        if (const auto process = processOf(pid)) {
            found.push_back(*process);
        }
    }
    return found;
}

// Looks again in short steps: the processes are not our children, so nothing announces their end.
bool allEnded(const std::vector<Process>& all, milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (std::ranges::any_of(all, isAlive)) {
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(lookAgain);
    }
    return true;
}

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

glib::VariantPointer call(GDBusConnection* bus, const Call& what, GVariant* parameters, const char* reply,
                          milliseconds patience) {
    const glib::VariantPointer owned(g_variant_ref_sink(parameters));
    return glib::VariantPointer(g_dbus_connection_call_sync(
        bus, what.name, what.path, what.interface, what.method, owned.get(), G_VARIANT_TYPE(reply),
        G_DBUS_CALL_FLAGS_NO_AUTO_START, static_cast<int>(patience.count()), nullptr, nullptr));
}

bool isOwned(GDBusConnection* bus, const std::string& name, milliseconds patience) {
    constexpr Call hasOwner{"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "NameHasOwner"};
    const auto answer = call(bus, hasOwner, g_variant_new("(s)", name.c_str()), "(b)", patience);
    gboolean owned = FALSE;
    if (answer) {
        g_variant_get(answer.get(), "(b)", &owned);
    }
    return owned != FALSE;
}

// Whether the application took the request; one without that action answers an error or nothing.
bool activateQuitAction(const MemoryApp& app, milliseconds patience) {
    if (!app.bundleIdentifier || g_dbus_is_name(app.bundleIdentifier->c_str()) == FALSE) {
        return false;
    }
    const std::string& name = *app.bundleIdentifier;
    const auto bus = sessionBus();
    if (!bus || !isOwned(bus.get(), name, patience)) {
        return false;
    }
    const std::string path = objectPath(name);
    if (g_variant_is_object_path(path.c_str()) == FALSE) {
        return false;
    }
    const Call activate{name.c_str(), path.c_str(), "org.freedesktop.Application", "ActivateAction"};
    GVariant* parameters = g_variant_new("(sava{sv})", "quit", nullptr, nullptr);
    return call(bus.get(), activate, parameters, "()", patience) != nullptr;
}

void terminate(const std::vector<Process>& all) {
    for (const Process& process : mainProcesses(all)) {
        if (isAlive(process)) {
            ::kill(process.pid, SIGTERM); // one that may not be asked is found alive afterwards
        }
    }
}

std::vector<std::int32_t> pidsOf(const std::vector<Process>& all) {
    std::vector<std::int32_t> pids;
    std::ranges::transform(all, std::back_inserter(pids), &Process::pid);
    return pids;
}

} // namespace

QuitOutcome request(const MemoryApp& app, milliseconds patience) {
    const std::vector<Process> all = living(app.pids);
    if (all.empty()) {
        return QuitOutcome::NotRunning;
    }
    if (activateQuitAction(app, patience) && allEnded(all, patience)) {
        return QuitOutcome::Requested;
    }
    if (xwindows::requestClose(pidsOf(all)) && allEnded(all, patience)) {
        return QuitOutcome::Requested;
    }
    terminate(all);
    return allEnded(all, patience) ? QuitOutcome::Requested : QuitOutcome::NoResponse;
}

std::optional<Process> parseStat(std::string_view line) {
    const std::size_t nameEnd = line.rfind(')'); // the name before may hold anything
    if (nameEnd == std::string_view::npos) {
        return std::nullopt;
    }
    Process process;
    if (std::from_chars(line.data(), line.data() + nameEnd, process.pid).ec != std::errc()) {
        return std::nullopt;
    }
    line.remove_prefix(nameEnd + 1);
    for (int field = 3; !line.empty(); ++field) { // the field after the name is the third
        line.remove_prefix(std::min(line.find_first_not_of(' '), line.size()));
        const std::string_view word = line.substr(0, line.find(' '));
        line.remove_prefix(word.size());
        const char* end = word.data() + word.size();
        if (field == 3 && (word == "Z" || word == "X")) {
            return std::nullopt;
        }
        if (field == 4) {
            std::from_chars(word.data(), end, process.parent);
        }
        if (field == 22) {
            return std::from_chars(word.data(), end, process.started).ec == std::errc() ? std::optional(process)
                                                                                        : std::nullopt;
        }
    }
    return std::nullopt;
}

std::vector<Process> mainProcesses(const std::vector<Process>& all) {
    std::vector<Process> found;
    std::ranges::copy_if(all, std::back_inserter(found), [&](const Process& process) {
        return std::ranges::find(all, process.parent, &Process::pid) == all.end();
    });
    return found;
}

std::string objectPath(std::string_view busName) {
    std::string path = "/";
    for (const char character : busName) {
        path += character == '.' ? '/' : character == '-' ? '_' : character;
    }
    return path;
}

} // namespace vellmoor::quit
