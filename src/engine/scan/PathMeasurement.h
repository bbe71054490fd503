// The measuring kit: how every scanner turns paths into sizes, dates, targets and rows.
#pragma once

#include "found/ScanSnapshot.h"
#include "scan/EngineContext.h"
#include "scan/Offers.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// The folders that were measured so far in this call, by standardised path.
struct Measurements {
    std::map<std::string, PathStats> byPath;
};

/// Allocated bytes and files of `path`, hidden entries left out; zero for what cannot be measured. A cancelled
/// measurement answers the part that was counted; one that the system cut short says so.
PathStats stats(EngineContext& context, const Path& path);

std::optional<TimePoint> modificationDate(const EngineContext& context, const Path& path);
/// "Unknown" for no date.
std::string relativeDate(const EngineContext& context, const std::optional<TimePoint>& date);
/// The home folder replaced by "~".
std::string displayPath(const SystemLayout& layout, const Path& path);
std::string symbolFor(const EngineContext& context, const Path& path);

/// One path as a target; measured when `known` is absent.
CleanupTarget target(EngineContext& context, const Path& path, const std::optional<PathStats>& known, bool selected,
                     Sameness sameness = Sameness::Content);

/// What is offered, measured. What is held back is never preselected.
CleanupTarget target(EngineContext& context, const Offer& offer, bool selected, Sameness sameness = Sameness::Content);

/// What a category is made of; texts are localised already.
struct CategorySpec {
    CleanerModule module = CleanerModule::smartScan;
    std::string key; ///< see CleanupItem::key
    std::string title;
    std::string description;
    std::vector<Path> roots;
    std::string symbol;
    Tint tint = Tint::gray;
    CleanupRisk risk = CleanupRisk::safe;
    bool cleanable = true;
    bool selected = false;
    Sameness sameness = Sameness::Content; ///< what a clean compares of its targets
    Splitting splitting = Splitting::Along;
};

/// The row of a category over those of its roots that exist and hold none of the user's own folders, beside what the
/// user keeps. Not cleanable: shown as previewOnly. Preselected only when asked for, cleanable and safe.
CleanupItem categoryItem(EngineContext& context, const CategorySpec& spec);

/// The direct children that are not hidden, in the system's order; none when the folder cannot be listed.
std::vector<Path> visibleChildren(const EngineContext& context, const Path& folder);

/// The paths that the patterns name on this disk, pattern after pattern, in listing order, not merged.
std::vector<Path> expandRoots(EngineContext& context, const std::vector<RootPattern>& patterns);

} // namespace vellmoor
