#include "disk/Files.h"

#include "disk/Descriptor.h"
#include "disk/OpenFolders.h"
#include "disk/Rename.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor::files {
namespace {

// The kind of an entry; not every file system tells it in the listing.
unsigned char kindOf(int folder, const dirent& entry) {
    if (entry.d_type != DT_UNKNOWN) {
        return entry.d_type;
    }
    struct stat status{};
    if (::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        return DT_UNKNOWN;
    }
    return static_cast<unsigned char>(IFTODT(status.st_mode));
}

} // namespace

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
    facts.length = status.st_size;
    facts.modified = timePoint(status.st_mtim);
    facts.owner = status.st_uid;
    facts.mode = status.st_mode & 07777U;
    facts.device = status.st_dev;
    facts.inode = status.st_ino;
    return facts;
}

bool existsItself(const Path& path) {
    struct stat status{};
    return ::lstat(path.c_str(), &status) == 0 || !meansGone(errno); // what cannot be seen is there
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

std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder) {
    Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
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
        const dirent* entry = ::readdir(directory.get());
        if (entry == nullptr) {
            break;
        }
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..") {
            continue;
        }
        const unsigned char kind = kindOf(number, *entry);
        found.push_back({std::string(name), kind == DT_DIR, kind == DT_REG, kind == DT_LNK, name.starts_with('.')});
    }
    if (errno != 0) {
        return std::unexpected(reason(errno));
    }
    return found;
}

Outcome moveItem(const Path& from, const Path& to) {
    const int error = renameWithoutReplacing(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str());
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
    // Without the blocks reserved for root, so that used and available are those of df.
    const auto total = bytes(status.f_blocks - status.f_bfree + status.f_bavail);
    const auto available = bytes(status.f_bavail);
    if (!total || !available || *total == 0) {
        return std::nullopt;
    }
    return Capacity{*total, *available};
}

} // namespace vellmoor::files
