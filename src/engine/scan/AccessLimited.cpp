#include "scan/AccessLimited.h"

#include "disk/Paths.h"
#include "texts/L.h"

#include <optional>
#include <utility>

namespace vellmoor {

std::optional<Path> closedFolder(const Platform& platform, const Path& path) {
    if (!platform.exists(path) || platform.isReadable(path)) {
        return std::nullopt;
    }
    Path closed = path;
    while (closed.has_relative_path() && !platform.facts(closed)) {
        closed = closed.parent_path();
    }
    return platform.isFolder(closed) ? std::optional(closed) : std::nullopt; // a dangling link is closed to nobody
}

CleanupItem accessLimitedRow(CleanerModule module, const std::string& title, std::string description,
                             const Path& folder) {
    CleanupTarget target;
    target.url = folder;
    target.name = displayName(folder);
    target.location = folder.parent_path().string();
    target.modified = L::tr("访问受限");
    target.symbol = "lock";

    CleanupItem row;
    row.module = module;
    row.title = L::tr("%@访问受限", title);
    row.description = std::move(description);
    row.symbol = "lock.trianglebadge.exclamationmark";
    row.tint = Tint::orange;
    row.risk = CleanupRisk::previewOnly;
    row.targets = {std::move(target)};
    return row;
}

} // namespace vellmoor
