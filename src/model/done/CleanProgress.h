#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>

namespace vellmoor {

/// How far a clean, or the way back of one, has come.
struct CleanProgress {
    std::int64_t doneCount = 0; ///< targets
    std::int64_t totalCount = 0;
    std::int64_t doneBytes = 0;
    std::int64_t totalBytes = 0;
    std::filesystem::path current; ///< at hand; empty when all is done

    bool operator==(const CleanProgress&) const = default;
};

/// Called on the thread of the work: for the first target, some twenty times a second, and at the end.
using CleanProgressCallback = std::function<void(const CleanProgress&)>;

} // namespace vellmoor
