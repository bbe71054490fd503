#include "disk/Mounts.h"

#include "GlibPointers.h"
#include "MountPoints.h"
#include "disk/Files.h"
#include "disk/Paths.h"

#include <gio/gunixmounts.h>

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <iterator>
#include <limits>
#include <mutex>
#include <poll.h>
#include <unistd.h>

namespace vellmoor::mounts {
namespace {

constexpr std::array networkTypes{"nfs", "nfs4", "cifs", "smb3", "9p", "ceph", "glusterfs", "davfs", "fuse"};

bool hasOption(std::string_view options, std::string_view wanted) {
    while (!options.empty()) {
        const std::size_t end = std::min(options.find(','), options.size());
        if (options.substr(0, end) == wanted) {
            return true;
        }
        options.remove_prefix(std::min(end + 1, options.size()));
    }
    return false;
}

bool mayBlock(std::string_view type) {
    return type.starts_with("fuse.") || std::ranges::find(networkTypes, type) != networkTypes.end();
}

std::string text(const char* value) {
    return value == nullptr ? "" : value;
}

struct FreeMounts {
    void operator()(GList* mounts) const {
#if GLIB_CHECK_VERSION(2, 84, 0)
        g_list_free_full(mounts, reinterpret_cast<GDestroyNotify>(g_unix_mount_entry_free));
#else
        g_list_free_full(mounts, reinterpret_cast<GDestroyNotify>(g_unix_mount_free));
#endif
    }
};

Mount mountOf(GUnixMountEntry* entry) {
#if GLIB_CHECK_VERSION(2, 84, 0)
    return {.path = g_unix_mount_entry_get_mount_path(entry),
            .fileSystem = text(g_unix_mount_entry_get_fs_type(entry)),
            .options = text(g_unix_mount_entry_get_options(entry)),
            .device = text(g_unix_mount_entry_get_device_path(entry)),
            .root = text(g_unix_mount_entry_get_root_path(entry)),
            .isReadOnly = g_unix_mount_entry_is_readonly(entry) != 0,
            .isSystemInternal = g_unix_mount_entry_is_system_internal(entry) != 0};
#else
    return {.path = g_unix_mount_get_mount_path(entry),
            .fileSystem = text(g_unix_mount_get_fs_type(entry)),
            .options = text(g_unix_mount_get_options(entry)),
            .device = text(g_unix_mount_get_device_path(entry)),
            .root = text(g_unix_mount_get_root_path(entry)),
            .isReadOnly = g_unix_mount_is_readonly(entry) != 0,
            .isSystemInternal = g_unix_mount_is_system_internal(entry) != 0};
#endif
}

// By the links that udev keeps; a name is that of the file system, with the part of it that is mounted.
std::string nameOf(const Mount& mount) {
    const std::optional<Path> device = files::realPath(mount.device);
    const auto links = files::entries("/dev/disk/by-uuid");
    if (!device || !links) {
        return {};
    }
    for (const FolderEntry& link : *links) {
        if (files::realPath(Path("/dev/disk/by-uuid") / link.name) == device) {
            return mount.root.empty() || mount.root == "/" ? link.name : link.name + ":" + mount.root;
        }
    }
    return {};
}

template <std::size_t Count>
bool isOneOf(const std::array<const char*, Count>& types, std::string_view type) {
    return std::ranges::find(types, type) != types.end();
}

} // namespace

bool mayHoldTrash(const Mount& mount) {
    if (mount.path == "/" || mount.isReadOnly || mayBlock(mount.fileSystem)) {
        return false;
    }
    if (hasOption(mount.options, "x-gvfs-trash")) {
        return true;
    }
    return !hasOption(mount.options, "x-gvfs-notrash") && !mount.isSystemInternal;
}

std::vector<Mount> list() {
#if GLIB_CHECK_VERSION(2, 84, 0)
    const std::unique_ptr<GList, FreeMounts> entries(g_unix_mount_entries_get(nullptr));
#else
    const std::unique_ptr<GList, FreeMounts> entries(g_unix_mounts_get(nullptr));
#endif
    std::vector<Mount> all;
    for (const GList* entry = entries.get(); entry != nullptr; entry = entry->next) {
        all.push_back(mountOf(static_cast<GUnixMountEntry*>(entry->data)));
    }
    return all;
}

std::optional<Disk> diskOf(const Path& path) {
    // They number a file anew each time when it is looked at after a mount.
    constexpr std::array withoutInodes{"vfat", "msdos", "exfat", "fuseblk"};
    constexpr std::array copyOnWrite{"btrfs", "zfs", "bcachefs"};
    const std::optional<Path> real = files::realPath(path);
    const std::vector<Mount> all = list();
    const Mount* nearest = nullptr;
    for (const Mount& mount : all) { // of several at one place the last is seen
        const bool holds = real && isAtOrBelow(*real, mount.path);
        if (holds && (nearest == nullptr || mount.path.native().size() >= nearest->path.native().size())) {
            nearest = &mount;
        }
    }
    if (nearest == nullptr) {
        return std::nullopt;
    }
    return Disk{.name = nameOf(*nearest),
                .mount = nearest->path,
                .keepsInodes = !isOneOf(withoutInodes, nearest->fileSystem),
                .isCopyOnWrite = isOneOf(copyOnWrite, nearest->fileSystem)};
}

std::vector<Volume> volumesWithTrash(const std::vector<Mount>& all) {
    std::vector<Volume> volumes;
    for (const Mount& mount : all) {
        if (mayHoldTrash(mount)) {
            volumes.push_back({mount.path, mount.path.filename().string()});
        }
    }
    return volumes;
}

bool isMountPoint(const Path& real) {
    static std::mutex alone;
    static MountTable table;
    const std::lock_guard lock(alone);
    return table.isMountPoint(real);
}

} // namespace vellmoor::mounts

namespace vellmoor {

// The file stays that of the namespace in which it was opened.
bool MountTable::open() {
    const std::optional<Path> space = files::linkTarget("/proc/self/ns/mnt");
    if (!file_ || space != namespace_) {
        file_ = Descriptor(::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
        namespace_ = space;
        places_.clear();
    }
    return bool(file_);
}

bool MountTable::refresh() {
    if (!open()) {
        return false;
    }
    pollfd change{.fd = file_.get(), .events = POLLPRI, .revents = 0};
    if (!places_.empty() && ::poll(&change, 1, 0) == 0) {
        return true;
    }
    const bool rewound = ::lseek(file_.get(), 0, SEEK_SET) == 0;
    const auto text = rewound ? files::contents(file_.get(), std::numeric_limits<std::size_t>::max()) : std::nullopt;
    places_.clear();
    if (text) {
        std::ranges::move(walk::mountPlaces(*text), std::inserter(places_, places_.end()));
    }
    if (!places_.empty()) {
        places_.insert("/"); // what a changed root lies on is listed nowhere
    }
    return !places_.empty();
}

bool MountTable::holdsMount(const Path& real) {
    if (!refresh() || places_.contains(real.native())) {
        return true;
    }
    const std::string below = real.native() + "/";
    const auto next = places_.lower_bound(below);
    return next != places_.end() && next->starts_with(below);
}

bool MountTable::isMountPoint(const Path& real) {
    return !refresh() || places_.contains(real.native());
}

std::optional<Path> MountTable::mountOf(const Path& real) {
    if (!refresh()) {
        return std::nullopt;
    }
    for (Path folder = real;; folder = folder.parent_path()) {
        if (places_.contains(folder.native())) {
            return folder;
        }
        if (folder == folder.parent_path()) {
            return std::nullopt;
        }
    }
}

} // namespace vellmoor
