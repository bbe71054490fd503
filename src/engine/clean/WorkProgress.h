#pragma once

#include "done/CleanProgress.h"

#include <chrono>
#include <optional>

namespace vellmoor {

/// Tells how far a piece of work has come, often enough to be followed and seldom enough to cost nothing.
class WorkProgress {
public:
    WorkProgress(const CleanProgressCallback& tell, std::int64_t totalCount, std::int64_t totalBytes);

    /// A target's turn.
    void begin(const std::filesystem::path& current);
    /// It is over with.
    void done(std::int64_t bytes);
    void end();

private:
    const CleanProgressCallback& tell_;
    CleanProgress progress_;
    std::optional<std::chrono::steady_clock::time_point> told_;
};

} // namespace vellmoor
