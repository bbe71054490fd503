#include "Mounts.h"

#include "Files.h"
#include "GlibPointers.h"

#include <gio/gunixmounts.h>

#include <algorithm>
#include <array>
#include <limits>

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

// proc_pid_mountinfo(5): blanks, tabs, line ends and backslashes are written as a backslash and three octal digits.
std::string unescaped(std::string_view field) {
    const auto isOctal = [](char digit) { return digit >= '0' && digit <= '7'; };
    std::string out;
    for (std::size_t index = 0; index < field.size(); ++index) {
        const std::string_view digits = field.substr(index + 1, 3);
        if (field[index] == '\\' && digits.size() == 3 && std::ranges::all_of(digits, isOctal)) {
            out += static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0'));
            index += 3;
        } else {
            out += field[index];
        }
    }
    return out;
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

bool isMountedAt(std::string_view mountinfo, const Path& path) {
    while (!mountinfo.empty()) {
        const std::size_t end = std::min(mountinfo.find('\n'), mountinfo.size());
        std::string_view line = mountinfo.substr(0, end);
        mountinfo.remove_prefix(std::min(end + 1, mountinfo.size()));
        for (int field = 0; field < 4; ++field) { // the fifth field is the place
            line.remove_prefix(std::min(line.find(' ') + 1, line.size()));
        }
        if (unescaped(line.substr(0, line.find(' '))) == path.native()) {
            return true;
        }
    }
    return false;
}

bool isMountPoint(const Path& path) {
    const std::optional<Path> real = files::realPlace(path);
    if (!real) {
        return false; // nothing there, or nothing that could be moved
    }
    const auto mountinfo = files::contents("/proc/self/mountinfo", std::numeric_limits<std::size_t>::max());
    return !mountinfo || isMountedAt(*mountinfo, *real);
}

} // namespace vellmoor::mounts
