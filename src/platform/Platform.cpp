#include "Platform.h"

namespace vellmoor {

FileIdentity identityOf(const FileFacts& facts) {
    FileIdentity identity{.device = facts.device, .inode = facts.inode, .length = facts.length};
    identity.modified = facts.modified.value_or(TimePoint());
    if (facts.isDirectory) {
        identity.kind = FileKind::Folder;
    } else if (facts.isRegularFile) {
        identity.kind = FileKind::File;
    } else if (facts.isSymlink) {
        identity.kind = FileKind::Link;
    }
    return identity;
}

std::string CommandResult::combinedOutput() const {
    if (output.empty() || errorMessage.empty()) {
        return output + errorMessage;
    }
    return output + "\n" + errorMessage;
}

std::string valueOf(const KeyFile& file, std::string_view group, std::string_view key) {
    const auto keys = file.find(std::string(group));
    if (keys == file.end()) {
        return {};
    }
    const auto found = keys->second.find(std::string(key));
    return found == keys->second.end() ? std::string() : found->second;
}

std::optional<FileIdentity> Platform::identity(const Path& path) const {
    const std::optional<FileFacts> known = facts(path);
    return known ? std::optional(identityOf(*known)) : std::nullopt;
}

std::optional<Path> Platform::realPlace(const Path& path) const {
    const std::optional<Path> folder = realPath(path.parent_path());
    return folder ? std::optional(*folder / path.filename()) : std::nullopt;
}

bool Platform::isMountPoint(const Path& path) const {
    const std::optional<Path> place = realPlace(standardized(path));
    return place && isMountedAt(*place); // else nothing is there that could be moved
}

bool Platform::isFolder(const Path& path) const {
    const std::optional<FileFacts> known = facts(path);
    return known && known->isDirectory;
}

} // namespace vellmoor
