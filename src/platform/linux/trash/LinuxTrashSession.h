#pragma once

#include "disk/Mounts.h"
#include "disk/OpenFolders.h"
#include "trash/TrashDirectory.h"
#include "trash/TrashSession.h"

#include <expected>
#include <map>
#include <memory>

namespace vellmoor {

/// Where the home's Trash is or is made, opened before anything else of a clean: a link on the way to it is the user's
/// own when it is there by then, and none that comes later is followed.
class HomeTrashPlace {
public:
    explicit HomeTrashPlace(const Path& folder);
    /// The Trash, which belongs to the user; else the errno.
    [[nodiscard]] std::expected<Descriptor, int> open() const;
    /// The same, made when it is missing.
    [[nodiscard]] std::expected<Descriptor, int> make() const;
    /// On which it lies or would be made; 0 when the system does not tell.
    [[nodiscard]] std::uint64_t device() const;

private:
    std::expected<Descriptor, int> above_;
    Path below_;
};

/// Moves into a Trash and removes out of it by own code, after the Trash specification 1.0: the restore note stands
/// before the item moves, the item is compared after it moved, and a stranger goes back.
class LinuxTrashSession : public TrashSession {
public:
    explicit LinuxTrashSession(TrashPlaces places);

    [[nodiscard]] Removal moveToTrash(const RemovalRequest& request) override;
    [[nodiscard]] Removal removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) override;
    [[nodiscard]] Return putBack(const ReturnRequest& request, const TrashFolder& trash) override;
    void forgetNotes(const std::set<Path>& places) override;
    void finish() override;

private:
    HomeTrashPlace homePlace_; // the first of what is opened

protected:
    /// What speaks against acting on the item, as it is seen now: the facts, or the answer.
    std::expected<EntryFacts, Removal> inspect(const RemovalRequest& request, int folder, const Path& real);
    Parents parents_;

private:
    /// A Trash, or why there is none: an errno, 0 for a disk that takes none.
    using Found = std::expected<TrashDirectory*, int>;
    Found trashFor(const Parents::Parent& parent, Path& base);
    /// Whether a folder lies in that Trash, or in another one of its disk, which is mounted at `base`.
    [[nodiscard]] bool isInTrash(const Path& real, const TrashDirectory& trash, const Path& base) const;
    Found homeTrash();
    Found volumeTrash(const Path& mount, std::uint64_t device);
    static std::expected<Descriptor, int> makeVolumeTrash(int mount, const VolumeTrashForm& form);
    Removal move(const RemovalRequest& request);
    Removal remove(const RemovalRequest& request, const TrashFolder& trash);
    Removal moveInto(TrashDirectory& trash, const Path& base, const Parents::Parent& parent,
                     const RemovalRequest& request, const EntryFacts& seen);
    Removal takeOut(TrashDirectory& trash, int folder, const RemovalRequest& request, const EntryFacts& seen);

    TrashPlaces places_;
    MountTable mounts_;
    std::map<Path, std::unique_ptr<TrashDirectory>> known_; ///< by the Trash folder's path
    std::map<Path, Found> volumes_;                         ///< by the mount's path
    std::optional<Found> home_;
    std::uint64_t homeDevice_ = 0; ///< of the home's Trash, or of the place where it would be made
};

} // namespace vellmoor
