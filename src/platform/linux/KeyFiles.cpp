#include "KeyFiles.h"

#include "GlibPointers.h"
#include "disk/Files.h"

#include <glib.h>

#include <algorithm>
#include <array>

namespace vellmoor {
namespace {

constexpr std::size_t sizeLimit = 1 << 20;

bool isUnitFile(const Path& path) {
    constexpr std::array endings{".service", ".socket", ".timer", ".path", ".target", ".scope", ".slice"};
    return std::ranges::find(endings, path.extension().native()) != endings.end();
}

std::string_view trimmedStart(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    return line;
}

bool isComment(std::string_view line) {
    return line.empty() || line.front() == '#' || line.front() == ';';
}

/// Whether systemd reads the line; it passes over one that is no assignment, or stands above the first group.
bool isRead(std::string_view line, bool inGroup) {
    if (line.starts_with('[')) {
        return true;
    }
    const auto isKeyLetter = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    };
    std::string_view key = line.substr(0, line.find('='));
    key = key.substr(0, key.find_last_not_of(" \t") + 1);
    return inGroup && line.contains('=') && !key.empty() && std::ranges::all_of(key, isKeyLetter);
}

// systemd.syntax(7): a backslash at the end of a line stands for a blank; comments in between are left out.
std::string unitTextAsKeyFile(std::string_view text) {
    std::string out;
    std::string joined;
    bool continued = false;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = trimmedStart(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (isComment(line) && (!continued || !line.empty())) {
            continue;
        }
        continued = line.ends_with('\\');
        if (continued) {
            line.remove_suffix(1);
        }
        joined += line;
        joined += continued ? ' ' : '\n';
        if (continued && !text.empty()) {
            continue;
        }
        if (isRead(joined, !out.empty())) {
            out += joined;
        }
        joined.clear();
    }
    return out;
}

/// Without the lines for languages that the program does not speak, of which an entry often has a hundred.
std::string withoutForeignLanguages(std::string_view text) {
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n') + 1, text.size());
        const std::string_view line = text.substr(0, end == 0 ? text.size() : end);
        text.remove_prefix(line.size());
        const std::string_view key = line.substr(0, line.find('='));
        const std::size_t bracket = key.find('[');
        const bool isTranslation = bracket != std::string_view::npos && bracket > 0 && line.contains('=');
        const std::string_view language = isTranslation ? key.substr(bracket + 1, 2) : std::string_view();
        if (!isTranslation || isComment(key) || language == "zh" || language == "en") {
            out += line;
        }
    }
    return out;
}

std::string valueOf(GKeyFile* file, const char* group, const char* key, bool isUnit) {
    if (!isUnit) {
        if (const glib::Text unescaped{g_key_file_get_string(file, group, key, nullptr)}) {
            return unescaped.get();
        }
    }
    const glib::Text written{g_key_file_get_value(file, group, key, nullptr)};
    return written ? written.get() : "";
}

} // namespace

std::optional<KeyFile> parseKeyFile(std::string_view text, bool isUnit) {
    const std::string converted = isUnit ? unitTextAsKeyFile(text) : std::string(text);
    const glib::KeyFilePointer file{g_key_file_new()};
    if (!g_key_file_load_from_data(file.get(), converted.data(), converted.size(), G_KEY_FILE_KEEP_TRANSLATIONS,
                                   nullptr)) {
        return std::nullopt;
    }
    KeyFile result;
    const glib::TextList groups{g_key_file_get_groups(file.get(), nullptr)};
    for (char** group = groups.get(); *group != nullptr; ++group) {
        auto& keys = result[*group];
        const glib::TextList names{g_key_file_get_keys(file.get(), *group, nullptr, nullptr)};
        for (char** name = names.get(); name != nullptr && *name != nullptr; ++name) {
            keys.emplace(*name, valueOf(file.get(), *group, *name, isUnit));
        }
    }
    return result;
}

std::optional<KeyFile> readKeyFile(const Path& path) {
    std::optional<std::string> text = files::contents(path, sizeLimit);
    if (text && path.extension() == ".desktop") {
        text = withoutForeignLanguages(*text);
    }
    return text ? parseKeyFile(*text, isUnitFile(path)) : std::nullopt;
}

} // namespace vellmoor
