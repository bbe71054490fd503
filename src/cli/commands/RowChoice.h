// Which rows of a scan a clean takes.
#pragma once

#include "call/Call.h"
#include "found/CleanupItem.h"

#include <expected>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace vellmoor::cli {

/// What is known of the rows beside themselves.
struct RowFacts {
    /// The rows' titles in the language that is not current, by key; asked at most once.
    std::function<std::map<std::string, std::string>()> otherTitles;
    /// Whether a clean of the row is no move to the Trash.
    std::function<bool(const CleanupItem&)> goesForGood;
};

struct ChosenRows {
    std::vector<CleanupItem> rows; ///< those with a ticked path
    bool leftForGood = false;      ///< preselected rows were left out because they go for good
    bool leftMemory = false;       ///< likewise the memory
};

/// The preselected safe rows, unless the call wants none of them, and those that it names. An error is a localised line
/// about a row that it names and cannot have.
std::expected<ChosenRows, std::string> chooseRows(const Call& call, std::vector<CleanupItem> rows,
                                                  const RowFacts& facts);

} // namespace vellmoor::cli
