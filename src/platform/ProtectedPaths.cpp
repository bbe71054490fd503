#include "ProtectedPaths.h"

#include "Paths.h"
#include "PosixFiles.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

namespace vellmoor {
namespace {

// Compiled in, so that no table and no setting can lose them. Each name also guards the folders above it.
constexpr std::array systemFolders{
    "/bin",         "/boot",        "/dev",         "/etc",     "/home",    "/lib",       "/lib64",        "/media",
    "/mnt",         "/opt",         "/proc",        "/root",    "/run",     "/run/media", "/sbin",         "/snap",
    "/srv",         "/sys",         "/tmp",         "/usr/bin", "/usr/lib", "/usr/local", "/usr/share",    "/var/cache",
    "/var/crash",   "/var/home",    "/var/lib",     "/var/log", "/var/tmp", "/cores",     "/Applications", "/Library",
    "/private/etc", "/private/tmp", "/private/var", "/System",  "/Users",   "/Volumes"};
constexpr std::array homeFolders{".cache",
                                 ".config",
                                 ".config/autostart",
                                 ".gnupg",
                                 ".local/bin",
                                 ".local/share",
                                 ".local/share/Trash",
                                 ".local/state",
                                 ".mozilla",
                                 ".ssh",
                                 ".thunderbird",
                                 ".Trash",
                                 ".var/app",
                                 "snap",
                                 "Applications",
                                 "Desktop",
                                 "Documents",
                                 "Downloads",
                                 "Library/Application Support",
                                 "Library/Caches",
                                 "Library/Containers",
                                 "Library/Keychains",
                                 "Library/LaunchAgents",
                                 "Library/Logs",
                                 "Library/Mail",
                                 "Library/Preferences",
                                 "Movies",
                                 "Music",
                                 "Pictures",
                                 "Public",
                                 "Videos"};

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
    all.push_back(layout.downloads.folder);
    all.insert(all.end(), layout.largeFileRoots.begin(), layout.largeFileRoots.end());
    const UserFolders user = platform.userFolders();
    all.insert(all.end(), {user.downloads, user.desktop, user.documents, user.videos, user.pictures});
    std::erase_if(all, [](const Path& path) { return !path.is_absolute(); });
    for (Path& path : all) {
        path = platform.standardized(path);
    }
    return all;
}

// With the links above resolved, as far up as something exists.
Path placeOf(const Platform& platform, const Path& path) {
    if (const std::optional<Path> real = platform.realPlace(path)) {
        return *real;
    }
    const Path above = path.parent_path();
    return above == path ? path : placeOf(platform, above) / path.filename();
}

// Each by its name, by the place where it lies, and by what it names.
std::vector<Path> formsOf(const Platform& platform, const std::vector<Path>& paths) {
    std::vector<Path> all = paths;
    for (const Path& path : paths) {
        all.push_back(placeOf(platform, path));
        if (const std::optional<Path> real = platform.realPath(path)) {
            all.push_back(*real);
        }
    }
    std::ranges::sort(all);
    all.erase(std::ranges::unique(all).begin(), all.end());
    return all;
}

} // namespace

PathGuard::PathGuard(const Platform& platform, const SystemLayout& layout)
    : platform_(platform),
      folders_(protectedFolders(platform, layout)),
      guarded_(formsOf(platform, folders_)) {}

std::optional<std::string> PathGuard::refusalReason(const Path& path) const {
    const bool climbs = std::ranges::find(path, Path("..")) != path.end(); // through a link it may lead anywhere
    if (!path.is_absolute() || climbs || path.native().find('\0') != std::string::npos) {
        return files::reason(EINVAL);
    }
    const Path plain = lexicallyStandardized(path);
    for (const Path& form : {plain, platform_.standardized(path), placeOf(platform_, plain)}) {
        const auto isHit = [&](const Path& one) { return isAtOrBelow(one, form); };
        if (form.empty() || form == "/" || std::ranges::any_of(guarded_, isHit)) {
            return files::reason(EPERM);
        }
    }
    // The system's own answer is about the real place.
    return platform_.isMountPoint(plain) ? std::optional(files::reason(EBUSY)) : std::nullopt;
}

} // namespace vellmoor
