// What was done in the past and what of it can be taken back, as it is shown.
#pragma once

#include "done/HistoryItems.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

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
    HistoryItems items;
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
