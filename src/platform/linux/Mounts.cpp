#include "Mounts.h"

#include "Files.h"
#include "GlibPointers.h"
#include "MountPoints.h"

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
    return {g_unix_mount_entry_get_mount_path(entry), text(g_unix_mount_entry_get_fs_type(entry)),
            text(g_unix_mount_entry_get_options(entry)), g_unix_mount_entry_is_readonly(entry) != 0,
            g_unix_mount_entry_is_system_internal(entry) != 0};
#else
    return {g_unix_mount_get_mount_path(entry), text(g_unix_mount_get_fs_type(entry)),
            text(g_unix_mount_get_options(entry)), g_unix_mount_is_readonly(entry) != 0,
            g_unix_mount_is_system_internal(entry) != 0};
#endif
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
