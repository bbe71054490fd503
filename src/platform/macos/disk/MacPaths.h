// Paths as macOS compares them.
#pragma once

#include "Platform.h"

#include <functional>
#include <optional>

namespace vellmoor::mac {

/// "//", "." and a slash at the end dropped, ".." followed through the file system, and "/private" dropped from
/// "/private/tmp/x" and its like when the rest exists. Other links stay.
Path standardized(const Path& path);
/// The same for a system where `exists` says what does.
Path standardized(const Path& path, const std::function<bool(const Path&)>& exists);

/// All links resolved; nothing is fetched from a cloud.
std::optional<Path> realPath(const Path& path);

/// Whether `path` itself lies below `folder`, whatever links lead to either.
bool reallyLiesIn(const Path& path, const Path& folder);

} // namespace vellmoor::mac
