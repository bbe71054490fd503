#include "MacFiles.h"

#include "Descriptor.h"
#include "Paths.h"
#include "PosixFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/mount.h>
#include <sys/param.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vellmoor::mac {
namespace {

/// While it lives, a call of this thread that would make the system fetch something from a cloud fails instead.
class NothingIsFetched {
public:
    NothingIsFetched() : before_(::getiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD)) {
        set(IOPOL_MATERIALIZE_DATALESS_FILES_OFF);
    }
    ~NothingIsFetched() { set(before_ < 0 ? IOPOL_MATERIALIZE_DATALESS_FILES_DEFAULT : before_); }
    NothingIsFetched(const NothingIsFetched&) = delete;
    NothingIsFetched& operator=(const NothingIsFetched&) = delete;

private:
    static void set(int policy) {
        const int before = errno; // the cause of a failure is still to be told
        (void)::setiopolicy_np(IOPOL_TYPE_VFS_MATERIALIZE_DATALESS_FILES, IOPOL_SCOPE_THREAD, policy);
        errno = before;
    }
    int before_;
};

Descriptor openFolder(const Path& folder) {
    return Descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
}

FolderEntry entryOf(int folder, const dirent& found) {
    FolderEntry entry;
    entry.name = found.d_name;
    auto mode = static_cast<mode_t>(DTTOIF(found.d_type));
    entry.isHidden = entry.name.starts_with('.');
    struct stat status{};
    // The flag is in no listing. An entry that cannot be asked is shown, as Finder would show it.
    if ((!entry.isHidden || found.d_type == DT_UNKNOWN) &&
        ::fstatat(folder, found.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0) {
        mode = status.st_mode;
        entry.isHidden = entry.isHidden || (status.st_flags & UF_HIDDEN) != 0;
    }
    entry.isDirectory = S_ISDIR(mode);
    entry.isRegularFile = S_ISREG(mode);
    entry.isSymlink = S_ISLNK(mode);
    return entry;
}

bool isListed(std::string_view name) {
    return name != "." && name != ".." && !name.starts_with("._");
}

bool hasParentSteps(const Path& path) {
    return std::ranges::find(path, Path("..")) != path.end();
}

// The data volume's folders have two names; everybody uses the one without this.
std::string_view withoutDataVolume(std::string_view path) {
    constexpr std::string_view dataVolume = "/System/Volumes/Data";
    const bool isBelow = path.starts_with(dataVolume) && path.substr(dataVolume.size()).starts_with('/');
    return isBelow ? path.substr(dataVolume.size()) : path;
}

} // namespace

std::string reason(int error) {
    return files::reason(error);
}

std::optional<FileFacts> facts(const Path& path) {
    const NothingIsFetched guard;
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    FileFacts facts;
    facts.isDirectory = S_ISDIR(status.st_mode);
    facts.isRegularFile = S_ISREG(status.st_mode);
    facts.isSymlink = S_ISLNK(status.st_mode);
    facts.isSticky = (status.st_mode & S_ISVTX) != 0;
    facts.allocatedBytes = std::int64_t{status.st_blocks} * 512;
    facts.length = status.st_size;
    facts.modified = files::timePoint(status.st_mtimespec);
    facts.owner = status.st_uid;
    facts.device = static_cast<std::uint64_t>(status.st_dev);
    facts.inode = status.st_ino;
    return facts;
}

bool exists(const Path& path) {
    const NothingIsFetched guard;
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0;
}

bool isReadable(const Path& path) {
    const NothingIsFetched guard;
    struct stat status{};
    if (::stat(path.c_str(), &status) != 0 || !files::hasRights(path, R_OK)) {
        return false;
    }
    return !S_ISDIR(status.st_mode) || bool(openFolder(path));
}

bool isExecutable(const Path& path) {
    const NothingIsFetched guard;
    return files::isExecutable(path);
}

std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder) {
    const NothingIsFetched guard;
    Descriptor descriptor = openFolder(folder);
    if (!descriptor) {
        return std::unexpected(reason(errno));
    }
    const DirectoryStream directory(::fdopendir(descriptor.get()));
    if (!directory) {
        return std::unexpected(reason(errno));
    }
    const int number = descriptor.release(); // the stream closes it
    std::vector<FolderEntry> found;
    for (;;) {
        errno = 0;
        const dirent* const entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        if (isListed(entry->d_name)) {
            found.push_back(entryOf(number, *entry));
        }
    }
    if (errno != 0) {
        return std::unexpected(reason(errno));
    }
    return found;
}

std::optional<std::string> fileContents(const Path& path, std::size_t limit) {
    const NothingIsFetched guard;
    return files::contents(path, limit);
}

std::optional<std::string> fileStart(const Path& path, std::size_t count) {
    const NothingIsFetched guard;
    return files::start(path, count);
}

std::optional<Path> linkTarget(const Path& path) {
    const NothingIsFetched guard;
    return files::linkTarget(path);
}

Path standardized(const Path& path) {
    return standardized(path, exists);
}

// Foundation's rule for standardising a URL. It never shortens to one of the folders that are no links to /private.
Path standardized(const Path& path, const std::function<bool(const Path&)>& exists) {
    constexpr std::string_view privateFolder = "/private";
    constexpr std::array<std::string_view, 12> fixed{"/Applications", "/Library", "/System", "/Users",
                                                     "/Volumes",      "/bin",     "/cores",  "/dev",
                                                     "/opt",          "/private", "/sbin",   "/usr"};
    if (path.is_absolute() && hasParentSteps(path)) {
        if (const auto real = realPath(path)) {
            return standardized(*real, exists);
        }
    }
    Path result = lexicallyStandardized(path);
    if (isStrictlyBelow(result, privateFolder)) {
        Path rest = result.native().substr(privateFolder.size());
        const bool isFixed =
            std::ranges::any_of(fixed, [&](std::string_view folder) { return isAtOrBelow(rest, folder); });
        if (!isFixed && exists(rest)) {
            return rest;
        }
    }
    return result;
}

std::optional<Path> realPath(const Path& path) {
    const NothingIsFetched guard;
    return files::realPath(path);
}

bool isMountPoint(const Path& real) {
    const NothingIsFetched guard;
    struct stat itself{};
    if (::lstat(real.c_str(), &itself) != 0 || S_ISLNK(itself.st_mode)) {
        return false;
    }
    struct statfs mounted{};
    if (::statfs(real.c_str(), &mounted) != 0) {
        return true; // the system does not tell: not to be moved
    }
    return withoutDataVolume(mounted.f_mntonname) == withoutDataVolume(real.native());
}

Outcome createFile(const Path& path, std::string_view contents) {
    return files::createFile(path, contents);
}

Outcome createLink(const Path& path, const Path& target) {
    return files::createLink(path, target);
}

Outcome removeFile(const Path& path) {
    return files::removeFile(path);
}

} // namespace vellmoor::mac
