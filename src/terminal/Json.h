// The engine's records as JSON: the fields' own names, enumerations by raw value, paths absolute, dates as seconds
// since 1970 or null, tints by name.
#pragma once

#include "done/CleanupReport.h"
#include "done/History.h"
#include "done/RestoreReport.h"
#include "found/ScanSnapshot.h"

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace vellmoor::terminal {

using Json = nlohmann::ordered_json;

Json json(const CleanupItem& item);
Json json(const CleanupTarget& target);
Json json(const FileCandidate& candidate);
Json json(const MemoryApp& app);
Json json(const PermissionHint& hint);
Json json(const StorageSegment& segment);
Json json(const ScanSnapshot& snapshot);
Json json(const ScanProgressUpdate& update);
Json json(const ScannedPath& path);
/// With the field "message".
Json json(const CleanupOutcome& outcome);
Json json(const CleanupReport& report);
Json json(const StartupItem& item);
Json json(const StartupActionResult& result);

Json json(const HistoryItem& item);
Json json(const HistoryItems& items);
Json json(const HistoryClean& clean);
Json json(const HistorySwitch& change);
/// Without the field "problem": what could not be read is no history.
Json json(const History& history);
Json json(const RestoreOutcome& outcome);
Json json(const RestoreReport& report);

template <class Record>
Json json(const std::vector<Record>& records) {
    Json list = Json::array();
    for (const Record& record : records) {
        list.push_back(json(record));
    }
    return list;
}

/// Bytes of names that are not UTF-8 are shown as U+FFFD. `indent`: -1 for one line.
std::string text(const Json& value, int indent = 2);

} // namespace vellmoor::terminal
