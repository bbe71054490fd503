#pragma once

#include "found/CleanupItem.h"
#include "found/MemorySnapshot.h"
#include "found/SharedPath.h"
#include "found/Uuid.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vellmoor {

/// What became of one target.
enum class CleanupFate : std::uint8_t {
    Trashed,  ///< lies in a Trash
    Removed,  ///< gone for good
    Vanished, ///< was gone before
    Kept,     ///< left in its place on purpose
    Failed,   ///< left in its place because the system refused
    Untried,  ///< the clean ended before its turn
};

/// With their raw values.
inline constexpr std::array<std::pair<CleanupFate, const char*>, 6> cleanupFates{{{CleanupFate::Trashed, "trashed"},
                                                                                  {CleanupFate::Removed, "removed"},
                                                                                  {CleanupFate::Vanished, "vanished"},
                                                                                  {CleanupFate::Kept, "kept"},
                                                                                  {CleanupFate::Failed, "failed"},
                                                                                  {CleanupFate::Untried, "untried"}}};
std::string_view rawValue(CleanupFate fate);

struct CleanupOutcome {
    SharedPath path;
    CleanupFate fate = CleanupFate::Untried;
    SharedPath place;       ///< where it lies in a Trash, if it does
    std::int64_t bytes = 0; ///< as the scan measured them
    std::optional<FileIdentity> identity;
    std::string reason; ///< localised; why it was kept or failed
};

/// The outcome of a clean or of a memory optimisation.
struct CleanupReport {
    Uuid id = Uuid::random();
    TimePoint completedAt;
    std::int64_t attemptedCount = 0;
    std::int64_t removedCount = 0;
    std::int64_t failedCount = 0;
    std::int64_t keptCount = 0;           ///< left in place on purpose, which is no failure
    std::int64_t untriedCount = 0;        ///< not touched, since the clean ended before
    bool wasStopped = false;              ///< by the user
    std::int64_t freedBytes = 0;          ///< an estimate, made before anything is removed
    std::int64_t processedBytes = 0;      ///< of what really moved to a Trash or went
    std::int64_t trashedCount = 0;        ///< what lies in a Trash now
    std::int64_t trashedBytes = 0;        ///< of it; still on the disk
    std::int64_t removedBytes = 0;        ///< of what went for good
    std::optional<std::int64_t> freedNow; ///< how much more room its disks have; nothing when they do not tell
    bool freedNowMayGrow = false;         ///< one of these disks frees what was removed only later
    std::string historyId;                ///< by which the history knows it; empty: it does not
    std::vector<std::string> failures;
    std::vector<std::string> notes;       ///< lines for what was kept, and what else is worth telling
    std::vector<CleanupOutcome> outcomes; ///< one for each attempted path, in order
    std::optional<MemorySnapshot> memoryBefore;
    std::optional<MemorySnapshot> memoryAfter;

    /// The one-line summary of what really happened, localised; its first number is the removed count.
    [[nodiscard]] std::string message() const;
};

/// How many failure lines a report has; its outcomes tell of all.
inline constexpr std::size_t mostFailureLines = 5;

/// A report's message with how much was left when the user stopped it.
std::string withStopped(std::string message, std::int64_t untriedCount);

} // namespace vellmoor
