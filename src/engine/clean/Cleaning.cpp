#include "clean/Cleaning.h"

#include "CheckedMath.h"
#include "Paths.h"
#include "ProtectedPaths.h"
#include "applications/AppUninstaller.h"
#include "memory/Memory.h"
#include "trash/Trash.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::size_t keptFailureLines = 5;

struct PermanentRemoval {
    Path path;
    TrashFolder trash;
};

std::string reasonText(int error) {
    return std::generic_category().message(error);
}

/// `path` with the links of its parent folder resolved; its own last component is kept, since a link is removed
/// and not what it names.
std::optional<Path> realPlace(const Platform& platform, const Path& path) {
    const std::optional<Path> parent = platform.realPath(path.parent_path());
    return parent ? std::optional(*parent / path.filename()) : std::nullopt;
}

/// Whether the system might take `url` for something else than `standard`: a relative one depends on the current
/// folder, and ".." leads elsewhere behind a link.
bool isAmbiguous(const Platform& platform, const Path& url, const Path& standard) {
    if (!url.is_absolute()) {
        return true;
    }
    const bool climbs = std::ranges::find(url, Path("..")) != url.end();
    return climbs && realPlace(platform, url) != realPlace(platform, standard);
}

bool holdsAny(const Path& path, const std::vector<std::string>& fragments) {
    return std::ranges::any_of(fragments,
                               [&](const std::string& fragment) { return path.native().contains(fragment); });
}

/// The removal of what lies at the real place `real`, if that is inside the source's contents. Contents that are a
/// link hold nothing: they would make a Trash of the folder that they name.
std::optional<PermanentRemoval> removalFrom(const Platform& platform, const TrashSource& source, const Path& real) {
    const std::optional<Path> folder = platform.realPath(source.trash.folder);
    if (!folder) {
        return std::nullopt;
    }
    const Path contents = *folder / source.url.lexically_relative(source.trash.folder);
    if (!isStrictlyBelow(real, contents)) {
        return std::nullopt;
    }
    return PermanentRemoval{real, {.folder = *folder, .contents = contents}};
}

/// The Trash folders of this moment, which need not be those of the scan.
class KnownTrash {
public:
    explicit KnownTrash(const EngineContext& context)
        : platform_(context.platform()),
          fragments_(context.layout().trash.permanentFragments),
          sources_(trashSources(context)) {}

    /// Whether `path` is written as lying in a Trash; a folder on the way may have become a link.
    [[nodiscard]] bool names(const Path& path) const {
        if (!fragments_.empty()) {
            return holdsAny(path, fragments_);
        }
        return std::ranges::any_of(sources_, [&](const TrashSource& source) {
            return isStrictlyBelow(path, platform_.standardized(source.url));
        });
    }

    /// How `path` leaves the Trash for good; nothing unless it really lies in one.
    [[nodiscard]] std::optional<PermanentRemoval> removal(const Path& path) const {
        const std::optional<Path> real = realPlace(platform_, path);
        if (!real) {
            return std::nullopt;
        }
        if (!fragments_.empty()) {
            const bool inside = holdsAny(path, fragments_) && holdsAny(*real, fragments_);
            const Path parent = path.parent_path();
            return inside ? std::optional(PermanentRemoval{path, {.folder = parent, .contents = parent}})
                          : std::nullopt;
        }
        for (const TrashSource& source : sources_) {
            if (std::optional<PermanentRemoval> found = removalFrom(platform_, source, *real)) {
                return found;
            }
        }
        return std::nullopt;
    }

private:
    const Platform& platform_;
    const std::vector<std::string>& fragments_;
    std::vector<TrashSource> sources_;
};

/// One clean: its report grows target by target.
class CleanRun {
public:
    CleanRun(EngineContext& context, std::chrono::milliseconds settle)
        : context_(context),
          platform_(context.platform()),
          settle_(settle),
          guard_(platform_, context.layout()),
          trash_(context) {}

