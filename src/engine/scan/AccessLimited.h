#pragma once

#include "Platform.h"
#include "found/CleanupItem.h"

#include <optional>
#include <string>

namespace vellmoor {

/// The folder because of which what is at `path` cannot be read: itself, or the closed one above it. Nothing when
/// nothing is there, or when it can be read.
std::optional<Path> closedFolder(const Platform& platform, const Path& path);

/// The row of `folder`, which exists but cannot be read: shown, never cleaned. The texts are localised; `title` is that
/// of the row which the folder would have.
CleanupItem accessLimitedRow(CleanerModule module, const std::string& title, std::string description,
                             const Path& folder);

} // namespace vellmoor
