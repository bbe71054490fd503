#include "disk/Paths.h"

#include <vector>

namespace vellmoor {

std::filesystem::path lexicallyStandardized(const std::filesystem::path& path) {
    const std::string& text = path.native();
    const bool absolute = text.starts_with('/');
    std::vector<std::string_view> kept;
    const std::string_view view(text);
    for (std::size_t start = 0; start < view.size();) {
        const std::size_t end = std::min(view.find('/', start), view.size());
        const std::string_view part = view.substr(start, end - start);
        start = end + 1;
        if (part.empty() || part == ".") {
            continue;
        }
        if (part != "..") { // NOLINT(bugprone-branch-clone): "..", too, is kept where nothing is above it
            kept.push_back(part);
        } else if (!kept.empty() && kept.back() != "..") {
            kept.pop_back();
        } else if (!absolute) {
            kept.push_back(part);
        }
    }
    std::string out;
    for (const std::string_view part : kept) {
        if (absolute || !out.empty()) {
            out += '/';
        }
        out += part;
    }
    return out.empty() && absolute ? "/" : out;
}

bool isStrictlyBelow(const std::filesystem::path& path, const std::filesystem::path& folder) {
    const std::string& inner = path.native();
    const std::string& outer = folder.native();
    if (outer.empty() || outer == "/") {
        return outer == "/" && inner.size() > 1 && inner.starts_with('/');
    }
    return inner.size() > outer.size() + 1 && inner.starts_with(outer) && inner[outer.size()] == '/';
}

std::string displayPath(const std::filesystem::path& path, const std::filesystem::path& home) {
    const std::filesystem::path standard = lexicallyStandardized(path);
    const std::filesystem::path base = lexicallyStandardized(home);
    if (standard == base) {
        return "~";
    }
    return isStrictlyBelow(standard, base) ? "~" + standard.native().substr(base.native().size()) : standard.native();
}

bool isAtOrBelow(const std::filesystem::path& path, const std::filesystem::path& folder) {
    return path.native() == folder.native() || isStrictlyBelow(path, folder);
}

std::filesystem::path underRoot(const std::filesystem::path& root, std::string_view path) {
    if (root == "/" || root.empty()) {
        return std::filesystem::path(path);
    }
    return lexicallyStandardized(root.native() + "/" + std::string(path));
}

std::filesystem::path placed(const std::filesystem::path& path, const std::filesystem::path& home,
                             const std::filesystem::path& root) {
    const bool stays = path == home || isStrictlyBelow(path, home) || isStrictlyBelow(path, root);
    return stays ? path : underRoot(root, path.native());
}

std::string displayName(const std::filesystem::path& path) {
    const std::string name = path.filename().string();
    return name.empty() ? path.string() : name;
}

} // namespace vellmoor
