// Scan results as a well-used home gives them, in the current language. For page tests and pictures.
#pragma once

#include "done/CleanupReport.h"
#include "done/History.h"
#include "done/RestoreReport.h"
#include "found/ScanSnapshot.h"

namespace vellmoor::sample {

/// What a scan of `module` finds; for Smart Scan everything.
ScanSnapshot snapshot(CleanerModule module);

/// One category of `targets` paths.
CleanupItem category(CleanerModule module, std::string title, CleanupRisk risk, int targets);

std::vector<PermissionHint> grantedHints();
/// The same places, two of them unreadable.
std::vector<PermissionHint> limitedHints();

/// An unfinished clean, then one of four items: three in the Trash, one gone; and a login item that was switched off.
History history();
/// Of two items one stayed in the Trash, since its name was taken.
RestoreReport restoreReport();

CleanupReport cleanReport();
CleanupReport partlyFailedReport();
CleanupReport memoryReport();
/// Nothing could be released.
CleanupReport failedMemoryReport();

/// A scan of `module` with the longest names, the largest sizes and ten thousand rows.
ScanSnapshot extremes(CleanerModule module);

} // namespace vellmoor::sample
