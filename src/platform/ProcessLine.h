#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor {

/// What a line of /proc/PID/stat tells (proc_pid_stat(5)).
struct ProcessLine {
    std::int32_t pid = 0;
    std::string name; ///< at most 15 bytes, which the process may change
    std::int32_t parent = 0;
    std::int32_t terminal = 0; ///< the controlling one; 0: none
    bool isKernelThread = false;
    std::uint64_t started = 0; ///< in the kernel's ticks since boot; tells a number that was used again
};

/// Nothing for a process that has ended (a zombie) and for any other text.
std::optional<ProcessLine> parseProcessLine(std::string_view line);

/// What follows `label` in its line of a /proc/PID/status text, without the white space around it.
std::optional<std::string_view> statusValue(std::string_view status, std::string_view label);
/// The user whose rights the process has, by a /proc/PID/status text: the folder of one that may not be looked into
/// belongs to root (proc_pid(5)).
std::optional<std::uint32_t> effectiveUser(std::string_view status);

} // namespace vellmoor
