#pragma once

#include "ScanContext.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

std::vector<CleanupItem> applicationItems(ScanContext& context);

/// Applications that are never offered for removal.
bool isProtectedSystemAppPath(const ScanContext& context, const Path& path);
/// The first application of that identifier in the application folders.
std::optional<Path> appLookupByBundleID(ScanContext& context, std::string_view identifier);
std::string appDisplayName(const ScanContext& context, const Path& app);
/// The last piece of a dotted identifier, with dashes and underscores as spaces.
std::string friendlyName(std::string_view identifier, std::string_view fallback);

} // namespace vellmoor
