#pragma once

#include "FileIdentity.h"
#include "found/SharedPath.h"
#include "found/Uuid.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace vellmoor {

using TimePoint = std::chrono::system_clock::time_point;

/// One path inside a category.
struct CleanupTarget {
    Uuid id = Uuid::random();
    SharedPath url;
    std::string name;     ///< last path component
    std::string location; ///< parent folder in display form
    std::int64_t bytes = 0;
    std::int64_t files = 0;
    std::string modified; ///< relative modification text
    std::optional<TimePoint> modifiedAt;
    std::string symbol;
    bool isAtLeast = false; ///< bytes and files may be more: the measurement was cut short
    bool isSelected = false;
    bool isFromClean = false;              ///< a clean that can be taken back put it into the Trash where it lies
    Sameness sameness = Sameness::Content; ///< how much of it a clean compares
    /// The file that the scan saw; nothing where no file is meant or none could be asked.
    std::optional<FileIdentity> identity;
    /// A Smart Scan counts each path once: this one equals or lies below a target of another row, or it holds some,
    /// whose part of its figures this is. See countedOnce().
    bool isCovered = false;
    std::int64_t coveredBytes = 0;
    std::int64_t coveredFiles = 0;
    /// Of what lies in a Trash: where it was, if that is known.
    std::optional<SharedPath> origin = {};
    /// Localised: why this path stays whatever is ticked, since it holds what the user keeps and can only go as a
    /// whole. Its tick is disabled; empty: it may go.
    std::string heldBack;

    [[nodiscard]] bool mayGo() const { return heldBack.empty(); }
    /// The bytes as they are shown, as "at least" so many when there may be more.
    [[nodiscard]] std::string sizeText() const;
};

} // namespace vellmoor
