// What the tests of the large files share.
#pragma once

#include "EngineHome.h"
#include "LargeFiles.h"

#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <vector>

namespace vellmoor::test {

inline constexpr std::int64_t largeFileThreshold = 262'144'000;
/// Far more than what a file system adds for its own bookkeeping of a file's blocks.
inline constexpr std::int64_t step = 1 << 20;

inline std::vector<ScannedPath> foundFiles(const EngineHome& home, std::size_t limit = 100) {
    ScanContext context = home.context();
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
    ScanContext context = home.context();
    return largeFileItems(context, selected);
}

/// A file that takes exactly so many bytes on the disk. The file system may count a block or two of its own.
inline Path fileTaking(const EngineHome& home, const Path& path, std::int64_t bytes) {
    constexpr std::int64_t block = 4096;
    for (std::int64_t length = bytes; length > bytes - 64 * block; length -= block) {
        const Path file = home.file(path, length);
        if (allocatedBytes(file) == bytes) {
            return file;
        }
    }
    throw std::runtime_error("no file of exactly the size wanted: " + path.string());
}

/// A second name for a large file: it counts again and costs nothing.
inline Path nameAgain(const EngineHome& home, const Path& existing, const Path& path) {
    const Path place = home.place(path);
    std::filesystem::create_directories(place.parent_path());
    std::filesystem::create_hard_link(existing, place);
    return place;
}

} // namespace vellmoor::test
