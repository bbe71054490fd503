#include "Session.h"

#include "Host.h"
#include "HostSession.h"
#include "StandInPlatform.h"
#include "disk/Paths.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <pwd.h>
#include <system_error>
#include <unistd.h>
#include <vector>

extern char** environ; // NOLINT: POSIX gives it no header

namespace vellmoor::probe {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;

constexpr std::size_t runningFileLimit = 16 << 20;

/// The home folders that are not to be touched: that of the account and that of the environment.
std::vector<fs::path> realHomes() {
    std::vector<fs::path> homes;
    if (const passwd* account = ::getpwuid(::getuid()); account != nullptr) {
        homes.emplace_back(account->pw_dir);
    }
    if (const char* variable = std::getenv("HOME"); variable != nullptr && *variable == '/') {
        homes.emplace_back(variable);
    }
    for (fs::path& home : homes) {
        std::error_code missing; // then it stays as it is written
        if (const fs::path real = fs::canonical(home, missing); !missing) {
            home = real;
        }
    }
    return homes;
}

bool isRealHome(const fs::path& folder) {
    return std::ranges::any_of(realHomes(),
                               [&](const fs::path& home) { return home == folder || isStrictlyBelow(home, folder); });
}

/// Whether other users' or the system's files could be meant: a throw-away root is a folder of its own.
bool isUnsafeRoot(const fs::path& root) {
    return root != "/" && isRealHome(root);
}

void leaveTheRealUser(const fs::path& home) {
    std::vector<std::string> names{"DBUS_SESSION_BUS_ADDRESS", "APPIMAGE"};
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        if (text.starts_with("XDG_")) {
            names.emplace_back(text.substr(0, text.find('=')));
        }
    }
    for (const std::string& name : names) {
        ::unsetenv(name.c_str());
    }
    ::setenv("HOME", home.c_str(), 1);
}

std::optional<std::string> textOf(const Json& object, const char* key) {
    const auto value = object.find(key);
    return value != object.end() && value->is_string() ? std::optional(value->get<std::string>()) : std::nullopt;
}

std::expected<std::vector<RunningApplication>, std::string> readRunning(const fs::path& file) {
    const auto wrong = [&](const char* what) { return std::unexpected("--running: " + file.string() + what); };
    const auto text = test::hostPlatform().fileContents(file, runningFileLimit);
    if (!text) {
        return wrong(" cannot be read");
    }
    const Json list = Json::parse(*text, nullptr, false);
    if (!list.is_array()) {
        return wrong(" is no JSON array");
    }
    std::vector<RunningApplication> running;
    for (const Json& entry : list) {
        if (!entry.is_object() || !textOf(entry, "name")) {
            return wrong(" holds something that is no application");
        }
        const Json pid = entry.value("pid", Json(0));
        const Json active = entry.value("isActive", Json(false));
        running.push_back({.pid = pid.is_number_integer() ? pid.get<std::int32_t>() : 0,
                           .name = *textOf(entry, "name"),
                           .bundleIdentifier = textOf(entry, "bundleIdentifier"),
                           .bundlePath = textOf(entry, "bundlePath").value_or(""),
                           .isActive = active.is_boolean() && active.get<bool>()});
    }
    return running;
}

/// What lies in the root's /Volumes, by name.
std::vector<Volume> volumesBelow(const fs::path& root) {
    const fs::path folder = underRoot(root, "/Volumes");
    std::vector<Volume> volumes{{root, ""}};
    const auto entries = test::hostPlatform().entries(folder);
    for (const FolderEntry& entry : entries.value_or(std::vector<FolderEntry>())) {
        if (entry.isDirectory && !entry.isHidden) {
            volumes.push_back({folder / entry.name, entry.name});
        }
    }
    std::ranges::sort(volumes, {}, &Volume::path);
    return volumes;
}

std::expected<std::unique_ptr<Platform>, std::string> standIn(const Arguments& arguments, const fs::path& home) {
    const Platform& host = test::hostPlatform();
    auto platform = std::make_unique<test::StandInPlatform>(test::System::Mac, home, arguments.root);
    platform->diskCapacity = host.capacity(home);
    platform->physical = host.physicalMemory();
    platform->language = host.preferredLanguage();
    if (arguments.root != "/") { // this machine's own tools are not those of macOS
        platform->startsUnscriptedTools = true;
        platform->volumes = volumesBelow(arguments.root);
    }
    if (arguments.running) {
        auto running = readRunning(*arguments.running);
        if (!running) {
            return std::unexpected(running.error());
        }
        platform->running = *std::move(running);
    }
    return platform;
}

std::expected<Session, std::string> openStandIn(const Arguments& arguments) {
    const fs::path home = arguments.home.value_or(terminal::userHome());
    auto platform = standIn(arguments, home);
    if (!platform) {
        return std::unexpected(platform.error());
    }
    Session session;
    session.layout = macosLayout(home, (*platform)->userId(), arguments.root);
    session.platform = *std::move(platform);
    return session;
}

} // namespace

std::expected<Session, std::string> openSession(const Arguments& arguments) {
    if (arguments.changesFiles() && arguments.home && isRealHome(*arguments.home)) {
        return std::unexpected("this command changes files: --home is the real home folder or holds it");
    }
    if (arguments.changesFiles() && isUnsafeRoot(arguments.root)) {
        return std::unexpected("this command changes files: --root holds the real home folder");
    }
    if (arguments.home) {
        leaveTheRealUser(*arguments.home);
    }
    const auto real = isForReal(arguments, arguments.layout.value_or(ownLayout()));
    if (!real) {
        return std::unexpected(real.error());
    }
    std::expected<Session, std::string> session =
        *real ? terminal::openOwnSystem(arguments.home, arguments.root) : openStandIn(arguments);
    if (session) {
        terminal::chooseTexts(*session->platform, session->layout, arguments.language);
    }
    return session;
}

} // namespace vellmoor::probe
