#include "TemporaryFolder.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace vellmoor::test {
namespace {

[[noreturn]] void fail(const fs::path& path) {
    throw std::system_error(errno, std::generic_category(), path.string());
}

class Descriptor {
public:
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() {
        if (value_ >= 0) {
            ::close(value_);
        }
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    [[nodiscard]] int get() const { return value_; }

private:
    int value_;
};

fs::path placeFor(const fs::path& folder, const fs::path& relative) {
    if (relative.is_absolute()) {
        throw std::invalid_argument("not relative: " + relative.string());
    }
    fs::path place = folder / relative;
    fs::create_directories(place.parent_path());
    return place;
}

int create(const fs::path& path) {
    if (::unlink(path.c_str()) != 0 && errno != ENOENT) { // never write through a link or into a second name
        fail(path);
    }
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (fd < 0) {
        fail(path);
    }
    return fd;
}

void writeAll(int fd, std::string_view contents, const fs::path& path) {
    while (!contents.empty()) {
        const ssize_t written = ::write(fd, contents.data(), contents.size());
        if (written < 0) {
            fail(path);
        }
        contents.remove_prefix(static_cast<std::size_t>(written));
    }
}

struct Listing {
    std::vector<std::string> folders, others;
};

// The names in the folder `name` of `parent`; a link is not followed.
Listing list(int parent, const char* name) {
    Listing listing;
    const int fd = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    DIR* directory = fd < 0 ? nullptr : ::fdopendir(fd);
    if (directory == nullptr) {
        fail(name);
    }
    while (const dirent* entry = ::readdir(directory)) {
        const std::string child = entry->d_name;
        if (child == "." || child == "..") {
            continue;
        }
        struct stat status{};
        const bool known = ::fstatat(fd, child.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
        (known && S_ISDIR(status.st_mode) ? listing.folders : listing.others).push_back(child);
    }
    ::closedir(directory);
    return listing;
}

// Folders are not deleted where they are but first moved up into the top folder under a number, so that neither
// depth nor the length of paths matters and three descriptors are enough.
void deleteContents(int top) {
    std::vector<std::string> pending;
    unsigned long next = 0;
    const auto empty = [&](const char* name) {
        ::fchmodat(top, name, 0700, 0); // a failure shows in the next line
        const Listing listing = list(top, name);
        const Descriptor fd(::openat(top, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        for (const std::string& child : listing.others) {
            if (::unlinkat(fd.get(), child.c_str(), 0) != 0 && errno != ENOENT) {
                fail(child);
            }
        }
        for (const std::string& child : listing.folders) {
            ::fchmodat(fd.get(), child.c_str(), 0700, 0); // moving a folder needs write permission on it
            const std::string moved = ".deleted-" + std::to_string(next++);
            if (::renameat(fd.get(), child.c_str(), top, moved.c_str()) != 0) {
                fail(child);
            }
            pending.push_back(moved);
        }
    };
    empty(".");
    while (!pending.empty()) {
        const std::string name = std::move(pending.back());
        pending.pop_back();
        empty(name.c_str());
        if (::unlinkat(top, name.c_str(), AT_REMOVEDIR) != 0) {
            fail(name);
        }
    }
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::string name = (fs::canonical(fs::temp_directory_path()) / "vellmoor-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) {
        fail(name);
    }
    path_ = name;
}

TemporaryFolder::~TemporaryFolder() {
    try {
        ::chmod(path_.c_str(), 0700); // a failure shows in the next line
        const Descriptor top(::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        if (top.get() < 0) {
            fail(path_);
        }
        deleteContents(top.get());
        if (::rmdir(path_.c_str()) != 0) {
            fail(path_);
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "TemporaryFolder: cannot delete %s: %s\n", path_.c_str(), error.what());
    }
}

fs::path TemporaryFolder::file(const fs::path& relative, std::int64_t bytes) const {
    constexpr std::int64_t written = 1 << 20;
    if (bytes <= written) {
        return text(relative, std::string(static_cast<std::size_t>(bytes), 'x'));
    }
    const fs::path place = placeFor(path_, relative);
    const Descriptor fd(create(place));
#ifdef __linux__
    if (const int error = ::posix_fallocate(fd.get(), 0, bytes); error != 0) { // answers the error number itself
        throw std::system_error(error, std::generic_category(), place.string());
    }
#else
    const std::string block(written, 'x');
    for (std::int64_t left = bytes; left > 0; left -= written) {
        writeAll(fd.get(), std::string_view(block).substr(0, static_cast<std::size_t>(std::min(left, written))), place);
    }
#endif
    return place;
}

fs::path TemporaryFolder::text(const fs::path& relative, std::string_view contents) const {
    const fs::path place = placeFor(path_, relative);
    const Descriptor fd(create(place));
    writeAll(fd.get(), contents, place);
    return place;
}

fs::path TemporaryFolder::sparse(const fs::path& relative, std::int64_t length) const {
    const fs::path place = placeFor(path_, relative);
    const Descriptor fd(create(place));
    if (::ftruncate(fd.get(), length) != 0) {
        fail(place);
    }
    return place;
}

fs::path TemporaryFolder::folder(const fs::path& relative) const {
    const fs::path place = placeFor(path_, relative);
    fs::create_directories(place);
    return place;
}

fs::path TemporaryFolder::link(const fs::path& target, const fs::path& relative) const {
    const fs::path place = placeFor(path_, relative);
    if (::symlink(target.c_str(), place.c_str()) != 0) {
        fail(place);
    }
    return place;
}

fs::path TemporaryFolder::hardLink(const fs::path& existing, const fs::path& relative) const {
    const fs::path place = placeFor(path_, relative);
    if (::link((path_ / existing).c_str(), place.c_str()) != 0) {
        fail(place);
    }
    return place;
}

fs::path TemporaryFolder::fifo(const fs::path& relative) const {
    const fs::path place = placeFor(path_, relative);
    if (::mkfifo(place.c_str(), 0644) != 0) {
        fail(place);
    }
    return place;
}

void TemporaryFolder::setModified(const fs::path& relative, std::chrono::system_clock::time_point time) const {
    using namespace std::chrono;
    const auto seconds = floor<std::chrono::seconds>(time);
    timespec times[2]{};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = seconds.time_since_epoch().count();
    times[1].tv_nsec = static_cast<long>(duration_cast<nanoseconds>(time - seconds).count());
    const fs::path place = path_ / relative;
    if (::utimensat(AT_FDCWD, place.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0) {
        fail(place);
    }
}

void TemporaryFolder::setMode(const fs::path& relative, unsigned mode) const {
    const fs::path place = path_ / relative;
    if (::chmod(place.c_str(), static_cast<mode_t>(mode)) != 0) {
        fail(place);
    }
}

std::int64_t allocatedBytes(const fs::path& path) {
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) {
        fail(path);
    }
    return std::int64_t{status.st_blocks} * 512;
}

bool takesName(const fs::path& folder, std::string_view name) {
    const fs::path place = folder / name;
    const Descriptor fd(::open(place.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644));
    if (fd.get() < 0) {
        if (errno != EILSEQ && errno != EINVAL) {
            fail(place);
        }
        return false;
    }
    return ::unlink(place.c_str()) == 0;
}

} // namespace vellmoor::test
