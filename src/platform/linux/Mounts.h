#pragma once

#include "Platform.h"

#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::mounts {

/// What decides whether a mount may hold a Trash.
struct Mount {
    Path path;
    std::string fileSystem; ///< its type, such as "ext4"
    std::string options;    ///< comma-separated
    bool isReadOnly = false;
    bool isSystemInternal = false; ///< in GLib's sense
};

/// The rule by which GIO chooses, less every file system behind which a server or program may be dead and block.
bool mayHoldTrash(const Mount& mount);

/// All mounts, in the system's order.
std::vector<Mount> list();
std::vector<Volume> volumesWithTrash(const std::vector<Mount>& all);

/// Whether something is mounted at `path`, the links above it resolved. When the system does not tell, yes.
bool isMountPoint(const Path& path);

/// Whether the text of /proc/self/mountinfo names `path` as a mount point.
bool isMountedAt(std::string_view mountinfo, const Path& path);

} // namespace vellmoor::mounts
