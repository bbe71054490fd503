#pragma once

#include "history/Journal.h"
#include "plan/CleanPlan.h"
#include "scan/EngineContext.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// What the history learns of a running clean. A journal that cannot be written stops no clean: what is not recorded
/// still has its restore note in the Trash.
class CleanRecord {
public:
    /// A clean of its own: all that it wants is on the disk afterwards.
    CleanRecord(EngineContext& context, const CleanPlan& plan);
    /// Part of an older clean, whose items go for good: `indices` are those of the plan's targets in it.
    CleanRecord(EngineContext& context, const std::string& clean, std::vector<std::size_t> indices);

    /// What became of the next target of the plan.
    void did(const CleanupOutcome& outcome);
    void end();

    /// Empty when the history has no such clean.
    [[nodiscard]] std::string id() const { return entry_ && !isOlder_ ? entry_->id() : std::string(); }
    /// Why something is missing from the history; the system's reason.
    [[nodiscard]] const std::optional<std::string>& problem() const { return problem_; }

private:
    void note(const Outcome& written);

    std::optional<JournalEntry> entry_;
    std::vector<std::size_t> indices_; ///< of an older clean
    std::size_t next_ = 0;
    bool isOlder_ = false;
    std::optional<std::string> problem_;
};

/// Whether the history speaks of the row: of files, not of memory.
bool isRecorded(const CleanPlan::Row& row);

} // namespace vellmoor
