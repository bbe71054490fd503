#include "history/Whereabouts.h"

#include "disk/Paths.h"

#include <algorithm>
#include <chrono>

namespace vellmoor {
namespace {

constexpr std::chrono::seconds coarseTime{2}; // of file systems that number files anew

const PastDisk* pastDisk(const PastClean& clean, const PastTarget& target) {
    const auto found = std::ranges::find(clean.disks, target.identity.device, &PastDisk::device);
    return found == clean.disks.end() ? nullptr : &*found;
}

std::string pastName(const PastClean& clean, const PastTarget& target) {
    const PastDisk* disk = pastDisk(clean, target);
    return disk == nullptr ? std::string() : disk->name;
}

Path moved(const Path& path, const Path& from, const Path& to) {
    return path == from ? to : to / path.lexically_relative(from);
}

bool isSameContent(const FileIdentity& one, const FileIdentity& other, bool keepsInodes) {
    if (one.kind != FileKind::File) {
        return true;
    }
    const auto apart = one.modified < other.modified ? other.modified - one.modified : one.modified - other.modified;
    return one.length == other.length && (keepsInodes ? apart == apart.zero() : apart < coarseTime);
}

} // namespace

Whereabouts::Whereabouts(EngineContext& context)
    : context_(context),
      platform_(context.platform()),
      run_(platform_.systemRun()) {
    for (TrashSource& source : trashSources(context)) {
        trashes_.push_back(std::move(source.trash));
        const Disk& disk = diskOf(trashes_.back().contents);
        if (!disk.name.empty()) {
            mounts_.emplace(disk.name, disk.mount);
        }
    }
}

const Disk& Whereabouts::diskOf(const Path& folder) {
    auto known = disks_.find(folder);
    if (known == disks_.end()) {
        known = disks_.emplace(folder, platform_.disk(folder).value_or(Disk())).first;
    }
    return known->second;
}

const TrashFolder* Whereabouts::trashAt(const Path& contents) const {
    const auto found = std::ranges::find(trashes_, contents, &TrashFolder::contents);
    return found == trashes_.end() ? nullptr : &*found;
}

Path Whereabouts::today(const PastClean& clean, const PastTarget& target, const Path& path) {
    const PastDisk* disk = pastDisk(clean, target);
    const auto mount = disk == nullptr ? mounts_.end() : mounts_.find(disk->name);
    if (mount != mounts_.end() && mount->second != disk->mount && isAtOrBelow(path, disk->mount)) {
        return moved(path, disk->mount, mount->second);
    }
    const Path& home = context_.layout().home;
    return home != clean.home && isAtOrBelow(path, clean.home) ? moved(path, clean.home, home) : path;
}

Path Whereabouts::origin(const PastClean& clean, const PastTarget& target) {
    return today(clean, target, target.path);
}

std::expected<Whereabouts::Trashed, Whereabouts::Absence> Whereabouts::find(const PastClean& clean,
                                                                            const PastTarget& target) {
    const bool isTrashed = target.fate == CleanupFate::Trashed && !target.isPutBack;
    if (!target.fate || (isTrashed && target.place.empty())) { // a sandbox's service does not say the place
        return target.wasTrashed || target.isRepeated ? std::unexpected(Absence::Gone) : search(clean, target);
    }
    if (!isTrashed) {
        return std::unexpected(Absence::Gone);
    }
    const Path place = today(clean, target, target.place);
    const TrashFolder* trash = trashAt(place.parent_path());
    const PastDisk* disk = pastDisk(clean, target);
    if (trash == nullptr) {
        const bool isMounted = disk == nullptr || platform_.isMountPoint(disk->mount);
        return std::unexpected(isMounted ? Absence::Gone : Absence::Hidden);
    }
    if (disk != nullptr && diskOf(trash->contents).name != disk->name) {
        return std::unexpected(Absence::Hidden); // another disk is mounted there now
    }
    const std::optional<FileIdentity> found = platform_.identity(place);
    if (!found) {
        return std::unexpected(platform_.exists(place) ? Absence::Hidden : Absence::Gone);
    }
    if (!isIts(clean, target, {place, trash, *found})) {
        return std::unexpected(Absence::Gone);
    }
    return trashed(target, {place, trash, *found});
}

Whereabouts::Trashed Whereabouts::trashed(const PastTarget& target, const Entry& found) {
    return {.place = found.place,
            .trash = *found.trash,
            .identity = found.identity,
            .isUnchanged = isSameContent(target.identity, found.identity, diskOf(found.trash->contents).keepsInodes)};
}

bool Whereabouts::isIts(const PastClean& clean, const PastTarget& target, const Entry& found) {
    const bool isSameRun = clean.run == run_ && !run_.empty();
    return (isSameRun && isSame(target.identity, found.identity, Sameness::File)) || isKnownAgain(clean, target, found);
}

bool Whereabouts::isKnownAgain(const PastClean& clean, const PastTarget& target, const Entry& found) {
    const Disk& disk = diskOf(found.trash->contents);
    const bool isSameFile = !disk.keepsInodes || target.identity.inode == found.identity.inode;
    return target.identity.kind == found.identity.kind && isSameFile && disk.name == pastName(clean, target) &&
           isSameContent(target.identity, found.identity, disk.keepsInodes) && isNotedAs(clean, target, found);
}

bool Whereabouts::isNotedAs(const PastClean& clean, const PastTarget& target, const Entry& found) {
    if (context_.layout().trash.notes.empty()) {
        return true;
    }
    const std::optional<Path> noted = trashedOrigin(context_, *found.trash, found.place);
    return noted && (*noted == target.path || *noted == origin(clean, target));
}

// A hard link of the item may lie in the Trash for another reason: then its note names another place, or the item is
// still in its own.
std::expected<Whereabouts::Trashed, Whereabouts::Absence> Whereabouts::search(const PastClean& clean,
                                                                              const PastTarget& target) {
    const auto [first, last] = trashedByInode().equal_range(target.identity.inode);
    for (auto candidate = first; candidate != last; ++candidate) {
        const Entry& entry = candidate->second;
        const bool hasNote =
            !context_.layout().trash.notes.empty() && trashedOrigin(context_, *entry.trash, entry.place).has_value();
        const bool isMeant = hasNote ? isNotedAs(clean, target, entry) : !inPlace(clean, target);
        if (isMeant && isIts(clean, target, entry)) {
            return trashed(target, entry);
        }
    }
    return std::unexpected(Absence::Gone);
}

const std::multimap<std::uint64_t, Whereabouts::Entry>& Whereabouts::trashedByInode() {
    if (!byInode_) {
        byInode_.emplace();
        for (const TrashFolder& trash : trashes_) {
            const auto entries = platform_.entries(trash.contents);
            if (!entries) {
                continue; // a Trash that is missing or closed holds nothing that could be put back now
            }
            for (const FolderEntry& entry : *entries) {
                Path place = trash.contents / entry.name;
                if (const auto identity = platform_.identity(place)) {
                    byInode_->emplace(identity->inode, Entry{std::move(place), &trash, *identity});
                }
            }
        }
    }
    return *byInode_;
}

std::optional<FileIdentity> Whereabouts::inPlace(const PastClean& clean, const PastTarget& target) {
    const Path path = origin(clean, target);
    const std::optional<FileIdentity> found = platform_.identity(path);
    if (!found) {
        return std::nullopt;
    }
    FileIdentity wanted = target.identity;
    if (clean.run != run_ && diskOf(path.parent_path()).name == pastName(clean, target)) {
        wanted.device = found->device; // the same disk under today's number
    }
    return isSame(wanted, *found, target.sameness) ? found : std::nullopt;
}

} // namespace vellmoor
