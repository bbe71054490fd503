// Mounted volumes and their room, by Foundation. Platform.h says what each one answers.
#pragma once

#include "Platform.h"

#include <optional>
#include <vector>

namespace vellmoor::mac {

/// Without the system's hidden ones; "/" comes first.
std::vector<Volume> mountedVolumes();

/// Of the volume that holds `path`. Available is what macOS would free for something important; it asks another
/// process, so never on the main thread. 0 available on a volume that is not APFS is what the system says.
std::optional<Capacity> capacity(const Path& path);

} // namespace vellmoor::mac
