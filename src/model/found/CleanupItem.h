#pragma once

#include "found/CleanerModule.h"
#include "found/CleanupTarget.h"
#include "found/SharedTargets.h"
#include "found/Tint.h"
#include "found/Uuid.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// Extra facts on a row of the App Uninstaller.
struct AppCleanupInfo {
    std::optional<std::string> bundleIdentifier;
    std::string appPath;
    std::int64_t appBytes = 0;
    std::int64_t residualBytes = 0;
    std::int64_t residualCount = 0;
    bool isRunning = false;
};

/// One cleanable category: the row of every list.
struct CleanupItem {
    Uuid id = Uuid::random();
    CleanerModule module = CleanerModule::smartScan;
    /// By what the row is known in every language and in the next scan, e.g. "systemJunk/userCaches"; that of a file
    /// or of an application is its path, percent-encoded. Empty: a row that nobody can choose.
    std::string key;
    std::string title;
    std::string description;
    std::int64_t bytes = 0; ///< of all targets
    std::int64_t files = 0; ///< of all targets
    bool isAtLeast = false; ///< of one of the targets
    std::string symbol;
    Tint tint = Tint::gray;
    CleanupRisk risk = CleanupRisk::previewOnly;
    bool isCleanable = false; ///< false for rows shown for information, which a clean skips
    std::optional<AppCleanupInfo> appInfo;
    bool isSelected = false;
    SharedTargets targets;

    /// The bytes as they are shown, as "at least" so many when there may be more.
    [[nodiscard]] std::string sizeText() const;
    /// Bytes of the selected targets; 0 unless the row is cleanable and selected. Overflow is fatal.
    [[nodiscard]] std::int64_t selectedBytes() const;
    /// Files of the selected targets, at least one each; 0 unless the row is cleanable and selected.
    [[nodiscard]] std::int64_t selectedFiles() const;
    /// The targets whose isSelected is set, in order, whatever the row's own flags.
    [[nodiscard]] std::vector<CleanupTarget> selectedTargets() const;
    /// Ticks or unticks the row with every path of it that may go.
    void selectAll(bool selected);
    /// Bytes of the targets that may go; 0 unless the row is cleanable. Overflow is fatal.
    [[nodiscard]] std::int64_t cleanableBytes() const;
    /// How many targets have isSelected set, whatever the row's own flags.
    [[nodiscard]] int selectedTargetCount() const;
};

/// CleanupItem::key of a category, whose own name it is within its module.
std::string rowKey(CleanerModule module, std::string_view category);

enum class CleanupFilter : std::uint8_t { all, recommended, selected };

inline constexpr std::array allCleanupFilters{CleanupFilter::all, CleanupFilter::recommended, CleanupFilter::selected};

std::string_view rawValue(CleanupFilter filter);
/// Localised.
std::string title(CleanupFilter filter);
bool matches(CleanupFilter filter, const CleanupItem& item);
/// The rows as a Smart Scan lists them: without covered targets, and without rows that have nothing else.
std::vector<CleanupItem> countedOnce(std::vector<CleanupItem> items);
/// Whether `item` stands in the list of `module`: Smart Scan lists every item.
bool belongs(const CleanupItem& item, CleanerModule module);

} // namespace vellmoor
