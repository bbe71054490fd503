#include "TrashRemoval.h"

#include "Descriptor.h"
#include "Files.h"
#include "Paths.h"
#include "PercentText.h"
#include "TreeRemoval.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace vellmoor {
namespace {

constexpr int folderFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
constexpr std::size_t sizesLimit = std::size_t{64} << 20;

// The folder that holds `below`'s last component, opened name by name from `contents`.
Descriptor openParent(const Path& contents, const std::vector<std::string>& below) {
    Descriptor folder(::open(contents.c_str(), folderFlags));
    for (std::size_t index = 0; folder && index + 1 < below.size(); ++index) {
        folder = Descriptor(::openat(folder.get(), below[index].c_str(), folderFlags));
    }
    return folder;
}

// A name so long that its note cannot exist has none.
int removeNote(int trash, const std::string& name) {
    const Descriptor info(::openat(trash, "info", folderFlags));
    if (!info) {
        return errno == ENOENT ? 0 : errno;
    }
    if (::unlinkat(info.get(), (name + ".trashinfo").c_str(), 0) == 0 || errno == ENOENT || errno == ENAMETOOLONG) {
        return 0;
    }
    return errno;
}

// It is a cache that every reader checks: a failure costs nothing but time.
void forgetDirectorySize(const Path& trash, int folder, const std::string& name) {
    const auto text = files::contents(trash / "directorysizes", sizesLimit);
    if (!text) {
        return;
    }
    const std::string kept = withoutDirectorySize(*text, name);
    if (kept == *text) {
        return;
    }
    const std::string temporary = ".directorysizes." + std::to_string(::getpid());
    Descriptor file(::openat(folder, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file) {
        return;
    }
    if (!files::writeAll(file.get(), kept) || !file.close() ||
        ::renameat(folder, temporary.c_str(), folder, "directorysizes") != 0) {
        ::unlinkat(folder, temporary.c_str(), 0);
    }
}

} // namespace

std::string withoutDirectorySize(std::string_view text, std::string_view name) {
    std::string kept;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        const std::size_t lineSize = end == std::string_view::npos ? text.size() : end + 1;
        const std::size_t blank = line.rfind(' ');
        if (blank == std::string_view::npos || percentDecoded(line.substr(blank + 1)) != name) {
            kept += text.substr(0, lineSize);
        }
        text.remove_prefix(lineSize);
    }
    return kept;
}

Outcome removeFromTrash(const Path& path, const TrashFolder& trash) {
    const Path item = lexicallyStandardized(path);
    const Path contents = lexicallyStandardized(trash.contents);
    if (!item.is_absolute() || !isStrictlyBelow(item, contents)) {
        return files::failure(EINVAL);
    }
    std::vector<std::string> below;
    for (const Path& part : item.lexically_relative(contents)) {
        below.push_back(part.string());
    }
    {
        const Descriptor parent = openParent(contents, below);
        if (!parent) {
            return files::failure(errno);
        }
        if (const int error = removeTree(parent.get(), below.back().c_str()); error != 0) {
            return files::failure(error);
        }
    }
    if (below.size() > 1 || lexicallyStandardized(trash.folder) == contents) {
        return {};
    }
    const Descriptor folder(::open(trash.folder.c_str(), folderFlags));
    if (!folder) {
        return files::failure(errno);
    }
    const int error = removeNote(folder.get(), below.back());
    forgetDirectorySize(trash.folder, folder.get(), below.back());
    return error == 0 ? Outcome() : files::failure(error);
}

} // namespace vellmoor
