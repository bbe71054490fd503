#include "applications/ReleaseName.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace vellmoor {
namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}
bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// "2", "v1.4", "1.4.2rc1": digits between dots; letters at the end only behind a dotted number ("3d" is none).
bool looksLikeVersion(std::string_view part) {
    if (part.starts_with('v') || part.starts_with('V')) {
        part.remove_prefix(1);
    }
    if (part.empty() || !isDigit(part.front())) {
        return false;
    }
    const std::size_t end = std::min(part.find_first_not_of("0123456789."), part.size());
    if (end == part.size()) {
        return true;
    }
    const bool isDotted = part.substr(0, end).find('.') != std::string_view::npos;
    return isDotted && std::ranges::all_of(part.substr(end), [](char c) { return isDigit(c) || isLetter(c); });
}

std::string asciiLower(std::string_view text) {
    std::string out(text);
    std::ranges::transform(out, out.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return out;
}

/// The length of a version at the end, with its separator; 0 without one.
std::size_t versionLength(std::string_view name) {
    const std::size_t separator = name.find_last_of("-_ ");
    if (separator == std::string_view::npos || separator == 0 || !looksLikeVersion(name.substr(separator + 1))) {
        return 0;
    }
    return name.size() - separator;
}

/// The length of the last part with its separator; 0 when it belongs to the name.
std::size_t releasePartLength(std::string_view name) {
    static constexpr std::array known{"x86_64", "amd64", "aarch64", "linux"};
    const std::string lower = asciiLower(name);
    for (const std::string_view part : known) {
        const bool isEnd = lower.size() > part.size() + 1 && lower.ends_with(part);
        if (isEnd && std::string_view("-_. ").find(lower[lower.size() - part.size() - 1]) != std::string_view::npos) {
            return part.size() + 1;
        }
    }
    return versionLength(name);
}

} // namespace

std::string releaseName(std::string_view fileName) {
    const std::string ending = std::filesystem::path(fileName).extension().string();
    // What follows the last dot may be a piece of the version: "Tool-1.2".
    const bool isExtension = ending.size() > 1 && std::ranges::all_of(ending.substr(1), isLetter);
    std::string name(isExtension ? fileName.substr(0, fileName.size() - ending.size()) : fileName);
    while (const std::size_t length = releasePartLength(name)) {
        name.resize(name.size() - length);
    }
    return name;
}

std::string withoutVersion(std::string_view name) {
    while (const std::size_t length = versionLength(name)) {
        name.remove_suffix(length);
    }
    return std::string(name);
}

} // namespace vellmoor
