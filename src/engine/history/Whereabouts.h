#pragma once

#include "history/Journal.h"
#include "scan/EngineContext.h"
#include "trash/Trash.h"

#include <expected>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// An item is known again by its identity. Within one run of the system that is device, inode and kind. Later, device
// numbers mean nothing: then the file system's UUID, the place in the Trash, its note, the kind, the inode where the
// disk keeps it, and of a plain file its size and time have to agree. A disk may be mounted elsewhere by then, and the
// home folder may have moved: paths of the past are read with that in mind.

namespace vellmoor {

/// Where the items of past cleans are now.
class Whereabouts {
public:
    explicit Whereabouts(EngineContext& context);

    /// An item that lies in a Trash.
    struct Trashed {
        Path place;
        TrashFolder trash;
        FileIdentity identity;    ///< as it is now
        bool isUnchanged = false; ///< a plain file has the size and time that it had; an inode may have been used again
    };
    enum class Absence : std::uint8_t {
        Gone,
        Hidden, ///< its disk is not there, or its Trash cannot be read
    };
    /// The item in its Trash. One whose clean was cut off before it could say what became of it is looked for.
    std::expected<Trashed, Absence> find(const PastClean& clean, const PastTarget& target);

    /// The file that was to go, if it is in its place and still the same: as a clean would compare it now.
    std::optional<FileIdentity> inPlace(const PastClean& clean, const PastTarget& target);
    /// Where it was, by the paths of today.
    Path origin(const PastClean& clean, const PastTarget& target);

private:
    struct Entry {
        Path place;
        const TrashFolder* trash = nullptr;
        FileIdentity identity;
    };

    [[nodiscard]] Path today(const PastClean& clean, const PastTarget& target, const Path& path);
    [[nodiscard]] const TrashFolder* trashAt(const Path& contents) const;
    [[nodiscard]] Trashed trashed(const PastTarget& target, const Entry& found);
    [[nodiscard]] bool isIts(const PastClean& clean, const PastTarget& target, const Entry& found);
    [[nodiscard]] bool isKnownAgain(const PastClean& clean, const PastTarget& target, const Entry& found);
    [[nodiscard]] bool isNotedAs(const PastClean& clean, const PastTarget& target, const Entry& found);
    std::expected<Trashed, Absence> search(const PastClean& clean, const PastTarget& target);
    const std::multimap<std::uint64_t, Entry>& trashedByInode();
    const Disk& diskOf(const Path& folder);

    EngineContext& context_;
    const Platform& platform_;
    std::string run_;
    std::vector<TrashFolder> trashes_;
    std::map<Path, Disk> disks_;         ///< by folder; a nameless one where the system does not tell
    std::map<std::string, Path> mounts_; ///< today's, by the name of the disk
    std::optional<std::multimap<std::uint64_t, Entry>> byInode_;
};

} // namespace vellmoor