    CleanupReport clean(const std::vector<CleanupItem>& items);

private:
    void optimize();
    void remove(const CleanupItem& item, const CleanupTarget& target);
    Outcome removeTarget(const CleanupItem& item, const Path& path) const;
    void fail(std::string line);

    EngineContext& context_;
    const Platform& platform_;
    std::chrono::milliseconds settle_;
    PathGuard guard_;
    KnownTrash trash_;
    CleanupReport report_;
};

CleanupReport CleanRun::clean(const std::vector<CleanupItem>& items) {
    for (const CleanupItem& item : items) {
        for (const CleanupTarget& target : item.selectedTargets()) {
            report_.attemptedCount = checkedAdd<std::int64_t>(report_.attemptedCount, 1);
            report_.freedBytes = checkedAdd(report_.freedBytes, target.bytes);
        }
    }
    for (const CleanupItem& item : items) {
        if (context_.isCancelled()) {
            break;
        }
        if (item.module == CleanerModule::memoryOptimization) {
            optimize();
            if (report_.failedCount == 0) {
                report_.processedBytes = checkedAdd(report_.processedBytes, item.selectedBytes());
            }
            continue;
        }
        for (const CleanupTarget& target : item.selectedTargets()) {
            remove(item, target);
        }
    }
    return std::move(report_);
}

void CleanRun::optimize() {
    report_.memoryBefore = memorySnapshot(context_);
    MemoryOptimization result = optimizeMemory(context_);
    if (result.succeeded) {
        ++report_.removedCount;
        std::this_thread::sleep_for(settle_);
    } else {
        fail(std::move(result.message));
    }
    report_.memoryAfter = memorySnapshot(context_);
}

void CleanRun::remove(const CleanupItem& item, const CleanupTarget& target) {
    const Path path = platform_.standardized(target.url);
    if (context_.isCancelled() || !platform_.exists(path)) {
        return;
    }
    const Outcome outcome =
        isAmbiguous(platform_, target.url, path) ? std::unexpected(reasonText(EINVAL)) : removeTarget(item, path);
    if (outcome) {
        ++report_.removedCount;
        report_.processedBytes = checkedAdd(report_.processedBytes, target.bytes);
    } else if (platform_.exists(path)) { // else it vanished meanwhile, which is no failure either
        fail(displayName(path) + ": " + outcome.error());
    }
}

/// Decides how one existing target is removed, and does it. A failed move to the Trash stays a failure: nothing is
/// deleted in its place.
Outcome CleanRun::removeTarget(const CleanupItem& /*item*/, const Path& path) const {
    if (std::optional<std::string> reason = guard_.refusalReason(path)) {
        return std::unexpected(std::move(*reason));
    }
    if (isFlatpakBody(context_, path)) {
        return uninstallFlatpak(context_, path);
    }
    if (const std::optional<PermanentRemoval> removal = trash_.removal(path)) {
        return platform_.removeFromTrash(removal->path, removal->trash);
    }
    if (trash_.names(path)) {
        return std::unexpected(reasonText(ELOOP)); // a link leads out of the Trash, to something of the user's
    }
    return platform_.moveToTrash(path);
}

void CleanRun::fail(std::string line) {
    ++report_.failedCount;
    if (report_.failures.size() < keptFailureLines) {
        report_.failures.push_back(std::move(line));
    }
}

} // namespace

CleanupReport clean(EngineContext& context, const std::vector<CleanupItem>& items, std::chrono::milliseconds settle) {
    std::vector<CleanupItem> actionable;
    std::ranges::copy_if(items, std::back_inserter(actionable),
                         [](const CleanupItem& item) { return item.isSelected && item.isCleanable; });
    CleanupReport report;
    if (!actionable.empty()) {
        report = CleanRun(context, settle).clean(actionable);
    }
    report.completedAt = std::chrono::system_clock::now();
    return report;
}

} // namespace vellmoor
