#include "disk/Glob.h"

#include <algorithm>
#include <cstddef>

namespace vellmoor {
namespace {

std::size_t digitRun(std::string_view text) {
    return std::min(text.find_first_not_of("0123456789"), text.size());
}

} // namespace

bool globMatches(std::string_view pattern, std::string_view name) {
    while (!pattern.empty() && pattern.front() != '*') {
        if (pattern.front() == '#') {
            const std::size_t digits = digitRun(name);
            if (digits == 0) {
                return false;
            }
            name.remove_prefix(digits);
        } else {
            if (name.empty() || name.front() != pattern.front()) {
                return false;
            }
            name.remove_prefix(1);
        }
        pattern.remove_prefix(1);
    }
    if (pattern.empty()) {
        return name.empty();
    }
    pattern.remove_prefix(1);
    if (pattern.empty()) {
        return true;
    }
    for (std::size_t skipped = 0; skipped <= name.size(); ++skipped) {
        if (globMatches(pattern, name.substr(skipped))) {
            return true;
        }
    }
    return false;
}

bool globMatchesAny(std::string_view alternatives, std::string_view name) {
    for (;;) {
        const std::size_t end = std::min(alternatives.find('|'), alternatives.size());
        if (globMatches(alternatives.substr(0, end), name)) {
            return true;
        }
        if (end == alternatives.size()) {
            return false;
        }
        alternatives.remove_prefix(end + 1);
    }
}

std::vector<std::string> separated(std::string_view text, char separator) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

bool containsAny(std::string_view text, const std::vector<std::string>& pieces) {
    return std::ranges::any_of(pieces, [&](const std::string& piece) { return text.contains(piece); });
}

} // namespace vellmoor
