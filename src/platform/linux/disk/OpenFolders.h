// Folders and files by descriptor and single names: a path could lead elsewhere by the time it is used.
#pragma once

#include "Platform.h"
#include "disk/Descriptor.h"

#include <cstdint>
#include <expected>
#include <map>
#include <optional>
#include <sys/types.h>
#include <vector>

namespace vellmoor {

/// What is at a name, asked without touching a mount.
struct EntryFacts {
    FileIdentity identity;
    mode_t mode = 0;
    uid_t owner = 0;
    bool isMountRoot = false; ///< never told before Linux 5.8
};

/// Facts of `name` in the open `folder`, of the folder itself when the name is empty; the errno.
std::expected<EntryFacts, int> factsAt(int folder, const char* name);

/// Opens a folder by its name, no link (ELOOP); for use as a place only (O_PATH).
std::expected<Descriptor, int> openFolder(int above, const char* name);
/// The same for a relative path, name by name.
std::expected<Descriptor, int> openFolderBelow(int above, const Path& relative);
/// The same folder once more, with rights to list and to wait for the disk.
std::expected<Descriptor, int> reopenForReading(int folder);
/// Makes the folder when it is missing, and opens it.
std::expected<Descriptor, int> makeFolder(int above, const char* name);

/// The same for a relative path, name by name; what is made is for the user alone.
std::expected<Descriptor, int> makeFolderBelow(int above, const Path& relative);

/// The path by which this process sees the open folder; nothing when the system does not tell.
std::optional<Path> pathOf(int folder);

/// Whether an errno says that nothing is there. Every other one says that it cannot be seen.
bool meansGone(int error);

/// Gives the owner all rights on a folder of the user's. The mode it had; nothing when nothing was changed.
std::optional<mode_t> makeAccessible(int folder);
/// Through /proc, since descriptors that are places only cannot be changed directly.
bool setMode(int folder, mode_t mode);

/// The folders that hold a clean's targets.
class Parents {
public:
    explicit Parents(std::vector<Path> anchors);

    struct Parent {
        Descriptor folder;
        Path real; ///< links resolved
        std::uint64_t device = 0;
    };
    /// The folder above `path`: from the nearest anchor on without following a link.
    std::expected<const Parent*, int> of(const Path& path);
    /// `folder` itself, in the same way.
    std::expected<Descriptor, int> open(const Path& folder);

private:
    std::vector<Path> anchors_;
    std::map<Path, Descriptor> opened_; ///< the anchors
    Path last_;
    Parent parent_;
};

} // namespace vellmoor
