// What was done in the past and what of it can be taken back, as it is shown.
#pragma once

#include "done/CleanupReport.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

/// One target of a clean of the past. Its paths are texts: of tens of thousands each part of a std::filesystem::path
/// would take memory of its own.
struct HistoryItem {
    std::size_t index = 0; ///< by which it is asked for
    std::string path;      ///< where it was
    std::string title;     ///< of its row, as it was shown
    std::int64_t bytes = 0;
    CleanupFate fate = CleanupFate::Untried;
    std::string place; ///< where it lies in a Trash now; empty: nowhere
    bool isPutBack = false;
    std::string reason; ///< localised then; why it was kept or failed

    bool operator==(const HistoryItem&) const = default;
};

enum class HistoryState : std::uint8_t {
    Finished,
    CutOff,          ///< the program or the machine ended in the middle of it
    LeftoversStayed, ///< an application went, what it leaves behind did not
};

struct HistoryClean {
    std::string id;
    TimePoint at;
    CleanerModule module = CleanerModule::smartScan;
    HistoryState state = HistoryState::Finished;
    std::vector<HistoryItem> items;
    std::int64_t movedCount = 0; ///< into a Trash or for good
    std::int64_t movedBytes = 0;
    std::int64_t trashedCount = 0; ///< still in a Trash
    std::int64_t trashedBytes = 0;
    std::int64_t openCount = 0; ///< what finishing it would take
    std::int64_t openBytes = 0;

    bool operator==(const HistoryClean&) const = default;
};

/// A login item that was switched off or on.
struct HistorySwitch {
    TimePoint at;
    std::string name;
    std::filesystem::path file; ///< its configuration, where it lies since
    bool isEnabled = false;     ///< what it became
    bool canBePutBack = false;  ///< it still is so

    bool operator==(const HistorySwitch&) const = default;
};

struct History {
    std::vector<HistoryClean> cleans;    ///< what is not finished first, then newest first
    std::vector<HistorySwitch> switches; ///< newest first
    std::string problem;                 ///< why it cannot be read; empty: it was read

    bool operator==(const History&) const = default;
};

} // namespace vellmoor
