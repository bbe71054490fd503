#include "processes/MemoryText.h"

#include <algorithm>

namespace vellmoor {
namespace {

constexpr std::int64_t defaultPageSize = 16384;
constexpr std::int64_t bytesPerKilobyte = 1024;
constexpr std::string_view whiteSpace = " \t\n\v\f\r";
constexpr std::string_view blanks = " \t";

std::string_view trimmedOf(std::string_view text, std::string_view characters) {
    const std::size_t start = text.find_first_not_of(characters);
    if (start == std::string_view::npos) {
        return {};
    }
    return text.substr(start, text.find_last_not_of(characters) + 1 - start);
}

/// The digits of the text, joined, as one number.
std::optional<std::int64_t> digitsOf(std::string_view text) {
    std::string digits;
    std::ranges::copy_if(text, std::back_inserter(digits), [](char c) { return c >= '0' && c <= '9'; });
    return decimal<std::int64_t>(digits);
}

/// Two counts multiplied; nothing when the product does not fit.
std::optional<std::int64_t> product(std::int64_t a, std::int64_t b) {
    std::int64_t value = 0;
    return __builtin_mul_overflow(a, b, &value) ? std::nullopt : std::optional(value);
}

} // namespace

std::string_view trimmed(std::string_view text) {
    return trimmedOf(text, whiteSpace);
}

std::vector<std::string_view> lines(std::string_view text) {
    std::vector<std::string_view> found;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        if (end > 0) {
            found.push_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return found;
}

std::vector<std::string_view> fields(std::string_view text, std::size_t limit) {
    std::vector<std::string_view> found;
    for (text = trimmed(text); !text.empty();) {
        const std::size_t end = found.size() + 1 < limit ? text.find_first_of(whiteSpace) : std::string_view::npos;
        found.push_back(text.substr(0, end));
        text.remove_prefix(found.back().size());
        text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
    }
    return found;
}

std::int64_t vmPageSize(std::string_view text) {
    const std::vector<std::string_view> all = lines(text);
    const std::int64_t named = all.empty() ? 0 : digitsOf(all.front()).value_or(0);
    return named < 1 ? defaultPageSize : named;
}

std::optional<std::int64_t> labelledCount(std::string_view label, std::string_view text) {
    for (const std::string_view line : lines(text)) {
        if (trimmedOf(line, blanks).starts_with(label)) {
            return digitsOf(line).value_or(0);
        }
    }
    return std::nullopt;
}

std::int64_t vmPageCount(std::string_view label, std::string_view text) {
    return labelledCount(label, text).value_or(0);
}

std::optional<ProcessMemorySample> processMemorySample(std::string_view line) {
    const std::vector<std::string_view> columns = fields(line, 3);
    if (columns.size() != 3) {
        return std::nullopt;
    }
    const std::optional<std::int32_t> pid = decimal<std::int32_t>(columns[0]);
    const std::optional<std::int64_t> kilobytes = decimal<std::int64_t>(columns[1]);
    const std::optional<std::int64_t> bytes = kilobytes ? product(*kilobytes, bytesPerKilobyte) : std::nullopt;
    if (!pid || !bytes) {
        return std::nullopt;
    }
    return ProcessMemorySample{.pid = *pid, .bytes = *bytes, .command = std::string(columns[2])};
}

std::optional<std::int64_t> residentBytes(std::string_view statm, std::int64_t pageBytes) {
    const std::vector<std::string_view> columns = fields(statm, 3);
    const std::optional<std::int64_t> pages = columns.size() > 1 ? decimal<std::int64_t>(columns[1]) : std::nullopt;
    return pages && *pages >= 0 ? product(*pages, pageBytes) : std::nullopt;
}

std::int64_t zramBytes(std::string_view mmStat) {
    const std::vector<std::string_view> columns = fields(mmStat, 4);
    return columns.size() < 3 ? 0 : std::max<std::int64_t>(decimal<std::int64_t>(columns[2]).value_or(0), 0);
}

std::optional<std::string_view> environmentValue(std::string_view environ, std::string_view name) {
    while (!environ.empty()) {
        const std::string_view entry = environ.substr(0, environ.find('\0'));
        if (entry.size() > name.size() && entry.starts_with(name) && entry[name.size()] == '=') {
            return entry.substr(name.size() + 1);
        }
        environ.remove_prefix(std::min(entry.size() + 1, environ.size()));
    }
    return std::nullopt;
}

} // namespace vellmoor
