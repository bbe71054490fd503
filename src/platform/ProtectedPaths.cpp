#include "ProtectedPaths.h"

#include "Paths.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iterator>
#include <system_error>
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

std::string reasonText(int error) {
    return std::generic_category().message(error);
}

// The path with the links above it resolved, as far up as something exists; the last component stays, since a
// removal acts on it and not on what it may point to.
Path place(const Platform& platform, const Path& path) {
    Path rest = path.filename();
    for (Path folder = path.parent_path(); folder != folder.parent_path(); folder = folder.parent_path()) {
        if (const auto real = platform.realPath(folder)) {
            return *real / rest;
        }
        rest = folder.filename() / rest;
    }
    return path;
}

std::vector<Path> protectedPaths(const Platform& platform, const SystemLayout& layout) {
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
    const std::size_t count = all.size();
    for (std::size_t index = 0; index < count; ++index) {
        all[index] = platform.standardized(all[index]);
        all.push_back(place(platform, all[index]));
        if (const auto real = platform.realPath(all[index])) {
            all.push_back(*real);
        }
    }
    return all;
}

bool covers(const Path& path, const Path& guarded) {
    return path == guarded || isStrictlyBelow(guarded, path);
}

} // namespace

PathGuard::PathGuard(const Platform& platform, const SystemLayout& layout)
    : platform_(platform),
      guarded_(protectedPaths(platform, layout)) {}

std::optional<std::string> PathGuard::refusalReason(const Path& path) const {
    const bool climbs = std::ranges::find(path, Path("..")) != path.end(); // through a link it may lead anywhere
    if (!path.is_absolute() || climbs || path.native().find('\0') != std::string::npos) {
        return reasonText(EINVAL);
    }
    const Path plain = lexicallyStandardized(path);
    for (const Path& form : {plain, platform_.standardized(path), place(platform_, plain)}) {
        const auto isHit = [&](const Path& one) { return covers(form, one); };
        if (form.empty() || form == "/" || std::ranges::any_of(guarded_, isHit)) {
            return reasonText(EPERM);
        }
    }
    // The system's own answer is about the real place.
    return platform_.isMountPoint(plain) ? std::optional(reasonText(EBUSY)) : std::nullopt;
}

std::optional<std::string> refusalReason(const Platform& platform, const SystemLayout& layout, const Path& path) {
    return PathGuard(platform, layout).refusalReason(path);
}

} // namespace vellmoor
