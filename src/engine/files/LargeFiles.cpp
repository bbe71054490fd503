#include "files/LargeFiles.h"

#include "ByteCount.h"
#include "Paths.h"
#include "Platform.h"
#include "ScanSnapshot.h"
#include "Walk.h"
#include "scan/DeepScanFilter.h"
#include "scan/PathMeasurement.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <optional>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::int64_t thresholdBytes = 262'144'000; // 250 MiB, allocated
constexpr std::size_t rowLimit = 12;
constexpr std::size_t candidateLimit = 8;

struct Root {
    Path path;
    Path real;
};

bool isAtOrBelow(const Path& path, const Path& folder) {
    return path == folder || isStrictlyBelow(path, folder);
}

/// The folders as the desktop names them, each with the layout's own as fall-back.
std::vector<Path> namedRoots(const EngineContext& context) {
    const UserFolders folders = context.platform().userFolders();
    std::vector<Path> roots{folders.downloads, folders.desktop, folders.documents, folders.videos, folders.pictures};
    const std::vector<Path>& fallbacks = context.layout().largeFileRoots;
    for (std::size_t i = 0; i < roots.size() && i < fallbacks.size(); ++i) {
        if (roots[i].empty()) {
            roots[i] = fallbacks[i];
        }
    }
    std::erase_if(roots, [](const Path& root) { return root.empty(); });
    return roots;
}

/// Where the walk of `root` starts. A user may have moved a folder and left a link; the walk itself follows none.
/// What lies in the home is spelled as the layout spells the home, which may be reached through a link itself.
Path walkStart(const EngineContext& context, const Root& root) {
    const std::optional<FileFacts> facts = context.platform().facts(root.path);
    if (!facts || !facts->isSymlink) {
        return root.path;
    }
    const Path& home = context.layout().home;
    const std::optional<Path> realHome = context.platform().realPath(home);
    if (realHome && isStrictlyBelow(root.real, *realHome)) {
        return home / root.real.lexically_relative(*realHome);
    }
    return root.real;
}

/// Whether the walk of `above` comes to `below`: it passes hidden folders by, and stays on its file system.
bool isReachedFrom(const Platform& platform, const Path& below, const Path& above) {
    if (!isStrictlyBelow(below, above)) {
        return false;
    }
    for (Path place = below; place != above; place = place.parent_path()) {
        if (place.filename().native().starts_with('.') || platform.isMountPoint(place)) {
            return false;
        }
    }
    return true;
}

/// Those that exist, once each. A folder that is switched off is set to the home folder; neither it nor a folder
/// above it is an everyday folder.
std::vector<Root> searchRoots(const EngineContext& context) {
    const Platform& platform = context.platform();
    const Path home = platform.standardized(context.layout().home);
    const Path realHome = platform.realPath(home).value_or(home);
    std::vector<Root> roots;
    for (const Path& named : namedRoots(context)) {
        const Path path = platform.standardized(named);
        const std::optional<Path> real = platform.realPath(path);
        if (real && !isAtOrBelow(home, path) && !isAtOrBelow(realHome, *real)) {
            roots.push_back({path, *real});
        }
    }
    std::vector<Root> kept;
    for (const Root& root : roots) {
        const bool known = std::ranges::any_of(kept, [&](const Root& other) { return other.real == root.real; });
        const bool covered = std::ranges::any_of(
            roots, [&](const Root& other) { return isReachedFrom(platform, root.real, other.real); });
        if (!known && !covered) {
            kept.push_back(root);
        }
    }
    return kept;
}

TimePoint timePoint(std::int64_t nanoseconds) {
    return TimePoint(std::chrono::duration_cast<TimePoint::duration>(std::chrono::nanoseconds(nanoseconds)));
}

bool isLarger(const ScannedPath& a, const ScannedPath& b) {
    return a.bytes != b.bytes ? a.bytes > b.bytes : a.url < b.url; // the path only makes the order repeatable
}

/// Collects the files from the threshold upwards, one list per worker.
class Collector final : public walk::Visitor {
public:
    Collector(const DeepScanFilter& filter, const CancelToken& token, unsigned workers)
        : filter_(filter),
          token_(token),
          slots_(workers) {}

