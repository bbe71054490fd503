// Reading the texts that tell about memory and processes: what tools print and what /proc and /sys hold. Pure
// functions of their text; whatever the text, they answer a value or nothing.
#pragma once

#include <charconv>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// One process as a listing shows it.
struct ProcessMemorySample {
    std::int32_t pid = 0;
    std::int64_t bytes = 0;    ///< resident; shared pages count in every process
    std::string command;       ///< path of the executable
    std::uint64_t started = 0; ///< in the kernel's ticks since boot; 0: not told

    bool operator==(const ProcessMemorySample&) const = default;
};

/// A whole text as a decimal number, with or without sign; nothing when it is none or does not fit.
template <std::signed_integral Integer>
std::optional<Integer> decimal(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    Integer value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

/// Without white space and line breaks at both ends.
std::string_view trimmed(std::string_view text);
/// The lines that are not empty.
std::vector<std::string_view> lines(std::string_view text);
/// At most `limit` fields between white space; the last one keeps the rest of the text as it is.
std::vector<std::string_view> fields(std::string_view text, std::size_t limit);

/// The page size that the first line of vm_stat's text names; 16384 when it names none.
std::int64_t vmPageSize(std::string_view text);
/// The count in the first line that begins with `label`; 0 when it holds no number, nothing without such a line.
std::optional<std::int64_t> labelledCount(std::string_view label, std::string_view text);
/// The same, 0 without such a line.
std::int64_t vmPageCount(std::string_view label, std::string_view text);

/// A line of pid, resident kilobytes and path; nothing when it is anything else.
std::optional<ProcessMemorySample> processMemorySample(std::string_view line);

/// The resident bytes of a /proc/PID/statm text (second field, in pages).
std::optional<std::int64_t> residentBytes(std::string_view statm, std::int64_t pageBytes);
/// The bytes that a zram device occupies (third field of its mm_stat, kernel: admin-guide/blockdev/zram); 0 when
/// the text has none.
std::int64_t zramBytes(std::string_view mmStat);
/// The value of a variable in a /proc/PID/environ text.
std::optional<std::string_view> environmentValue(std::string_view environ, std::string_view name);

} // namespace vellmoor
