#include "Files.h"

#include "Descriptor.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor::files {
namespace {

struct CloseDirectory {
    void operator()(DIR* directory) const { ::closedir(directory); }
};
using DirectoryStream = std::unique_ptr<DIR, CloseDirectory>;

TimePoint timePoint(const timespec& time) {
    using namespace std::chrono;
    return TimePoint(duration_cast<TimePoint::duration>(seconds(time.tv_sec) + nanoseconds(time.tv_nsec)));
}

// The kind of an entry; not every file system tells it in the listing.
unsigned char kindOf(DIR* directory, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type;
    }
    struct stat status{};
    if (::fstatat(::dirfd(directory), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return DT_UNKNOWN;
    }
    return static_cast<unsigned char>(IFTODT(status.st_mode));
}

bool hasRights(const Path& path, int rights) {
    // access() asks for the real user and, for root, for rights that this process may have given up.
    return ::faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
}

// Where the kernel or the file system does not know RENAME_NOREPLACE. A hard link never replaces anything; a
// renamed folder could replace an empty folder that appears between the test and the move, which loses nothing.
int moveWithoutReplaceFlag(const Path& from, const Path& to) {
    struct stat status{};
    if (::lstat(from.c_str(), &status) != 0) {
        return errno;
    }
    if (!S_ISDIR(status.st_mode) && ::linkat(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), 0) == 0) {
        return ::unlink(from.c_str()) == 0 ? 0 : errno;
    }
    if (existsItself(to)) {
        return EEXIST;
    }
    return ::rename(from.c_str(), to.c_str()) == 0 ? 0 : errno;
}

} // namespace

std::string reason(int error) {
    return std::generic_category().message(error);
}

Outcome failure(int error) {
    return std::unexpected(reason(error));
}

std::optional<FileFacts> facts(const Path& path) {
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
    facts.modified = timePoint(status.st_mtim);
    facts.owner = status.st_uid;
    facts.device = status.st_dev;
    facts.inode = status.st_ino;
    return facts;
}

bool existsItself(const Path& path) {
    struct stat status{};
    return ::lstat(path.c_str(), &status) == 0;
}

bool existsFollowed(const Path& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0;
}

bool isReadable(const Path& path) {
    struct stat status{};
    if (::stat(path.c_str(), &status) != 0) {
        return false;
    }
    return hasRights(path, S_ISDIR(status.st_mode) ? R_OK | X_OK : R_OK);
}

bool isExecutable(const Path& path) {
    return hasRights(path, X_OK);
}

std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder) {
    Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
    if (!descriptor) {
        return std::unexpected(reason(errno));
    }
    const DirectoryStream directory(::fdopendir(descriptor.get()));
    if (!directory) {
        return std::unexpected(reason(errno));
    }
    (void)descriptor.release(); // the stream closes it
    std::vector<FolderEntry> found;
    for (;;) {
        errno = 0;
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        const unsigned char kind = kindOf(directory.get(), *entry);
        found.push_back({std::string(name), kind == DT_DIR, kind == DT_REG, kind == DT_LNK, name.starts_with('.')});
    }
    if (errno != 0) {
        return std::unexpected(reason(errno));
    }
    return found;
}

std::optional<std::string> contents(const Path& path, std::size_t limit) {
    struct stat status{};
    // Asked before opening, since opening a device can do something; and again after it.
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    const Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string bytes;
    std::array<char, 16384> block;
    for (;;) { // files of /proc have length 0: only reading tells
        const ssize_t count = ::read(descriptor.get(), block.data(), block.size());
        if (count == 0) {
            return bytes;
        }
        if (count < 0) {
            if (errno == EINTR) {
                continue;
            }
            return std::nullopt;
        }
        if (static_cast<std::size_t>(count) > limit - bytes.size()) {
            return std::nullopt;
        }
        bytes.append(block.data(), static_cast<std::size_t>(count));
    }
}

std::optional<Path> linkTarget(const Path& path) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length < 0) {
        return std::nullopt;
    }
    target.resize(static_cast<std::size_t>(length));
    return target;
}

std::optional<Path> realPath(const Path& path) {
    const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
    return resolved ? std::optional<Path>(resolved.get()) : std::nullopt;
}

std::optional<Path> realPlace(const Path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0 || !S_ISLNK(status.st_mode)) {
        return realPath(path);
    }
    const std::optional<Path> folder = realPath(path.parent_path());
    return folder ? std::optional<Path>(*folder / path.filename()) : std::nullopt;
}

Outcome moveItem(const Path& from, const Path& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return {};
    }
    if (errno != ENOSYS && errno != EINVAL) {
        return failure(errno);
    }
    const int error = moveWithoutReplaceFlag(from, to);
    return error == 0 ? Outcome() : failure(error);
}

Outcome createFolder(const Path& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        return std::unexpected(error.message());
    }
    return std::filesystem::is_directory(folder, error) ? Outcome() : failure(ENOTDIR);
}

bool writeAll(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            return false;
        }
        bytes.remove_prefix(count < 0 ? 0 : static_cast<std::size_t>(count));
    }
    return true;
}

Outcome createFile(const Path& path, std::string_view contents) {
    Descriptor descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!descriptor) {
        return failure(errno);
    }
    if (writeAll(descriptor.get(), contents) && descriptor.close()) {
        return {};
    }
    const int error = errno;
    ::unlink(path.c_str()); // half a file is worse than none; when this fails, too, the first cause is the one to tell
    return failure(error);
}

Outcome removeFile(const Path& path) {
    return ::unlink(path.c_str()) == 0 ? Outcome() : failure(errno);
}

std::optional<Capacity> capacity(const Path& path) {
    struct statvfs status{};
    if (::statvfs(path.c_str(), &status) != 0) {
        return std::nullopt;
    }
    const auto bytes = [&](fsblkcnt_t blocks) -> std::optional<std::int64_t> {
        std::int64_t product = 0;
        if (__builtin_mul_overflow(blocks, status.f_frsize, &product)) {
            return std::nullopt;
        }
        return product;
    };
    const auto total = bytes(status.f_blocks);
    const auto available = bytes(status.f_bavail); // not f_bfree: the reserved blocks are not the user's
    if (!total || !available) {
        return std::nullopt;
    }
    return Capacity{*total, *available};
}

} // namespace vellmoor::files
