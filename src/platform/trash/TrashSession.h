// One clean's work with the Trash folders of a system: they are opened when it begins and used to its end.
#pragma once

#include "CancelToken.h"
#include "Platform.h"
#include "layouts/SystemLayout.h"

#include <optional>
#include <set>
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
    /// Ends a removal between two entries once it is set; none: nothing does.
    const CancelToken* stop = nullptr;
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
    Stopped,    ///< what is left of it lies in the Trash, with its note
    Failed,
};

struct Removal {
    RemovalResult result = RemovalResult::Done;
    std::string reason; ///< the system's, where it gave one
    Path place;         ///< where a moved item lies now
    /// The item is gone, but its restore note could not be removed.
    bool noteRemains = false;
    /// What moved, as it was seen at its new place.
    std::optional<FileIdentity> moved = {};
};

/// One item that is to go back from a Trash to where it was.
struct ReturnRequest {
    Path place;            ///< directly in the contents of a known Trash
    FileIdentity identity; ///< of what lies there
    Path path;             ///< absolute and standardised
    /// Permission bits of the folders above, the nearest first, for those that are missing. Beyond them a new folder
    /// gets what the system gives it.
    std::vector<std::uint32_t> parentModes;
};

enum class ReturnResult : std::uint8_t {
    Done,
    Vanished,  ///< nothing lies there any more
    Changed,   ///< something else lies there
    NameTaken, ///< something is at the item's own place
    Failed,
};

struct Return {
    ReturnResult result = ReturnResult::Done;
    std::string reason; ///< the system's, where it gave one
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
    /// Back to its place, without replacing anything; folders that are missing above it are made. Its note goes.
    /// Whatever fails leaves it in the Trash with its note, and makes no folder.
    [[nodiscard]] virtual Return putBack(const ReturnRequest& request, const TrashFolder& trash) = 0;
    /// Removes restore notes of known Trash folders that have no item and name one of these places: a clean was cut
    /// off after the note was written, and the item never came.
    virtual void forgetNotes(const std::set<Path>& places) = 0;
    /// What is written once at the end; nothing may follow.
    virtual void finish() = 0;
    /// Whether what moved is known to have a restore note.
    [[nodiscard]] virtual bool seesNotes() const { return true; }
};

} // namespace vellmoor
