#include "programs/Quit.h"

#include "disk/Descriptor.h"
#include "disk/Files.h"
#include "programs/QuitAction.h"
#include "programs/XWindows.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace vellmoor::quit {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr std::size_t procFileLimit = 65536;

/// A process, held so that its number cannot become another's while it is dealt with (pidfd_open(2)).
struct HeldProcess {
    ProcessLine line;
    Descriptor descriptor;
};

std::string procFile(std::int32_t pid, const char* name) {
    return "/proc/" + std::to_string(pid) + "/" + name;
}

/// The process of that number if it is the one that began then, belongs to the user and is neither this one nor 1.
std::optional<HeldProcess> hold(std::int32_t pid, std::uint64_t started) {
    if (pid <= 1 || pid == ::getpid()) {
        return std::nullopt;
    }
    // Held first and looked at then: what the files say is said of the process that is held.
    Descriptor descriptor(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    const auto status = files::contents(procFile(pid, "status"), procFileLimit);
    const auto text = files::contents(procFile(pid, "stat"), procFileLimit);
    std::optional<ProcessLine> line = text ? parseProcessLine(*text) : std::nullopt;
    if (!descriptor || !line || line->started != started || !status || effectiveUser(*status) != ::geteuid()) {
        return std::nullopt;
    }
    return HeldProcess{std::move(*line), std::move(descriptor)};
}

std::vector<HeldProcess> hold(const MemoryApp& app) {
    std::vector<HeldProcess> held;
    for (std::size_t i = 0; i < app.pids.size() && i < app.starts.size(); ++i) {
        if (auto process = hold(app.pids[i], app.starts[i])) {
            held.push_back(std::move(*process));
        }
    }
    return held;
}

/// Waits for the end of all. A descriptor of a process can be read once that has ended.
bool allEnded(const std::vector<HeldProcess>& held, Deadline deadline) {
    std::vector<pollfd> waiting;
    for (const HeldProcess& process : held) {
        waiting.push_back({.fd = process.descriptor.get(), .events = POLLIN, .revents = 0});
    }
    while (!waiting.empty()) {
        const auto left = std::chrono::duration_cast<milliseconds>(deadline - Clock::now());
        const int ready = ::poll(waiting.data(), waiting.size(), std::max(static_cast<int>(left.count()), 0));
        if (ready == 0 || (ready < 0 && errno != EINTR)) {
            return false;
        }
        std::erase_if(waiting, [](const pollfd& process) { return (process.revents & POLLIN) != 0; });
    }
    return true;
}

/// A Flatpak's processes see this file in their root; the numbers by which they call themselves are their sandbox's.
bool isFlatpak(const HeldProcess& process) {
    return ::access(procFile(process.line.pid, "root/.flatpak-info").c_str(), F_OK) == 0;
}

bool closeWindows(const MemoryApp& app, const std::vector<HeldProcess>& held) {
    if (std::ranges::any_of(held, isFlatpak)) {
        return app.bundleIdentifier && xwindows::requestClose(*app.bundleIdentifier);
    }
    std::vector<std::int32_t> pids;
    std::ranges::transform(held, std::back_inserter(pids), [](const HeldProcess& process) { return process.line.pid; });
    return xwindows::requestClose(pids);
}

/// The programs that only make a Flatpak's sandbox; a signal to them would tear it down around the application.
bool isWrapper(const ProcessLine& process) {
    return process.name == "bwrap" || process.name == "xdg-dbus-proxy";
}

} // namespace

QuitOutcome request(const MemoryApp& app, milliseconds patience) {
    const Deadline deadline = Clock::now() + patience;
    const std::vector<HeldProcess> held = hold(app);
    if (held.empty()) {
        return QuitOutcome::NotRunning;
    }
    const bool isAsked =
        (app.bundleIdentifier && activateQuitAction(*app.bundleIdentifier, deadline)) || closeWindows(app, held);
    if (!isAsked) {
        return allEnded(held, Clock::now()) ? QuitOutcome::NotRunning : QuitOutcome::CannotAsk;
    }
    return allEnded(held, deadline) ? QuitOutcome::Requested : QuitOutcome::NoResponse;
}

QuitOutcome end(const MemoryApp& app, milliseconds patience) {
    const Deadline deadline = Clock::now() + patience;
    const std::vector<HeldProcess> held = hold(app);
    if (held.empty()) {
        return QuitOutcome::NotRunning;
    }
    std::vector<ProcessLine> lines;
    std::ranges::transform(held, std::back_inserter(lines), &HeldProcess::line);
    for (const ProcessLine& main : mainProcesses(lines)) {
        const auto process = std::ranges::find(held, main.pid, [](const HeldProcess& each) { return each.line.pid; });
        // One that may not be signalled, or has ended meanwhile, is found alive or not afterwards.
        (void)::syscall(SYS_pidfd_send_signal, process->descriptor.get(), SIGTERM, nullptr, 0);
    }
    return allEnded(held, deadline) ? QuitOutcome::Requested : QuitOutcome::NoResponse;
}

std::vector<ProcessLine> mainProcesses(const std::vector<ProcessLine>& all) {
    const auto parentOf = [&](const ProcessLine& process) {
        return std::ranges::find(all, process.parent, &ProcessLine::pid);
    };
    const auto isMain = [&](const ProcessLine& process) {
        std::size_t steps = 0; // numbers that were used again may form a loop
        for (auto above = parentOf(process); above != all.end() && steps <= all.size(); above = parentOf(*above)) {
            if (!isWrapper(*above)) {
                return false;
            }
            ++steps;
        }
        return !isWrapper(process);
    };
    std::vector<ProcessLine> found;
    std::ranges::copy_if(all, std::back_inserter(found), isMain);
    return found;
}

} // namespace vellmoor::quit
