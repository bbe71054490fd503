#include "disk/MacPaths.h"

#include "ThreadPolicy.h"
#include "disk/Paths.h"
#include "disk/PosixFiles.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <sys/stat.h>

namespace vellmoor::mac {
namespace {

bool hasParentSteps(const Path& path) {
    return std::ranges::find(path, Path("..")) != path.end();
}

} // namespace

Path standardized(const Path& path) {
    return standardized(path, [](const Path& asked) {
        const walk::ThreadPolicy nothingIsFetched;
        struct stat status{};
        return ::stat(asked.c_str(), &status) == 0;
    });
}

// Foundation's rule for standardising a URL. It never shortens to one of the folders that are no links to /private.
Path standardized(const Path& path, const std::function<bool(const Path&)>& exists) {
    constexpr std::string_view privateFolder = "/private";
    constexpr std::array<std::string_view, 12> fixed{"/Applications", "/Library", "/System", "/Users",
                                                     "/Volumes",      "/bin",     "/cores",  "/dev",
                                                     "/opt",          "/private", "/sbin",   "/usr"};
    if (path.is_absolute() && hasParentSteps(path)) {
        if (const auto real = realPath(path)) {
            return standardized(*real, exists);
        }
    }
    Path result = lexicallyStandardized(path);
    if (isStrictlyBelow(result, privateFolder)) {
        Path rest = result.native().substr(privateFolder.size());
        const bool isFixed =
            std::ranges::any_of(fixed, [&](std::string_view folder) { return isAtOrBelow(rest, folder); });
        if (!isFixed && exists(rest)) {
            return rest;
        }
    }
    return result;
}

std::optional<Path> realPath(const Path& path) {
    const walk::ThreadPolicy nothingIsFetched;
    return files::realPath(path);
}

bool reallyLiesIn(const Path& path, const Path& folder) {
    const std::optional<Path> parent = realPath(path.parent_path());
    const std::optional<Path> contents = realPath(folder);
    return parent && contents && isStrictlyBelow(*parent / path.filename(), *contents);
}

} // namespace vellmoor::mac
