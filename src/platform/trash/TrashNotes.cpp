#include "trash/TrashNotes.h"

#include "PercentText.h"
#include "disk/Paths.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace vellmoor {
namespace {

constexpr std::string_view ending = ".trashinfo";

// At most `size` bytes, without half a UTF-8 character at the end.
std::string_view cutAtCharacter(std::string_view text, std::size_t size) {
    if (text.size() <= size) {
        return text;
    }
    const auto continues = [&](std::size_t index) {
        return (static_cast<unsigned char>(text[index]) & 0xC0U) == 0x80U;
    };
    std::size_t end = size;
    while (end > 0 && size - end < 3 && continues(end)) { // bytes that are no UTF-8 are cut anywhere
        --end;
    }
    return text.substr(0, continues(end) ? size : end);
}

// The first value of a key in the note's own group, which comes first.
std::optional<std::string_view> noteValue(std::string_view note, std::string_view key) {
    bool isInGroup = false;
    while (!note.empty()) {
        std::string_view line = note.substr(0, note.find('\n'));
        note.remove_prefix(std::min(note.size(), line.size() + 1));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.starts_with('[')) {
            if (isInGroup || line != "[Trash Info]") {
                return std::nullopt;
            }
            isInGroup = true;
        } else if (isInGroup && line.starts_with(key) && line.substr(key.size()).starts_with('=')) {
            return line.substr(key.size() + 1);
        }
    }
    return std::nullopt;
}

// A path that leads where it says: no detour, no name that no file has.
bool isStraight(const Path& path) {
    return path.has_filename() && path.filename() != "." && std::ranges::find(path, Path("..")) == path.end() &&
           path.native().find('\0') == std::string::npos;
}

} // namespace

std::optional<Path> notedOrigin(std::string_view note, const TrashFolder& trash, bool isHome) {
    const auto value = noteValue(note, "Path");
    const Path named = value ? Path(percentDecoded(*value)) : Path();
    if (!isStraight(named) || (isHome && !named.is_absolute())) {
        return std::nullopt;
    }
    Path origin = (named.is_absolute() ? named : trash.anchor / named).lexically_normal();
    const bool isOutside = !isHome && !isStrictlyBelow(origin, trash.anchor);
    if (isOutside || isAtOrBelow(origin, trash.folder)) {
        return std::nullopt;
    }
    return origin;
}

std::string trashNote(const std::filesystem::path& place, std::time_t deleted) {
    std::tm local{};
    ::localtime_r(&deleted, &local);
    std::array<char, 32> date{};
    std::strftime(date.data(), date.size(), "%Y-%m-%dT%H:%M:%S", &local);
    return "[Trash Info]\nPath=" + percentEncoded(place.native()) + "\nDeletionDate=" + date.data() + "\n";
}

std::string noteName(std::string_view name) {
    return std::string(name) += ending;
}

std::optional<std::string> notedItem(std::string_view noteName) {
    const bool isNote = noteName.size() > ending.size() && noteName.ends_with(ending);
    return isNote ? std::optional(std::string(noteName.substr(0, noteName.size() - ending.size()))) : std::nullopt;
}

std::string trashName(std::string_view name, unsigned number, std::size_t limit) {
    const std::size_t room = limit - std::min(limit, ending.size());
    const std::string suffix = number == 1 ? "" : "." + std::to_string(number);
    const std::size_t dot = name.rfind('.');
    std::string_view extension = dot == std::string_view::npos || dot == 0 ? "" : name.substr(dot);
    if (extension.size() + suffix.size() >= room) { // a dot somewhere in a long name
        extension = "";
    }
    const std::string_view stem = name.substr(0, name.size() - extension.size());
    std::string result(cutAtCharacter(stem, room - std::min(room, extension.size() + suffix.size())));
    return result.append(suffix).append(extension);
}

bool isTrashNameOf(std::string_view given, std::string_view name) {
    constexpr std::size_t limit = 255;
    if (given == trashName(name, 1, limit)) {
        return true;
    }
    // The number is one of the pieces between dots.
    for (std::size_t dot = given.find('.'); dot != std::string_view::npos; dot = given.find('.', dot + 1)) {
        unsigned number = 0;
        const char* const end = given.data() + given.size();
        const auto [rest, error] = std::from_chars(given.data() + dot + 1, end, number);
        const bool isPiece = error == std::errc() && (rest == end || *rest == '.');
        if (isPiece && number > 1 && given == trashName(name, number, limit)) {
            return true;
        }
    }
    return false;
}

std::string withoutDirectorySizes(std::string_view text, const std::set<std::string>& names) {
    std::string kept;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        const std::size_t lineSize = end == std::string_view::npos ? text.size() : end + 1;
        const std::size_t blank = line.rfind(' ');
        if (blank == std::string_view::npos || !names.contains(percentDecoded(line.substr(blank + 1)))) {
            kept += text.substr(0, lineSize);
        }
        text.remove_prefix(lineSize);
    }
    return kept;
}

} // namespace vellmoor
