// Reading a directory on Linux. getdents64 is called here rather than readdir, whose buffer is made and freed for
// each directory, and which copies nothing but hides where a batch ends. Its d_type spares the call for facts for
// everything that adds nothing to a size: links, sockets, pipes, devices. File systems that do not fill it answer
// DT_UNKNOWN, and only then is the type asked for.
#include "DirectoryReader.h"

#include "Nanoseconds.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace vellmoor::walk {
namespace {

// The kernel fills up to so much in one call; larger buffers were not faster on ext4, btrfs and tmpfs.
constexpr std::size_t batchSize = std::size_t{64} * 1024;
// A buffer that grew beyond this for one large directory is given back.
constexpr std::size_t keptSize = 16 * batchSize;

EntryType typeOf(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFREG:
        return EntryType::File;
    case S_IFDIR:
        return EntryType::Directory;
    case S_IFLNK:
        return EntryType::Symlink;
    default:
        return EntryType::Other;
    }
}

void setType(unsigned char kind, RawEntry& entry) {
    entry.complete = kind != DT_REG && kind != DT_DIR && kind != DT_UNKNOWN;
    entry.type = kind == DT_LNK   ? EntryType::Symlink
                 : kind == DT_REG ? EntryType::File
                 : kind == DT_DIR ? EntryType::Directory
                                  : EntryType::Other;
}

} // namespace

DirectoryReader::DirectoryReader(bool bundleMarks) : bundleMarks_(bundleMarks) {}
DirectoryReader::~DirectoryReader() = default;

void DirectoryReader::clear() {
    if (capacity_ > keptSize) {
        buffer_.reset();
        capacity_ = 0;
    }
    filled_ = position_ = 0;
    hasRead_ = isBroken_ = false;
}

bool DirectoryReader::replace(int fd) {
    filled_ = position_ = 0;
    return read(fd);
}

bool DirectoryReader::append(int fd) {
    position_ = 0;
    return read(fd);
}

bool DirectoryReader::read(int fd) {
    if (capacity_ - filled_ < batchSize / 2) { // a record is at most 280 bytes; half a buffer is worth a call
        const std::size_t larger = std::max(batchSize, capacity_ * 2);
        auto buffer = std::make_unique_for_overwrite<char[]>(larger);
        std::copy_n(buffer_.get(), filled_, buffer.get());
        buffer_ = std::move(buffer);
        capacity_ = larger;
    }
    ssize_t count = 0;
    do {
        count = ::getdents64(fd, buffer_.get() + filled_, std::min(capacity_ - filled_, batchSize));
    } while (count < 0 && errno == EINTR);
    if (count <= 0) {
        isBroken_ = count < 0 && hasRead_ && errno != ENOENT;
        return false;
    }
    hasRead_ = true;
    filled_ += static_cast<std::size_t>(count);
    return true;
}

bool DirectoryReader::next(RawEntry& entry) {
    while (position_ < filled_) {
        const char* const record = buffer_.get() + position_;
        unsigned short length = 0;
        std::memcpy(&length, record + offsetof(dirent64, d_reclen), sizeof length);
        position_ += length;
        const char* const name = record + offsetof(dirent64, d_name);
        if (name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'))) {
            continue;
        }
        entry = RawEntry{.name = name, .hidden = name[0] == '.'};
        setType(static_cast<unsigned char>(record[offsetof(dirent64, d_type)]), entry);
        return true;
    }
    return false;
}

bool DirectoryReader::complete(int fd, dev_t device, RawEntry& entry) {
    struct stat facts{};
    if (::fstatat(fd, entry.name.data(), &facts, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT) != 0) {
        return false;
    }
    entry.type = typeOf(facts.st_mode);
    entry.complete = true;
    if (entry.type == EntryType::Directory) { // files are not tested: overlayfs reports another device for them
        return facts.st_dev == device;
    }
    if (entry.type == EntryType::File) {
        entry.allocatedBytes = std::int64_t{facts.st_blocks} * 512;
        entry.modifiedNs = nanoseconds(facts.st_mtim);
    }
    return true;
}

} // namespace vellmoor::walk