    walk::Action entry(const walk::Entry& entry, unsigned worker) override {
        if (token_.isCancelled()) {
            return walk::Action::Stop;
        }
        if (filter_.excludesName(entry.name, entry.depth)) {
            return walk::Action::Prune;
        }
        if (entry.type == walk::EntryType::Directory) {
            return filter_.excludesFolder(entry.path()) ? walk::Action::Prune : walk::Action::Continue;
        }
        if (entry.type == walk::EntryType::File && entry.allocatedBytes >= thresholdBytes) {
            slots_[worker].found.push_back({.url = entry.path(),
                                            .bytes = entry.allocatedBytes,
                                            .files = 1,
                                            .modified = timePoint(entry.modifiedNs)});
        }
        return walk::Action::Continue;
    }

    walk::Action directory(const walk::Directory& directory, unsigned) override {
        return filter_.marksSyncRoot(directory.names) ? walk::Action::Prune : walk::Action::Continue;
    }

    void moveInto(std::vector<ScannedPath>& all) {
        for (Slot& slot : slots_) {
            std::ranges::move(slot.found, std::back_inserter(all));
        }
    }

private:
    /// A cache line each, so that workers do not slow each other down.
    struct alignas(64) Slot {
        std::vector<ScannedPath> found;
    };
    const DeepScanFilter& filter_;
    const CancelToken& token_;
    std::vector<Slot> slots_;
};

void collect(const EngineContext& context, const Root& root, std::vector<ScannedPath>& all) {
    const Platform& platform = context.platform();
    const Path start = walkStart(context, root);
    const DeepScanFilter filter(platform, context.layout(), start);
    if (filter.excludesAll() || DeepScanFilter(platform, context.layout(), root.path).excludesAll()) {
        return;
    }
    walk::Options options;
    options.wantsNames = filter.wantsNames();
    options.cancelled = &context.token().flag();
    options.isPackage = [&platform](const Path& folder) { return platform.isPackage(folder); };
    Collector collector(filter, context.token(), walk::workerCount(options));
    walk::walk(start, options, collector); // an unreadable root has no large files
    collector.moveInto(all);
}

void keepLargest(std::vector<ScannedPath>& paths, std::size_t limit) {
    const std::size_t kept = std::min(limit, paths.size());
    std::ranges::partial_sort(paths, paths.begin() + static_cast<std::ptrdiff_t>(kept), isLarger);
    paths.resize(kept);
}

CleanupItem row(EngineContext& context, const ScannedPath& file) {
    CleanupItem item;
    item.module = CleanerModule::largeFiles;
    item.title = displayName(file.url);
    item.description = displayPath(context.layout(), file.url.parent_path());
    item.bytes = file.bytes;
    item.files = 1;
    item.symbol = symbolFor(context, file.url);
    item.tint = Tint::indigo;
    item.risk = CleanupRisk::cautious;
    item.isCleanable = true;
    item.targets = {target(context, file.url, PathStats{.bytes = file.bytes, .files = file.files}, false)};
    return item;
}

FileCandidate candidate(const EngineContext& context, const ScannedPath& file) {
    FileCandidate line;
    line.name = displayName(file.url);
    line.location = displayPath(context.layout(), file.url.parent_path());
    line.size = byteCountText(file.bytes);
    line.modified = relativeDate(context, file.modified);
    line.symbol = symbolFor(context, file.url);
    line.url = file.url;
    return line;
}

} // namespace

std::vector<ScannedPath> largeFiles(EngineContext& context, std::size_t limit) {
    std::vector<ScannedPath> found;
    for (const Root& root : searchRoots(context)) {
        context.throwIfCancelled();
        collect(context, root, found);
    }
    context.throwIfCancelled();
    keepLargest(found, limit);
    return found;
}

// The flag changes nothing: each large file waits for its own tick.
std::vector<CleanupItem> largeFileItems(EngineContext& context, bool /*selectedByDefault*/) {
    std::vector<CleanupItem> items;
    for (const ScannedPath& file : largeFiles(context, rowLimit)) {
        items.push_back(row(context, file));
    }
    return items;
}

std::vector<FileCandidate> makeFileCandidates(const EngineContext& context, const std::vector<CleanupItem>& items) {
    std::vector<ScannedPath> files;
    for (const CleanupItem& item : items) {
        if (item.module != CleanerModule::largeFiles) {
            continue;
        }
        for (const CleanupTarget& target : item.targets) {
            if (target.bytes >= 1) {
                files.push_back({.url = target.url,
                                 .bytes = target.bytes,
                                 .files = target.files,
                                 .modified = modificationDate(context, target.url)});
            }
        }
    }
    keepLargest(files, candidateLimit);
    std::vector<FileCandidate> lines;
    for (const ScannedPath& file : files) {
        lines.push_back(candidate(context, file));
    }
    return lines;
}

} // namespace vellmoor
