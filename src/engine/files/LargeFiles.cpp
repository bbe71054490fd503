#include "files/LargeFiles.h"

#include "PercentText.h"
#include "Platform.h"
#include "ThreadPolicy.h"
#include "disk/Paths.h"
#include "found/ScanSnapshot.h"
#include "scan/DeepWalk.h"
#include "scan/PathMeasurement.h"
#include "scan/UserPlaces.h"
#include "texts/ByteCount.h"

#include <algorithm>
#include <chrono>
#include <future>
#include <iterator>
#include <limits>
#include <optional>
#include <system_error>
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

/// Those that exist, once each.
std::vector<Root> searchRoots(EngineContext& context) {
    const Platform& platform = context.platform();
    std::vector<Root> roots;
    for (const Path& path : UserPlaces::of(context).everyday()) {
        if (const auto real = path.empty() ? std::nullopt : platform.realPath(path)) {
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

void collect(EngineContext& context, const Root& root, std::vector<ScannedPath>& all) {
    const Platform& platform = context.platform();
    if (DeepScanFilter(platform, context.layout(), root.path).excludesAll()) {
        return;
    }
    walk::Options options;
    options.isPackage = [&platform](const Path& folder) { return platform.isPackage(folder); };
    const auto keepLarge = [](const walk::Entry& entry, std::vector<ScannedPath>& found) {
        if (entry.allocatedBytes >= thresholdBytes) {
            found.push_back({.url = entry.path(),
                             .bytes = entry.allocatedBytes,
                             .files = 1,
                             .modified = timePoint(entry.modifiedNs)});
        }
    };
    // An unreadable root has no large files, and of a walk that was cut short each file that it found is true.
    auto walked = deepWalk<std::vector<ScannedPath>>(context, walkStart(context, root), options, keepLarge);
    for (auto& slot : walked.slots) {
        std::ranges::move(slot.found, std::back_inserter(all));
    }
}

std::vector<ScannedPath> search(EngineContext& context) {
    std::vector<ScannedPath> found;
    for (const Root& root : searchRoots(context)) {
        context.throwIfCancelled();
        collect(context, root, found);
    }
    return found;
}

/// Of a call; not valid: none was begun.
struct SearchAhead {
    std::shared_future<std::vector<ScannedPath>> files;
};

void keepLargest(std::vector<ScannedPath>& paths, std::size_t limit) {
    const std::size_t kept = std::min(limit, paths.size());
    std::ranges::partial_sort(paths, paths.begin() + static_cast<std::ptrdiff_t>(kept), isLarger);
    paths.resize(kept);
}

CleanupItem row(EngineContext& context, const ScannedPath& file) {
    CleanupItem item;
    item.module = CleanerModule::largeFiles;
    item.key = percentEncoded(file.url.native());
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

void searchLargeFilesAhead(EngineContext& context) {
    std::shared_future<std::vector<ScannedPath>>& ahead = context.remembered<SearchAhead>().files;
    if (ahead.valid()) {
        return;
    }
    const auto begin = [&platform = context.platform(), &layout = context.layout(), &token = context.token(),
                        now = context.now(), urgency = walk::ThreadUrgency::ofThisThread()] {
        urgency.adopt();
        EngineContext own(platform, layout, token, now);
        return search(own);
    };
    try {
        ahead = std::async(std::launch::async, begin).share(); // the context waits for it before it goes
    } catch (const std::system_error&) {
        ahead = {}; // no thread to be had: they are searched when they are asked for
    }
}

std::vector<ScannedPath> largeFiles(EngineContext& context, std::size_t limit) {
    const auto& ahead = context.remembered<SearchAhead>().files;
    std::vector<ScannedPath> found = ahead.valid() ? ahead.get() : search(context);
    context.throwIfCancelled();
    keepLargest(found, limit);
    return found;
}

LargeFileRows largeFileRows(EngineContext& context) {
    LargeFileRows rows;
    for (const ScannedPath& file : largeFiles(context, std::numeric_limits<std::size_t>::max())) {
        (rows.listed.size() < rowLimit ? rows.listed : rows.further).push_back(row(context, file));
    }
    return rows;
}

// The flag changes nothing: each large file waits for its own tick.
std::vector<CleanupItem> largeFileItems(EngineContext& context, bool /*selectedByDefault*/) {
    return largeFileRows(context).listed;
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
