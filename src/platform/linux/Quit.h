#pragma once

#include "Platform.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::quit {

/// Platform::requestQuit: by the application's own "quit" action on the session bus, then by closing its X windows,
/// then by SIGTERM to its main processes; after each that was sent it waits up to `patience` for all to end. This
/// process, process 1 and what is not the user's are never counted or touched.
QuitOutcome request(const MemoryApp& app, std::chrono::milliseconds patience = std::chrono::seconds(3));

struct Process {
    std::int32_t pid = 0;
    std::int32_t parent = 0;
    std::uint64_t started = 0; ///< in the kernel's ticks since boot; tells a number that was used again
};

/// Reads a line of /proc/PID/stat (proc_pid_stat(5)); nothing for a process that has ended (a zombie).
std::optional<Process> parseStat(std::string_view line);

/// Those whose parent is none of them.
std::vector<Process> mainProcesses(const std::vector<Process>& all);

/// "org.gnome.Text-Editor" as "/org/gnome/Text_Editor".
std::string objectPath(std::string_view busName);

} // namespace vellmoor::quit
