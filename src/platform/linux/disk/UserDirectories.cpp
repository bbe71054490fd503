#include "disk/UserDirectories.h"

#include "disk/Glob.h"
#include "disk/Paths.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::string_view blanks = " \t\r";

constexpr std::array<std::pair<std::string_view, Path UserFolders::*>, 8> variables{
    {{"XDG_DOWNLOAD_DIR", &UserFolders::downloads},
     {"XDG_DESKTOP_DIR", &UserFolders::desktop},
     {"XDG_DOCUMENTS_DIR", &UserFolders::documents},
     {"XDG_VIDEOS_DIR", &UserFolders::videos},
     {"XDG_PICTURES_DIR", &UserFolders::pictures},
     {"XDG_MUSIC_DIR", &UserFolders::music},
     {"XDG_PUBLICSHARE_DIR", &UserFolders::publicShare},
     {"XDG_TEMPLATES_DIR", &UserFolders::templates}}};

std::string_view trimmed(std::string_view text) {
    const std::size_t start = text.find_first_not_of(blanks);
    if (start == std::string_view::npos) {
        return {};
    }
    return text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

/// The text between the quotation marks, a backslash taken off the character that it protects.
std::optional<std::string> unquoted(std::string_view text) {
    if (!text.starts_with('"')) {
        return std::nullopt;
    }
    std::string value;
    for (std::size_t at = 1; at < text.size() && text[at] != '"'; ++at) {
        if (text[at] == '\\' && at + 1 < text.size()) {
            ++at;
        }
        value += text[at];
    }
    return value;
}

Path folder(const std::string& value, const Path& home) {
    constexpr std::string_view variable = "$HOME";
    if (value == variable || value.starts_with("$HOME/")) {
        return lexicallyStandardized(home.native() + value.substr(variable.size()));
    }
    return value.starts_with('/') ? lexicallyStandardized(value) : Path();
}

} // namespace

UserFolders userDirectories(std::string_view text, const Path& home) {
    UserFolders folders;
    for (const std::string& line : separated(text, '\n')) {
        const std::size_t sign = line.find('=');
        const std::string_view name = trimmed(std::string_view(line).substr(0, sign));
        for (const auto& [variable, member] : variables) {
            if (sign == std::string::npos || name != variable) {
                continue;
            }
            if (const std::optional<std::string> value = unquoted(trimmed(std::string_view(line).substr(sign + 1)))) {
                folders.*member = folder(*value, home);
            }
        }
    }
    return folders;
}

} // namespace vellmoor
