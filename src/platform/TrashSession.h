// One clean's work with the Trash folders of a system: they are opened when it begins and used to its end.
#pragma once

#include "Platform.h"
#include "layouts/SystemLayout.h"

#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// Where a clean puts things and takes them from.
struct TrashPlaces {
    TrashFolder home;               ///< made when something moves there and it is missing
    std::vector<TrashFolder> known; ///< what may be emptied
    std::vector<VolumeTrashForm> volumeForms;
    /// Folders that the user may have moved elsewhere by a link: they are opened as they are, and below them no link
    /// is followed.
    std::vector<Path> anchors;
};

/// One path that is to go.
struct RemovalRequest {
    Path path; ///< absolute and standardised
    std::optional<FileIdentity> identity;
    Sameness sameness = Sameness::Content;
};

enum class RemovalResult : std::uint8_t {
    Done,
    Vanished,   ///< it is not there any more
    Changed,    ///< another file than the one asked for; it is in its place
    HoldsMount, ///< something is mounted there or below
    NoTrash,    ///< its disk has none and takes none
    DiskFull,   ///< no room for the restore note
    ReadOnly,   ///< the disk cannot be written any more
    Failed,
};

struct Removal {
    RemovalResult result = RemovalResult::Done;
    std::string reason; ///< the system's, where it gave one
    Path place;         ///< where a moved item lies now
    /// The item is gone, but its restore note could not be removed.
    bool noteRemains = false;
};

class TrashSession {
public:
    TrashSession() = default;
    TrashSession(const TrashSession&) = delete;
    TrashSession& operator=(const TrashSession&) = delete;
    virtual ~TrashSession() = default;

    /// Into the Trash of the item's own disk. Never a copy and never a deletion: whatever fails leaves the item where
    /// it was.
    [[nodiscard]] virtual Removal moveToTrash(const RemovalRequest& request) = 0;
    /// For good, with everything below; `trash` is one of the known ones and holds the path. What cannot be removed
    /// whole stays there with its note.
    [[nodiscard]] virtual Removal removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) = 0;
    /// What is written once at the end; nothing may follow.
    virtual void finish() = 0;
    /// Whether what moved is known to have a restore note.
    [[nodiscard]] virtual bool seesNotes() const { return true; }
};

} // namespace vellmoor
