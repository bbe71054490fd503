#include "MountPoints.h"

namespace vellmoor::walk {
namespace {

bool isOctal(char c) {
    return c >= '0' && c <= '7';
}

// The kernel writes space, tab, newline and backslash of a path as a backslash and three octal digits.
std::string unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && isOctal(text[i + 1]) && isOctal(text[i + 2]) &&
            isOctal(text[i + 3])) {
            result += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

// "36 35 98:0 /in/its/device /mount/point options...": the fifth field.
std::string_view mountPointField(std::string_view line) {
    for (int field = 0; field < 4; ++field) {
        const std::size_t space = line.find(' ');
        if (space == std::string_view::npos) {
            return {};
        }
        line.remove_prefix(space + 1);
    }
    return line.substr(0, line.find(' '));
}

} // namespace

std::vector<std::string> mountPlaces(std::string_view mountinfo) {
    std::vector<std::string> places;
    while (!mountinfo.empty()) {
        const std::string_view line = mountinfo.substr(0, mountinfo.find('\n'));
        mountinfo.remove_prefix(std::min(line.size() + 1, mountinfo.size()));
        places.push_back(unescaped(mountPointField(line)));
    }
    return places;
}

std::unique_ptr<const MountPoints> MountPoints::parse(std::string_view mountinfo, std::string_view realRoot) {
    return among(mountPlaces(mountinfo), realRoot);
}

std::unique_ptr<const MountPoints> MountPoints::among(const std::vector<std::string>& places,
                                                      std::string_view realRoot) {
    std::string prefix(realRoot);
    if (!prefix.ends_with('/')) {
        prefix += '/';
    }
    std::unique_ptr<MountPoints> found;
    for (const std::string& place : places) {
        if (!place.starts_with(prefix) || place.size() == prefix.size()) {
            continue;
        }
        if (!found) {
            found = std::make_unique<MountPoints>();
        }
        found->add(std::string_view(place).substr(prefix.size()));
    }
    return found;
}

void MountPoints::add(std::string_view relative) {
    MountPoints* node = this;
    while (!relative.empty()) {
        const std::string_view name = relative.substr(0, relative.find('/'));
        relative.remove_prefix(std::min(name.size() + 1, relative.size()));
        node = &node->children_[std::string(name)];
    }
    node->mounted_ = true;
}

const MountPoints* MountPoints::find(std::string_view name) const {
    const auto child = children_.find(name);
    return child != children_.end() ? &child->second : nullptr;
}

} // namespace vellmoor::walk
