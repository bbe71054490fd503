#include "ProtectedPaths.h"

#include "disk/Paths.h"
#include "disk/PosixFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <vector>

namespace vellmoor {
namespace {

// Of both systems: a folder of the other one is a folder like any other here, and protected all the same. Compiled in,
// so that no table and no setting can lose them. Each name also guards the folders above it.
// clang-format off
constexpr std::array systemFolders{
    "/Applications", "/Library", "/System", "/Users", "/Volumes", "/bin", "/boot", "/cores",
    "/dev", "/etc", "/home", "/lib", "/lib64", "/media", "/mnt", "/opt",
    "/private", "/private/etc", "/private/tmp", "/private/var", "/proc", "/root", "/run", "/run/media",
    "/sbin", "/snap", "/srv", "/sys", "/tmp", "/usr", "/usr/bin", "/usr/lib",
    "/usr/local", "/usr/share", "/var", "/var/cache", "/var/crash", "/var/home", "/var/lib", "/var/log",
    "/var/tmp"};
constexpr std::array homeFolders{
    ".Trash", ".android", ".cache", ".cargo", ".config", ".config/autostart",
    ".gnupg", ".gradle", ".local", ".local/bin", ".local/share", ".local/share/Trash",
    ".local/state", ".m2", ".mozilla", ".npm", ".snap", ".snap/data",
    ".ssh", ".thunderbird", ".var", ".var/app", "Applications", "Desktop",
    "Documents", "Downloads", "Library", "Library/Application Support", "Library/Caches", "Library/CloudStorage",
    "Library/Containers", "Library/Developer", "Library/Group Containers", "Library/Keychains", "Library/LaunchAgents", "Library/Logs",
    "Library/Mail", "Library/Messages", "Library/Mobile Documents", "Library/Preferences", "Library/Safari", "Movies",
    "Music", "Pictures", "Public", "Templates", "Videos", "snap"};
// clang-format on

// With the links above resolved, as far up as something exists.
Path placeOf(const Platform& platform, const Path& path) {
    if (const std::optional<Path> real = platform.realPlace(path)) {
        return *real;
    }
    const Path above = path.parent_path();
    return above == path ? path : placeOf(platform, above) / path.filename();
}

// Each by its name, by the place where it lies, and by what it names.
std::set<std::string> formsOf(const Platform& platform, const std::vector<Path>& paths) {
    std::set<std::string> all;
    for (const Path& path : paths) {
        all.insert({path.native(), placeOf(platform, path).native()});
        if (const std::optional<Path> real = platform.realPath(path)) {
            all.insert(real->native());
        }
    }
    return all;
}

} // namespace

std::vector<Path> protectedFolders(const Platform& platform, const SystemLayout& layout) {
    std::vector<Path> all = layout.protectedPaths;
    all.push_back(layout.home);
    all.push_back(platform.ownPath());
    for (const char* folder : systemFolders) {
        all.push_back(underRoot(layout.root, folder));
    }
    for (const char* folder : homeFolders) {
        all.push_back(layout.home / folder);
    }
    all.push_back(layout.trash.homeFolder);
    std::ranges::copy(layout.largeFileRoots, std::back_inserter(all));
    std::ranges::copy(layout.furtherUserFolders, std::back_inserter(all));
    std::ranges::copy(platform.userFolders().all(), std::back_inserter(all));
    std::erase_if(all, [](const Path& path) { return !path.is_absolute(); });
    for (Path& path : all) {
        path = platform.standardized(path);
    }
    return all;
}

PathGuard::PathGuard(const Platform& platform, const SystemLayout& layout)
    : platform_(platform),
      folders_(protectedFolders(platform, layout)),
      guarded_(formsOf(platform, folders_)) {}

// Whether the path is a guarded one or lies above one; all are sorted, and those below a folder stand together.
bool PathGuard::holdsGuarded(const std::string& path) const {
    if (path.empty() || path == "/" || guarded_.contains(path)) {
        return true;
    }
    const std::string below = path + "/";
    const auto first = guarded_.lower_bound(below);
    return first != guarded_.end() && first->starts_with(below);
}

std::optional<std::string> PathGuard::refusalReason(const Path& path) const {
    return refusalReason(path, path.is_absolute() ? placeOf(platform_, lexicallyStandardized(path)) : path);
}

std::optional<std::string> PathGuard::refusalReason(const Path& path, const Path& place) const {
    const bool climbs = std::ranges::find(path, Path("..")) != path.end(); // through a link it may lead anywhere
    if (!path.is_absolute() || climbs || path.native().find('\0') != std::string::npos) {
        return files::reason(EINVAL);
    }
    if (holdsGuarded(lexicallyStandardized(path).native()) || holdsGuarded(platform_.standardized(path).native()) ||
        holdsGuarded(place.native())) {
        return files::reason(EPERM);
    }
    return platform_.isMountedAt(place) ? std::optional(files::reason(EBUSY)) : std::nullopt;
}

} // namespace vellmoor
