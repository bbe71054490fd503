#include "disk/OpenFolders.h"

#include "disk/Files.h"
#include "disk/Paths.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace vellmoor {
namespace {

constexpr int placeFlags = O_PATH | O_DIRECTORY | O_CLOEXEC;

FileKind kindOf(mode_t mode) {
    if (S_ISDIR(mode)) {
        return FileKind::Folder;
    }
    if (S_ISREG(mode)) {
        return FileKind::File;
    }
    return S_ISLNK(mode) ? FileKind::Link : FileKind::Other;
}

std::expected<Descriptor, int> opened(int number) {
    return number < 0 ? std::expected<Descriptor, int>(std::unexpected(errno)) : Descriptor(number);
}

} // namespace

std::expected<EntryFacts, int> factsAt(int folder, const char* name) {
    struct statx status{};
    const int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | (*name == '\0' ? AT_EMPTY_PATH : 0);
    if (::statx(folder, name, flags, STATX_BASIC_STATS, &status) != 0) {
        return std::unexpected(errno);
    }
    EntryFacts facts;
    facts.identity = {.device = makedev(status.stx_dev_major, status.stx_dev_minor),
                      .inode = status.stx_ino,
                      .kind = kindOf(status.stx_mode),
                      .length = static_cast<std::int64_t>(status.stx_size),
                      .modified = files::timePoint({.tv_sec = static_cast<time_t>(status.stx_mtime.tv_sec),
                                                    .tv_nsec = status.stx_mtime.tv_nsec})};
    facts.mode = status.stx_mode;
    facts.owner = status.stx_uid;
    facts.isMountRoot = (status.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    return facts;
}

std::expected<Descriptor, int> openFolder(int above, const char* name) {
    const int number = ::openat(above, name, placeFlags | O_NOFOLLOW);
    if (number < 0 && errno == ENOTDIR) { // also said of a link, which is there and must not count as gone
        const auto facts = factsAt(above, name);
        return std::unexpected(facts && facts->identity.kind == FileKind::Link ? ELOOP : ENOTDIR);
    }
    return opened(number);
}

std::expected<Descriptor, int> openFolderBelow(int above, const Path& relative) {
    auto folder = opened(::openat(above, ".", placeFlags));
    for (const Path& name : relative) {
        if (!folder) {
            break;
        }
        if (name.native() == "..") {
            return std::unexpected(EINVAL);
        }
        if (!name.empty() && name.native() != ".") {
            folder = openFolder(folder->get(), name.c_str());
        }
    }
    return folder;
}

std::expected<Descriptor, int> reopenForReading(int folder) {
    return opened(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
}

std::expected<Descriptor, int> makeFolder(int above, const char* name) {
    auto folder = openFolder(above, name);
    if (folder || folder.error() != ENOENT) {
        return folder;
    }
    if (::mkdirat(above, name, 0700) != 0 && errno != EEXIST) {
        return std::unexpected(errno);
    }
    return openFolder(above, name);
}

std::expected<Descriptor, int> makeFolderBelow(int above, const Path& relative) {
    std::expected<Descriptor, int> folder = openFolder(above, ".");
    for (const Path& name : relative) {
        if (folder) {
            folder = makeFolder(folder->get(), name.c_str());
        }
    }
    return folder;
}

std::optional<Path> pathOf(int folder) {
    return files::linkTarget("/proc/self/fd/" + std::to_string(folder));
}

bool meansGone(int error) {
    return error == ENOENT || error == ENOTDIR;
}

std::optional<mode_t> makeAccessible(int folder) {
    const auto facts = factsAt(folder, "");
    if (!facts || !S_ISDIR(facts->mode) || facts->owner != ::geteuid() || (facts->mode & S_IRWXU) == S_IRWXU) {
        return std::nullopt;
    }
    const mode_t before = facts->mode & 07777U;
    return setMode(folder, before | S_IRWXU) ? std::optional(before) : std::nullopt;
}

bool setMode(int folder, mode_t mode) {
    return ::chmod(("/proc/self/fd/" + std::to_string(folder)).c_str(), mode) == 0;
}

Parents::Parents(std::vector<Path> anchors) : anchors_(std::move(anchors)) {
    // The nearest first: it is the one whose links were meant last.
    std::ranges::sort(anchors_, std::ranges::greater(), [](const Path& path) { return path.native().size(); });
    // All of them now: a link in the place of one is the user's own only before the work begins.
    for (const Path& anchor : anchors_) {
        if (auto folder = opened(::open(anchor.c_str(), placeFlags))) {
            opened_.emplace(anchor, std::move(*folder));
        }
    }
}

std::expected<Descriptor, int> Parents::open(const Path& folder) {
    const auto near = std::ranges::find_if(anchors_, [&](const Path& anchor) { return isAtOrBelow(folder, anchor); });
    const Path anchor = near == anchors_.end() ? Path("/") : *near;
    auto known = opened_.find(anchor);
    if (known == opened_.end()) {
        auto fresh = opened(::open(anchor.c_str(), placeFlags));
        if (!fresh) {
            return fresh;
        }
        known = opened_.emplace(anchor, std::move(*fresh)).first;
    }
    // It may have gone to the Trash itself since, or be another one by now.
    const auto again = opened(::open(anchor.c_str(), placeFlags));
    const auto now = again ? factsAt(again->get(), "") : std::unexpected(again.error());
    const auto then = factsAt(known->second.get(), "");
    if (!now || !then) {
        return std::unexpected(now ? then.error() : now.error());
    }
    if (now->identity.device != then->identity.device || now->identity.inode != then->identity.inode) {
        return std::unexpected(ESTALE);
    }
    return openFolderBelow(known->second.get(), folder.lexically_relative(anchor));
}

std::expected<const Parents::Parent*, int> Parents::of(const Path& path) {
    Path folder = path.parent_path();
    if (folder == last_) {
        return &parent_;
    }
    auto found = open(folder);
    if (!found) {
        return std::unexpected(found.error());
    }
    const auto facts = factsAt(found->get(), "");
    const auto real = pathOf(found->get());
    if (!facts || !real) {
        return std::unexpected(facts ? EIO : facts.error());
    }
    last_ = std::move(folder);
    parent_ = {.folder = std::move(*found), .real = *real, .device = facts->identity.device};
    return &parent_;
}

} // namespace vellmoor
