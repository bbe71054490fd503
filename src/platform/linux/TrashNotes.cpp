#include "TrashNotes.h"

#include "PercentText.h"

#include <algorithm>
#include <array>

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

} // namespace

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
