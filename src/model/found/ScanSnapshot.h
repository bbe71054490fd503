#pragma once

#include "found/CleanupItem.h"
#include "found/MemorySnapshot.h"
#include "found/Tint.h"
#include "found/Uuid.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// A ready-to-show line about one large file.
struct FileCandidate {
    Uuid id = Uuid::random();
    std::string name;
    std::string location;
    std::string size;     ///< byte-count text
    std::string modified; ///< relative date text
    std::string symbol;
    std::filesystem::path url;
};

/// One coloured part of the disk bar.
struct StorageSegment {
    Uuid id = Uuid::random();
    std::string label;
    std::string value;   ///< byte-count text
    double fraction = 0; ///< share of the disk, 0 to 1
    Tint color = Tint::gray;
};

/// One login item.
struct StartupItem {
    std::string id;
    std::string name;
    std::string label;
    std::string description;
    std::filesystem::path plistURL; ///< the configuration file, where it lies now
    std::optional<std::filesystem::path> appURL;
    std::optional<std::string> program;
    bool isEnabled = false;
    bool startsAtLogin = false;
};

/// Outcome of disabling or enabling a login item.
struct StartupActionResult {
    bool succeeded = false;
    std::string message;             ///< localised, shown to the user
    std::filesystem::path file = {}; ///< its configuration, where it lies then
};

/// One permission status line.
struct PermissionHint {
    Uuid id = Uuid::random();
    std::string title;
    std::string description;
    bool isGranted = false;
    std::string symbol;
    std::vector<CleanerModule> affectedModules;
    std::string recommendation;
};

/// Everything that one scan produces.
struct ScanSnapshot {
    std::vector<CleanupItem> cleanupItems;
    /// The large files after those that are listed, largest first.
    std::vector<CleanupItem> furtherLargeFiles;
    std::vector<FileCandidate> fileCandidates;
    std::vector<StorageSegment> storageSegments;
    std::string diskSummary;
    std::int64_t startupCount = 0;
    std::int64_t backgroundCount = 0;
    std::int64_t privacyCount = 0;
    MemorySnapshot memorySnapshot;
    std::vector<MemoryApp> memoryApps;
    std::vector<StartupItem> startupItems;
    std::vector<PermissionHint> permissionHints;
};

struct ScanProgressUpdate {
    std::string stage;   ///< localised
    double fraction = 0; ///< 0 to 1
};

/// Totals of a measured path.
struct PathStats {
    std::int64_t bytes = 0; ///< allocated
    std::int64_t files = 0;
    bool isAtLeast = false; ///< the walk was cut short: there may be more

    bool operator==(const PathStats&) const = default;
};

/// A measured path.
struct ScannedPath {
    std::filesystem::path url;
    std::int64_t bytes = 0; ///< allocated
    std::int64_t files = 0;
    std::optional<TimePoint> modified;
};

} // namespace vellmoor
