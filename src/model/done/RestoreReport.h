#pragma once

#include "found/CleanupItem.h"
#include "found/Uuid.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// What became of one item that was to go back from a Trash.
enum class RestoreFate : std::uint8_t {
    Restored,
    NameTaken, ///< something else has its name now; it stays in the Trash
    Changed,   ///< what lies there is not the item
    Vanished,  ///< it is in no Trash any more
    Failed,    ///< the system refused; it stays in the Trash
    Untried,   ///< the work was stopped before its turn
};

/// "restored", "nameTaken" and so on.
std::string_view rawValue(RestoreFate fate);

struct RestoreOutcome {
    std::filesystem::path path;  ///< where it was, or is again
    std::filesystem::path place; ///< in the Trash
    RestoreFate fate = RestoreFate::Untried;
    std::int64_t bytes = 0;
    std::string reason; ///< localised; why it stays
};

/// The outcome of putting things back.
struct RestoreReport {
    Uuid id = Uuid::random();
    TimePoint completedAt;
    std::int64_t attemptedCount = 0;
    std::int64_t restoredCount = 0;
    std::int64_t restoredBytes = 0;
    std::int64_t failedCount = 0; ///< what could not be put back
    std::int64_t untriedCount = 0;
    bool wasStopped = false;
    std::vector<std::string> failures; ///< the first five; `outcomes` has them all
    std::vector<RestoreOutcome> outcomes;
    /// One line, localised.
    [[nodiscard]] std::string message() const;
};

} // namespace vellmoor
