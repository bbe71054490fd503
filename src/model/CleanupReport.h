#pragma once

#include "CleanupItem.h"
#include "MemorySnapshot.h"
#include "Uuid.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// The outcome of a clean or of a memory optimisation.
struct CleanupReport {
    Uuid id = Uuid::random();
    TimePoint completedAt;
    std::int64_t attemptedCount = 0;
    std::int64_t removedCount = 0;
    std::int64_t failedCount = 0;
    std::int64_t freedBytes = 0; ///< an estimate, made before anything is removed
    std::vector<std::string> failures;
    std::optional<MemorySnapshot> memoryBefore;
    std::optional<MemorySnapshot> memoryAfter;

    /// The one-line summary, localised; its first number is the removed count.
    [[nodiscard]] std::string message() const;
};

} // namespace vellmoor
