// The last guard before anything is moved to a Trash. It knows no table: whatever a rule names by mistake, these
// paths are never touched.
#pragma once

#include "Platform.h"
#include "SystemLayout.h"

#include <optional>
#include <string>

namespace vellmoor {

/// Why `path` must never be removed; nothing when it may be. Refused are: a relative or empty path, "/", the home
/// folder, the layout's protected paths, every folder above one of these, and every mount point; each in the form
/// given, in its standardised form and with its links resolved.
std::optional<std::string> refusalReason(const Platform& platform, const SystemLayout& layout, const Path& path);

} // namespace vellmoor
