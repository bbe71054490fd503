#include "desktop/VolumeLabel.h"

#include <charconv>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <system_error>
#include <vector>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

/// Undoes escapes of a backslash, `marker`, and `digits` digits in `base`: \040 of the kernel, \x20 of udev.
std::string unescaped(std::string_view text, std::string_view marker, std::size_t digits, int base) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t length = marker.size() + digits;
        unsigned value = 0;
        if (text.starts_with(marker) && text.size() >= length) {
            const char* first = text.data() + marker.size();
            const auto [end, error] = std::from_chars(first, first + digits, value, base);
            if (error == std::errc() && end == first + digits) {
                plain += static_cast<char>(static_cast<std::uint8_t>(value));
                text.remove_prefix(length);
                continue;
            }
        }
        plain += text.front();
        text.remove_prefix(1);
    }
    return plain;
}

std::vector<std::string> words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> found;
    for (std::string word; in >> word;) {
        found.push_back(word);
    }
    return found;
}

bool lies(const std::string& path, const std::string& below) {
    return below == "/" || path == below || path.starts_with(below + '/');
}

} // namespace

std::optional<fs::path> deviceOf(const fs::path& path, std::string_view mountInfo) {
    constexpr std::size_t folderField = 4;
    std::istringstream lines{std::string(mountInfo)};
    std::string longest;
    std::string device;
    for (std::string line; std::getline(lines, line);) {
        // ID parent major:minor root FOLDER options... - type SOURCE options
        const std::size_t separator = line.find(" - ");
        if (separator == std::string::npos) {
            continue;
        }
        const std::vector<std::string> mount = words(line.substr(0, separator));
        const std::vector<std::string> source = words(line.substr(separator + 3));
        if (mount.size() <= folderField || source.size() < 2) {
            continue;
        }
        const std::string folder = unescaped(mount[folderField], "\\", 3, 8);
        // A later mount on the same folder hides the earlier one.
        if (lies(path.string(), folder) && folder.size() >= longest.size()) {
            longest = folder;
            device = unescaped(source[1], "\\", 3, 8);
        }
    }
    return device.starts_with('/') ? std::optional<fs::path>(device) : std::nullopt;
}

std::optional<std::string> labelOf(const fs::path& device, const fs::path& labels) {
    std::error_code error;
    const fs::path real = fs::canonical(device, error);
    if (error) {
        return std::nullopt;
    }
    for (fs::directory_iterator entry(labels, error), end; !error && entry != end; entry.increment(error)) {
        std::error_code broken;
        if (fs::canonical(entry->path(), broken) == real && !broken) {
            return unescaped(entry->path().filename().string(), "\\x", 2, 16);
        }
    }
    return std::nullopt;
}

std::optional<std::string> volumeLabelOf(const fs::path& path, const fs::path& root) {
    std::ifstream file(root / "proc/self/mountinfo");
    std::ostringstream text;
    text << file.rdbuf();
    std::error_code error;
    const fs::path real = fs::canonical(path, error);
    const auto device = error ? std::nullopt : deviceOf(real, text.str());
    return device ? labelOf(*device, root / "dev/disk/by-label") : std::nullopt;
}

} // namespace vellmoor
