// What the tests of the large files share.
#pragma once

#include "EngineHome.h"
#include "files/LargeFiles.h"
#include "found/ScanSnapshot.h"

#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <unistd.h>
#include <vector>

namespace vellmoor::test {

inline constexpr std::int64_t largeFileThreshold = 262'144'000;
/// Far more than what a file system adds for its own bookkeeping of a file's blocks.
inline constexpr std::int64_t step = 1 << 20;

inline std::vector<ScannedPath> foundFiles(const EngineHome& home, std::size_t limit = 100) {
    EngineContext context = home.context();
    return largeFiles(context, limit);
}

inline std::vector<Path> foundUrls(const EngineHome& home) {
    std::vector<Path> all;
    for (const ScannedPath& file : foundFiles(home)) {
        all.push_back(file.url);
    }
    return all;
}

inline std::vector<CleanupItem> fileRows(const EngineHome& home, bool selected = false) {
    EngineContext context = home.context();
    return largeFileItems(context, selected);
}

/// A file that takes exactly so many bytes on the disk. The file system counts a block or two of its own, more when
/// its free space lies in pieces, so the file is made a little too short and then fitted block by block.
inline Path fileTaking(const EngineHome& home, const Path& path, std::int64_t bytes) {
    constexpr std::int64_t block = 4096;
    Path file = home.file(path, bytes - step);
    const int fd = ::open(file.c_str(), O_WRONLY | O_CLOEXEC);
    std::int64_t length = bytes - step;
    bool fits = fd >= 0;
    while (fits && allocatedBytes(file) < bytes) {
        fits = ::posix_fallocate(fd, length, block) == 0;
        length += block;
    }
    while (fits && allocatedBytes(file) > bytes) {
        length -= block;
        fits = ::ftruncate(fd, length) == 0;
    }
    ::close(fd);
    if (!fits || allocatedBytes(file) != bytes) {
        throw std::runtime_error("no file of exactly the size wanted: " + file.string());
    }
    return file;
}

/// A second name for a large file: it counts again and costs nothing.
inline Path nameAgain(const EngineHome& home, const Path& existing, const Path& path) {
    const Path place = home.place(path);
    std::filesystem::create_directories(place.parent_path());
    std::filesystem::create_hard_link(existing, place);
    return place;
}

} // namespace vellmoor::test
