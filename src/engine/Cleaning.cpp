#include "Cleaning.h"

#include "CheckedMath.h"
#include "Memory.h"
#include "Paths.h"
#include "ProtectedPaths.h"
#include "Trash.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::size_t keptFailureLines = 5;

struct PermanentRemoval {
    Path path;
    TrashFolder trash;
};

/// `path` with the links of its parent folder resolved; its own last component is kept, since a link is removed
/// and not what it names.
std::optional<Path> realPlace(const Platform& platform, const Path& path) {
    const std::optional<Path> parent = platform.realPath(path.parent_path());
    return parent ? std::optional(*parent / path.filename()) : std::nullopt;
}

bool holdsAny(const Path& path, const std::vector<std::string>& fragments) {
    return std::ranges::any_of(
        fragments, [&](const std::string& fragment) { return path.native().find(fragment) != std::string::npos; });
}

/// Only what lies in a Trash under its real path, too: a folder on the way may have become a link since the scan.
std::optional<PermanentRemoval> removalByFragments(const std::vector<std::string>& fragments, const Path& path,
                                                   const Path& real) {
    if (!holdsAny(path, fragments) || !holdsAny(real, fragments)) {
        return std::nullopt;
    }
    return PermanentRemoval{path, {.folder = path.parent_path(), .contents = path.parent_path()}};
}

/// A path that is written as lying in the source's contents, or that really does: the home folder may be reached
/// through a link. A Trash folder that is a link itself counts only for paths written so; otherwise a link to an
/// everyday folder would make that folder a Trash.
std::optional<PermanentRemoval> removalFrom(const Platform& platform, const TrashSource& source, const Path& path,
                                            const Path& real) {
    const std::optional<Path> contents = platform.realPath(source.url);
    if (!contents || !isStrictlyBelow(real, *contents)) {
        return std::nullopt;
    }
    if (isStrictlyBelow(path, platform.standardized(source.url))) {
        return PermanentRemoval{path, source.trash};
    }
    const std::optional<Path> folder = realPlace(platform, source.trash.folder);
    const Path name = source.url.lexically_relative(source.trash.folder);
    if (!folder || *folder / name != *contents) {
        return std::nullopt;
    }
    return PermanentRemoval{real, {.folder = *folder, .contents = *contents}};
}

/// One clean: its report grows target by target.
class CleanRun {
public:
    CleanRun(ScanContext& context, std::chrono::milliseconds settle)
        : context_(context),
          platform_(context.platform()),
          settle_(settle),
          sources_(trashSources(context)) {}

    CleanupReport clean(const std::vector<CleanupItem>& items);

private:
    void optimize();
    void remove(const CleanupItem& item, const CleanupTarget& target);
    Outcome removeTarget(const CleanupItem& item, const Path& path) const;
    [[nodiscard]] std::optional<PermanentRemoval> permanentRemoval(const Path& path) const;
    void fail(std::string line);

    ScanContext& context_;
    const Platform& platform_;
    std::chrono::milliseconds settle_;
    std::vector<TrashSource> sources_; ///< as they are now, not at the time of the scan
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
        if (item.module == CleanerModule::memoryOptimization) {
            optimize();
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
    if (!platform_.exists(path)) {
        return;
    }
    const Outcome outcome = removeTarget(item, path);
    if (outcome) {
        ++report_.removedCount;
    } else {
        fail(displayName(path) + ": " + outcome.error());
    }
}

/// Decides how one existing target is removed, and does it. A failed move to the Trash stays a failure: nothing is
/// deleted in its place.
Outcome CleanRun::removeTarget(const CleanupItem&, const Path& path) const {
    if (std::optional<std::string> reason = refusalReason(platform_, context_.layout(), path)) {
        return std::unexpected(std::move(*reason));
    }
    if (const std::optional<PermanentRemoval> removal = permanentRemoval(path)) {
        return platform_.removeFromTrash(removal->path, removal->trash);
    }
    return platform_.moveToTrash(path);
}

std::optional<PermanentRemoval> CleanRun::permanentRemoval(const Path& path) const {
    const std::optional<Path> real = realPlace(platform_, path);
    if (!real) {
        return std::nullopt;
    }
    const std::vector<std::string>& fragments = context_.layout().trash.permanentFragments;
    if (!fragments.empty()) {
        return removalByFragments(fragments, path, *real);
    }
    for (const TrashSource& source : sources_) {
        if (std::optional<PermanentRemoval> removal = removalFrom(platform_, source, path, *real)) {
            return removal;
        }
    }
    return std::nullopt;
}

void CleanRun::fail(std::string line) {
    ++report_.failedCount;
    if (report_.failures.size() < keptFailureLines) {
        report_.failures.push_back(std::move(line));
    }
}

} // namespace

CleanupReport clean(ScanContext& context, const std::vector<CleanupItem>& items, std::chrono::milliseconds settle) {
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
