#pragma once

#include "scan/EngineContext.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// One row per removable application, largest first, never preselected; where a package manager owns further
/// applications, a last row that says so. Throws ScanCancelled.
std::vector<CleanupItem> applicationItems(EngineContext& context);

/// Whether the application of a row of applicationItems() runs at this moment; asked afresh at each call. False for
/// other rows.
bool applicationRuns(EngineContext& context, const CleanupItem& row);

/// Whether `path` is the folder of a Flatpak in a user installation. Moving it would break the installation's
/// repository: a clean removes it by uninstallFlatpak() in place of the Trash.
bool isFlatpakBody(const EngineContext& context, const Path& path);
/// The program that uninstalls Flatpaks; nothing when it is not installed.
std::optional<Path> flatpakTool(const EngineContext& context);
/// Has Flatpak uninstall every version below `body`, for good; what it printed when it failed.
Outcome uninstallFlatpak(const EngineContext& context, const Path& body);

} // namespace vellmoor
