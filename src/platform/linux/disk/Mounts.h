#pragma once

#include "Platform.h"
#include "disk/Descriptor.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::mounts {

/// What decides whether a mount may hold a Trash.
struct Mount {
    Path path;
    std::string fileSystem; ///< its type, such as "ext4"
    std::string options;    ///< comma-separated
    std::string device;     ///< what is mounted, such as "/dev/sda1"
    std::string root;       ///< the folder of the file system that is seen here; "/" for all of it
    bool isReadOnly = false;
    bool isSystemInternal = false; ///< in GLib's sense
};

/// The rule by which GIO chooses, less every file system behind which a server or program may be dead and block.
bool mayHoldTrash(const Mount& mount);

/// All mounts, in the system's order.
std::vector<Mount> list();
std::vector<Volume> volumesWithTrash(const std::vector<Mount>& all);

/// The disk below `path`, with its UUID as udev tells it.
std::optional<Disk> diskOf(const Path& path);

/// Whether something is mounted at `real`, a path without links above it. When the system does not tell, yes.
bool isMountPoint(const Path& real);

} // namespace vellmoor::mounts

namespace vellmoor {

/// Where something is mounted, in paths without links: read once, and again only when the system reports a change.
class MountTable {
public:
    /// Whether something is mounted at `real` or below it. When the system does not tell, yes.
    [[nodiscard]] bool holdsMount(const Path& real);
    [[nodiscard]] bool isMountPoint(const Path& real);
    /// The mount that `real` lies on; nothing when the system does not tell.
    [[nodiscard]] std::optional<Path> mountOf(const Path& real);

private:
    bool open();
    bool refresh(); ///< whether the places are known

    Descriptor file_;
    std::optional<Path> namespace_;
    std::set<std::string> places_;
};

} // namespace vellmoor
