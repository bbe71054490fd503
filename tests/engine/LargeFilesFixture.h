// What the tests of the large files share.
#pragma once

#include "EngineHome.h"
#include "LargeFiles.h"

#include <filesystem>
#include <vector>

namespace vellmoor::test {

inline constexpr std::int64_t threshold = 262'144'000;
inline constexpr std::int64_t block = 4096;

inline std::vector<ScannedPath> found(const EngineHome& home, std::size_t limit = 100) {
    ScanContext context = home.context();
    return largeFiles(context, limit);
}

inline std::vector<Path> urls(const EngineHome& home) {
    std::vector<Path> all;
    for (const ScannedPath& file : found(home)) {
        all.push_back(file.url);
    }
    return all;
}

inline std::vector<CleanupItem> rows(const EngineHome& home, bool selected = false) {
    ScanContext context = home.context();
    return largeFileItems(context, selected);
}

/// A second name for a large file: it counts again and costs nothing.
inline Path again(const EngineHome& home, const Path& existing, const Path& path) {
    const Path place = home.place(path);
    std::filesystem::create_directories(place.parent_path());
    std::filesystem::create_hard_link(existing, place);
    return place;
}

} // namespace vellmoor::test
