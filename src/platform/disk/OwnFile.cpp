#include "disk/OwnFile.h"

#include "disk/PosixFiles.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor {
namespace {

std::unexpected<std::string> failed(int error) {
    return std::unexpected(files::reason(error));
}

/// Opens our file in a folder that exists afterwards. Never a FIFO or device: something else of that name is refused.
std::expected<Descriptor, std::string> openOwn(const Path& path, int flags) {
    std::error_code error;
    if (std::filesystem::create_directories(path.parent_path(), error)) {
        std::filesystem::permissions(path.parent_path(), std::filesystem::perms::owner_all, error);
    }
    Descriptor descriptor(::open(path.c_str(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0600));
    struct stat status{};
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0) {
        return failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    return descriptor;
}

Outcome syncFolder(const Path& folder) {
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot sync a folder (EINVAL): then the rename is as durable as it gets.
    return descriptor && (::fsync(descriptor.get()) == 0 || errno == EINVAL) ? Outcome() : files::failure(errno);
}

} // namespace

std::expected<std::string, std::string> OwnFile::read() const {
    const Descriptor descriptor(::open(path_.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    struct stat status{};
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0) {
        return errno == ENOENT || errno == ENOTDIR ? std::expected<std::string, std::string>("") : failed(errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return failed(EINVAL);
    }
    std::string text;
    text.reserve(static_cast<std::size_t>(status.st_size));
    std::array<char, 65536> block;
    for (;;) {
        const ssize_t count = ::read(descriptor.get(), block.data(), block.size());
        if (count < 0 && errno != EINTR) {
            return failed(errno);
        }
        if (count == 0) {
            return text;
        }
        text.append(block.data(), count < 0 ? 0 : static_cast<std::size_t>(count));
    }
}

Outcome OwnFile::replace(std::string_view text) const {
    Path next = path_;
    next += ".new";
    auto descriptor = openOwn(next, O_WRONLY | O_CREAT | O_TRUNC);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    const bool written =
        files::writeAll(descriptor->get(), text) && ::fsync(descriptor->get()) == 0 && descriptor->close();
    if (!written || ::rename(next.c_str(), path_.c_str()) != 0) {
        const int error = errno;
        ::unlink(next.c_str()); // the first cause is the one to tell
        return files::failure(error);
    }
    return syncFolder(path_.parent_path());
}

std::expected<OwnLog, std::string> OwnLog::open(const Path& path) {
    auto descriptor = openOwn(path, O_RDWR | O_CREAT | O_APPEND);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    OwnLog log(std::move(*descriptor));
    const off_t length = ::lseek(log.descriptor_.get(), 0, SEEK_END);
    char last = '\n';
    if (length > 0 && ::pread(log.descriptor_.get(), &last, 1, length - 1) == 1 && last != '\n') {
        if (const Outcome ended = log.append("\n"); !ended) {
            return std::unexpected(ended.error());
        }
    }
    return log;
}

Outcome OwnLog::append(std::string_view lines) {
    const off_t length = ::lseek(descriptor_.get(), 0, SEEK_END);
    if (length >= 0 && files::writeAll(descriptor_.get(), lines)) {
        return {};
    }
    const int error = errno;
    if (length >= 0 && ::ftruncate(descriptor_.get(), length) != 0) {
        return files::failure(error); // half a line stays; a reader passes over it
    }
    return files::failure(error);
}

Outcome OwnLog::sync() {
    return ::fsync(descriptor_.get()) == 0 ? Outcome() : files::failure(errno);
}

std::expected<std::optional<OwnLock>, std::string> OwnLock::tryTake(const Path& path) {
    auto descriptor = openOwn(path, O_RDWR | O_CREAT);
    if (!descriptor) {
        return std::unexpected(descriptor.error());
    }
    if (::flock(descriptor->get(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? std::expected<std::optional<OwnLock>, std::string>(std::nullopt) : failed(errno);
    }
    return OwnLock(std::move(*descriptor));
}

} // namespace vellmoor
