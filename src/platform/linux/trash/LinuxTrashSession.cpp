#include "trash/LinuxTrashSession.h"

#include "disk/Files.h"
#include "disk/Paths.h"
#include "disk/Rename.h"
#include "trash/TrashNotes.h"
#include "trash/TreeRemoval.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace vellmoor {
namespace {

Removal failure(int error) {
    switch (error) {
    case ENOSPC:
    case EDQUOT:
        return {.result = RemovalResult::DiskFull, .reason = files::reason(error), .place = {}};
    case EROFS:
        return {.result = RemovalResult::ReadOnly, .reason = files::reason(error), .place = {}};
    case ECANCELED:
        return {.result = RemovalResult::Stopped, .reason = "", .place = {}};
    default:
        return {.result = meansGone(error) ? RemovalResult::Vanished : RemovalResult::Failed,
                .reason = files::reason(error),
                .place = {}};
    }
}

Removal plain(RemovalResult result) {
    return {.result = result, .reason = "", .place = {}};
}

bool isAsShown(const RemovalRequest& request, const EntryFacts& found) {
    return !request.identity || isSame(*request.identity, found.identity, request.sameness);
}

bool isSameFile(const EntryFacts& one, const EntryFacts& other) {
    return one.identity.inode == other.identity.inode && one.identity.kind == other.identity.kind;
}

// "Not found" may be said of another place than the item: only a look tells whether it is gone.
Removal onlyIfGone(Removal removal, const Path& item) {
    if (removal.result == RemovalResult::Vanished && files::existsItself(item)) {
        removal.result = RemovalResult::Failed;
    }
    return removal;
}

// The nearest folder above a missing one; its disk is the one on which it would be made.
Path nearestExisting(Path folder) {
    while (folder != folder.parent_path() && !files::existsItself(folder)) {
        folder = folder.parent_path();
    }
    return folder;
}

// A Trash of the user's own: an open folder that belongs to somebody else is none.
std::expected<Descriptor, int> ownFolder(std::expected<Descriptor, int> folder) {
    const auto facts = folder ? factsAt(folder->get(), "") : std::unexpected(folder.error());
    if (facts && facts->owner != ::geteuid()) {
        return std::unexpected(EPERM);
    }
    return facts ? std::move(folder) : std::unexpected(facts.error());
}

std::expected<Descriptor, int> openAnchor(const Path& folder) {
    Descriptor opened(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
    return opened ? std::expected<Descriptor, int>(std::move(opened)) : std::unexpected(errno);
}

} // namespace

HomeTrashPlace::HomeTrashPlace(const Path& folder) {
    const Path existing = nearestExisting(folder);
    above_ = openAnchor(existing);
    below_ = folder.lexically_relative(existing);
}

std::expected<Descriptor, int> HomeTrashPlace::open() const {
    return above_ ? ownFolder(openFolderBelow(above_->get(), below_)) : std::unexpected(above_.error());
}

std::expected<Descriptor, int> HomeTrashPlace::make() const {
    return above_ ? ownFolder(makeFolderBelow(above_->get(), below_)) : std::unexpected(above_.error());
}

std::uint64_t HomeTrashPlace::device() const {
    const auto facts = above_ ? factsAt(above_->get(), "") : std::unexpected(above_.error());
    return facts ? facts->identity.device : 0;
}

LinuxTrashSession::LinuxTrashSession(TrashPlaces places)
    : homePlace_(places.home.folder),
      parents_(places.anchors),
      places_(std::move(places)) {
    for (const TrashFolder& folder : places_.known) {
        auto anchor = openAnchor(folder.anchor);
        auto opened = folder.folder == places_.home.folder ? homePlace_.open()
                      : anchor
                          ? ownFolder(openFolderBelow(anchor->get(), folder.folder.lexically_relative(folder.anchor)))
                          : std::unexpected(anchor.error());
        if (!opened) {
            continue; // it is asked for again, and the reason told, when something is to be done with it
        }
        auto trash = std::make_unique<TrashDirectory>(std::move(*opened), folder);
        if (trash->open() == 0) {
            trash->recover();
        }
        known_.emplace(folder.folder, std::move(trash));
    }
}

std::expected<EntryFacts, Removal> LinuxTrashSession::inspect(const RemovalRequest& request, int folder,
                                                              const Path& real) {
    const Path name = request.path.filename();
    const auto seen = factsAt(folder, name.c_str());
    if (!seen) {
        return std::unexpected(failure(seen.error()));
    }
    if (!isAsShown(request, *seen)) {
        return std::unexpected(plain(RemovalResult::Changed));
    }
    if (seen->isMountRoot || mounts_.holdsMount(real / name)) {
        return std::unexpected(plain(RemovalResult::HoldsMount));
    }
    return *seen;
}

// Into a Trash

Removal LinuxTrashSession::moveToTrash(const RemovalRequest& request) {
    return onlyIfGone(move(request), request.path);
}

Removal LinuxTrashSession::move(const RemovalRequest& request) {
    const auto parent = parents_.of(request.path);
    if (!parent) {
        return failure(parent.error());
    }
    const auto seen = inspect(request, (*parent)->folder.get(), (*parent)->real);
    if (!seen) {
        return seen.error();
    }
    Path base;
    const Found trash = trashFor(**parent, base);
    if (!trash) {
        // A Trash that is missing does not mean that the item is.
        return trash.error() == 0 || meansGone(trash.error()) ? plain(RemovalResult::NoTrash) : failure(trash.error());
    }
    // It was shown as something that goes for good, but its Trash could not be seen when the clean began.
    if (isInTrash((*parent)->real, **trash, base)) {
        return failure(EAGAIN);
    }
    return moveInto(**trash, base, **parent, request, *seen);
}

bool LinuxTrashSession::isInTrash(const Path& real, const TrashDirectory& trash, const Path& base) const {
    const auto contents = pathOf(trash.files());
    return (contents && isAtOrBelow(real, contents->parent_path())) ||
           (!base.empty() && std::ranges::any_of(places_.volumeForms, [&](const VolumeTrashForm& form) {
               return isAtOrBelow(real, base / form.folder);
           }));
}

LinuxTrashSession::Found LinuxTrashSession::trashFor(const Parents::Parent& parent, Path& base) {
    if (homeDevice_ == 0) {
        homeDevice_ = homePlace_.device();
        if (const auto opened = known_.find(places_.home.folder); opened != known_.end() && opened->second->device()) {
            homeDevice_ = opened->second->device();
        }
    }
    if (parent.device == homeDevice_) {
        if (!home_) {
            home_ = homeTrash();
        }
        return *home_;
    }
    const auto mount = mounts_.mountOf(parent.real);
    if (!mount) {
        return std::unexpected(0);
    }
    base = *mount;
    const auto known = volumes_.find(*mount);
    return known != volumes_.end() ? known->second
                                   : volumes_.emplace(*mount, volumeTrash(*mount, parent.device)).first->second;
}

LinuxTrashSession::Found LinuxTrashSession::homeTrash() {
    auto known = known_.find(places_.home.folder);
    if (known == known_.end()) {
        auto opened = homePlace_.make();
        if (!opened) {
            return std::unexpected(opened.error());
        }
        known = known_.emplace(places_.home.folder, std::make_unique<TrashDirectory>(std::move(*opened), places_.home))
                    .first;
    }
    const int error = known->second->make();
    return error == 0 ? Found(known->second.get()) : std::unexpected(error);
}

LinuxTrashSession::Found LinuxTrashSession::volumeTrash(const Path& mount, std::uint64_t device) {
    const auto isThis = [&](const mounts::Mount& one) { return one.path == mount && mounts::mayHoldTrash(one); };
    if (std::ranges::none_of(mounts::list(), isThis)) {
        return std::unexpected(0);
    }
    const auto anchor = openAnchor(mount);
    const auto facts = anchor ? factsAt(anchor->get(), "") : std::unexpected(anchor.error());
    if (!facts || facts->identity.device != device) {
        return std::unexpected(0);
    }
    int error = 0;
    for (const VolumeTrashForm& form : places_.volumeForms) {
        const Path folder = mount / form.folder;
        auto& known = known_[folder];
        if (!known) {
            auto made = makeVolumeTrash(anchor->get(), form);
            if (!made) {
                // No room is worth telling; a form that this disk does not take is not.
                error = made.error() == ENOSPC || made.error() == EDQUOT ? made.error() : error;
                known_.erase(folder);
                continue;
            }
            known = std::make_unique<TrashDirectory>(
                std::move(*made), TrashFolder{.folder = folder, .contents = folder / "files", .anchor = mount});
        }
        if (known->make() == 0) {
            return known.get();
        }
    }
    return std::unexpected(error);
}

std::expected<Descriptor, int> LinuxTrashSession::makeVolumeTrash(int mount, const VolumeTrashForm& form) {
    auto above = openFolderBelow(mount, form.folder.parent_path());
    if (!above) {
        return above;
    }
    if (form.needsStickyParent) {
        const auto facts = factsAt(above->get(), "");
        if (!facts || (facts->mode & S_ISVTX) == 0) {
            return std::unexpected(EPERM);
        }
    }
    return ownFolder(makeFolder(above->get(), form.folder.filename().c_str()));
}

Removal LinuxTrashSession::moveInto(TrashDirectory& trash, const Path& base, const Parents::Parent& parent,
                                    const RemovalRequest& request, const EntryFacts& seen) {
    const std::string item = request.path.filename().string();
    const Path place = parent.real / item;
    const std::string note = trashNote(base.empty() ? place : place.lexically_relative(base), std::time(nullptr));
    for (;;) {
        const auto name = trash.writeNote(item, note);
        if (!name) {
            return meansGone(name.error()) ? plain(RemovalResult::NoTrash) : failure(name.error());
        }
        const int error = renameWithoutReplacing(parent.folder.get(), item.c_str(), trash.files(), name->c_str());
        if (error != 0) {
            trash.removeNote(*name);
            if (error == EEXIST) {
                continue; // somebody's item without a note has this name
            }
            return failure(error);
        }
        const auto moved = factsAt(trash.files(), name->c_str());
        if (moved && isAsShown(request, *moved) && isSameFile(seen, *moved)) {
            trash.forgetSize(*name);
            return {.result = RemovalResult::Done,
                    .reason = "",
                    .place = trash.place().contents / *name,
                    .moved = moved->identity};
        }
        // Another file had the name when it moved.
        const int back = renameWithoutReplacing(trash.files(), name->c_str(), parent.folder.get(), item.c_str());
        if (back != 0) { // its place is taken: it stays in the Trash, with a note that tells its place
            return {.result = RemovalResult::Failed,
                    .reason = files::reason(back),
                    .place = trash.place().contents / *name};
        }
        trash.removeNote(*name);
        return plain(RemovalResult::Changed);
    }
}

// Out of a Trash

Removal LinuxTrashSession::removeFromTrash(const RemovalRequest& request, const TrashFolder& folder) {
    return onlyIfGone(remove(request, folder), request.path);
}

Removal LinuxTrashSession::remove(const RemovalRequest& request, const TrashFolder& folder) {
    if (!isStrictlyBelow(request.path, folder.contents)) {
        return failure(EINVAL);
    }
    const auto known = known_.find(folder.folder);
    if (known == known_.end()) {
        return failure(files::existsItself(folder.folder) ? EACCES : ENOENT);
    }
    TrashDirectory& trash = *known->second;
    if (const int error = trash.open(); error != 0) {
        return failure(error);
    }
    const Path below = request.path.lexically_relative(folder.contents);
    auto above = openFolderBelow(trash.files(), below.parent_path());
    const auto real = above ? pathOf(above->get()) : std::nullopt;
    if (!real) {
        return failure(above ? EIO : above.error());
    }
    const auto seen = inspect(request, above->get(), *real);
    if (!seen) {
        return seen.error();
    }
    const std::string name = below.filename().string();
    Removal removal = takeOut(trash, above->get(), request, *seen);
    if (removal.result == RemovalResult::Done && !below.has_parent_path()) {
        trash.forgetSize(name);
        removal.noteRemains = trash.removeNote(name) != 0;
    }
    return removal;
}

Removal LinuxTrashSession::takeOut(TrashDirectory& trash, int folder, const RemovalRequest& request,
                                   const EntryFacts& seen) {
    const std::string item = request.path.filename().string();
    const auto way = trash.privateFolder();
    if (!way) {
        return failure(way.error());
    }
    const std::string name = way->prefix + item;
    int error = renameWithoutReplacing(folder, item.c_str(), way->folder, name.c_str());
    std::optional<mode_t> before;
    std::expected<Descriptor, int> opened = std::unexpected(0);
    if (error == EACCES && seen.identity.kind == FileKind::Folder) { // a read-only folder cannot change its place
        opened = openFolder(folder, item.c_str());
        const auto facts = opened ? factsAt(opened->get(), "") : std::unexpected(opened.error());
        if (facts && isSameFile(*facts, seen)) {
            before = makeAccessible(opened->get());
            error = renameWithoutReplacing(folder, item.c_str(), way->folder, name.c_str());
        }
    }
    if (error == 0) {
        const auto moved = factsAt(way->folder, name.c_str());
        const bool isStranger = !moved || !isAsShown(request, *moved) || !isSameFile(*moved, seen);
        error = isStranger ? ESTALE : removeTree(way->folder, name.c_str(), moved->identity, places_.stop);
        if (error == 0) {
            return {};
        }
        // What is left goes back where the user sees it, with its note.
        int back = renameWithoutReplacing(way->folder, name.c_str(), folder, item.c_str());
        for (unsigned number = 2; back == EEXIST && number < 1000; ++number) {
            back = renameWithoutReplacing(way->folder, name.c_str(), folder, trashName(item, number, 255).c_str());
        }
        if (isStranger && back == 0) {
            return plain(RemovalResult::Changed);
        }
    }
    if (before) {
        setMode(opened->get(), *before);
    }
    return failure(error);
}

void LinuxTrashSession::forgetNotes(const std::set<Path>& places) {
    const auto isOfOne = [&](const std::string& item) {
        return std::ranges::any_of(places,
                                   [&](const Path& place) { return isTrashNameOf(item, place.filename().native()); });
    };
    for (const auto& [folder, trash] : known_) {
        if (trash->open() != 0) {
            continue;
        }
        trash->forgetNotes([&](const std::string& item, std::string_view note) {
            if (note.empty()) { // cut off before the first word of it
                return isOfOne(item);
            }
            const auto origin = notedOrigin(note, trash->place(), folder == places_.home.folder);
            return origin && places.contains(*origin);
        });
    }
}

void LinuxTrashSession::finish() {
    for (const auto& [folder, trash] : known_) {
        trash->finish();
    }
}

} // namespace vellmoor
