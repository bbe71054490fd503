#include "disk/PosixFiles.h"

#include "disk/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace vellmoor::files {

std::string reason(int error) {
    return std::generic_category().message(error);
}

Outcome failure(int error) {
    return std::unexpected(reason(error));
}

TimePoint timePoint(const timespec& time) {
    using namespace std::chrono;
    using Unit = TimePoint::duration;
    constexpr std::int64_t most = duration_cast<seconds>(Unit::max()).count() / 2; // differences are to fit, too
    return TimePoint(Unit(seconds(std::clamp<std::int64_t>(time.tv_sec, -most, most))) +
                     duration_cast<Unit>(nanoseconds(time.tv_nsec)));
}

bool hasRights(const Path& path, int rights) {
    // access() asks for the real user and, for root, for rights that this process may have given up.
    return ::faccessat(AT_FDCWD, path.c_str(), rights, AT_EACCESS) == 0;
}

bool isExecutable(const Path& path) {
    return hasRights(path, X_OK);
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
    return contents(descriptor.get(), limit);
}

std::optional<std::string> contents(int descriptor, std::size_t limit) {
    std::string bytes;
    std::array<char, 16384> block;
    for (;;) { // files of /proc have length 0: only reading tells
        const ssize_t count = ::read(descriptor, block.data(), block.size());
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

std::optional<std::string> start(const Path& path, std::size_t count) {
    // Not blocking: what was a file a moment ago may be a FIFO by now.
    const Descriptor descriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    struct stat status{};
    if (!descriptor || ::fstat(descriptor.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    std::string bytes(count, '\0');
    const ssize_t got = ::pread(descriptor.get(), bytes.data(), bytes.size(), 0);
    if (got < 0) {
        return std::nullopt;
    }
    bytes.resize(static_cast<std::size_t>(got));
    return bytes;
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

Outcome createLink(const Path& path, const Path& target) {
    return ::symlink(target.c_str(), path.c_str()) == 0 ? Outcome() : failure(errno);
}

Outcome removeFile(const Path& path) {
    return ::unlink(path.c_str()) == 0 ? Outcome() : failure(errno);
}

} // namespace vellmoor::files

namespace vellmoor {

std::optional<std::string> Platform::fileStart(const Path& path, std::size_t count) const {
    return files::start(path, count);
}

} // namespace vellmoor
