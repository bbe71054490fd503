#include "ProcessLine.h"

#include <algorithm>
#include <charconv>
#include <concepts>

namespace vellmoor {
namespace {

// Positions in the line, as the manual counts them; the name is the second.
constexpr int stateField = 3;
constexpr int parentField = 4;
constexpr int terminalField = 7;
constexpr int flagsField = 9;
constexpr int startField = 22;

constexpr std::uint32_t kernelThread = 0x00200000; // PF_KTHREAD of <linux/sched.h>

constexpr std::string_view white = " \t\r\n\v\f";

template <std::integral Integer>
bool read(std::string_view word, Integer& value) {
    return std::from_chars(word.data(), word.data() + word.size(), value).ec == std::errc();
}

/// The next word of `rest`, which loses it.
std::string_view nextWord(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    const std::string_view word = rest.substr(0, rest.find(' '));
    rest.remove_prefix(word.size());
    return word;
}

} // namespace

std::optional<ProcessLine> parseProcessLine(std::string_view line) {
    const std::size_t nameStart = line.find('(');
    const std::size_t nameEnd = line.rfind(')'); // the name may hold anything
    ProcessLine process;
    if (nameEnd == std::string_view::npos || nameStart > nameEnd || !read(line, process.pid)) {
        return std::nullopt;
    }
    process.name = line.substr(nameStart + 1, nameEnd - nameStart - 1);
    std::string_view rest = line.substr(nameEnd + 1);
    for (int field = stateField; !rest.empty(); ++field) {
        const std::string_view word = nextWord(rest);
        const bool hasEnded = field == stateField && (word == "Z" || word == "X");
        const bool isBroken = (field == parentField && !read(word, process.parent)) ||
                              (field == terminalField && !read(word, process.terminal));
        if (hasEnded || isBroken) {
            return std::nullopt;
        }
        if (std::uint32_t flags = 0; field == flagsField && read(word, flags)) {
            process.isKernelThread = (flags & kernelThread) != 0;
        }
        if (field == startField) {
            return read(word, process.started) ? std::optional(std::move(process)) : std::nullopt;
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> statusValue(std::string_view status, std::string_view label) {
    while (!status.empty()) {
        std::string_view line = status.substr(0, status.find('\n'));
        status.remove_prefix(std::min(line.size() + 1, status.size()));
        if (line.starts_with(label)) {
            line.remove_prefix(label.size());
            line.remove_prefix(std::min(line.find_first_not_of(white), line.size()));
            return line.substr(0, line.find_last_not_of(white) + 1);
        }
    }
    return std::nullopt;
}

std::optional<std::uint32_t> effectiveUser(std::string_view status) {
    const std::string_view users = statusValue(status, "Uid:").value_or(""); // real, effective, saved, file system
    const std::size_t gap = users.find_first_of(white);
    const std::size_t second = gap == std::string_view::npos ? gap : users.find_first_not_of(white, gap);
    std::uint32_t user = 0;
    return second != std::string_view::npos && read(users.substr(second), user) ? std::optional(user) : std::nullopt;
}

} // namespace vellmoor
