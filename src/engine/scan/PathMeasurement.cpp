#include "scan/PathMeasurement.h"

#include "CheckedMath.h"
#include "Platform.h"
#include "disk/Paths.h"
#include "scan/DeepWalk.h"
#include "scan/UserPlaces.h"

#include <algorithm>

namespace vellmoor {
namespace {

PathStats folderStats(EngineContext& context, const Path& folder) {
    const auto add = [](const walk::Entry& entry, PathStats& total) {
        total.bytes = checkedAdd(total.bytes, entry.allocatedBytes);
        total.files = checkedAdd<std::int64_t>(total.files, 1);
    };
    const auto walked = deepWalk<PathStats>(context, folder, {}, add);
    PathStats all;
    for (const auto& slot : walked.slots) {
        all.bytes = checkedAdd(all.bytes, slot.found.bytes);
        all.files = checkedAdd(all.files, slot.found.files);
    }
    all.isAtLeast = walked.outcome == walk::Outcome::Incomplete;
    return all;
}

} // namespace

PathStats stats(EngineContext& context, const Path& path) {
    const Platform& platform = context.platform();
    if (!platform.exists(path)) {
        return {};
    }
    const std::optional<FileFacts> facts = platform.facts(path);
    if (!facts) {
        return {};
    }
    if (facts->isRegularFile) {
        return {.bytes = facts->allocatedBytes, .files = 1};
    }
    if (!facts->isDirectory) {
        return {};
    }
    const std::string key = platform.standardized(path).string();
    std::map<std::string, PathStats>& measured = context.remembered<Measurements>().byPath;
    if (const auto known = measured.find(key); known != measured.end()) {
        return known->second;
    }
    const PathStats result = folderStats(context, path);
    if (!context.isCancelled() && !result.isAtLeast) {
        measured.emplace(key, result);
    }
    return result;
}

std::optional<TimePoint> modificationDate(const EngineContext& context, const Path& path) {
    const std::optional<FileFacts> facts = context.platform().facts(path);
    return facts ? facts->modified : std::nullopt;
}

std::string relativeDate(const EngineContext& context, const std::optional<TimePoint>& date) {
    if (!date) {
        return L::tr("未知");
    }
    return context.platform().relativeDate(*date, context.now(), L::language());
}

std::string displayPath(const SystemLayout& layout, const Path& path) {
    return displayPath(path, layout.home);
}

std::string symbolFor(const EngineContext& context, const Path& path) {
    const std::string extension = lowerExtension(path);
    for (const auto& [extensions, symbol] : context.layout().symbols) {
        if (std::ranges::find(extensions, extension) != extensions.end()) {
            return symbol;
        }
    }
    const std::optional<FileFacts> facts = context.platform().facts(path);
    return facts && facts->isDirectory ? "folder" : "doc";
}

CleanupTarget target(EngineContext& context, const Path& path, const std::optional<PathStats>& known, bool selected,
                     Sameness sameness) {
    const PathStats measured = known ? *known : stats(context, path);
    const std::optional<TimePoint> modified = modificationDate(context, path);
    return {.url = path,
            .name = displayName(path),
            .location = displayPath(context.layout(), path.parent_path()),
            .bytes = measured.bytes,
            .files = measured.files,
            .modified = relativeDate(context, modified),
            .modifiedAt = modified,
            .symbol = symbolFor(context, path),
            .isAtLeast = measured.isAtLeast,
            .isSelected = selected,
            .sameness = sameness,
            .identity = context.platform().identity(path)};
}

CleanupTarget target(EngineContext& context, const Offer& offer, bool selected, Sameness sameness) {
    CleanupTarget made = target(context, offer.path, std::nullopt, selected && offer.heldBack.empty(), sameness);
    made.heldBack = offer.heldBack;
    return made;
}

CleanupItem categoryItem(EngineContext& context, const CategorySpec& spec) {
    CleanupItem item;
    item.module = spec.module;
    item.key = spec.key;
    item.title = spec.title;
    item.symbol = spec.symbol;
    item.tint = spec.tint;
    const bool preselected = spec.cleanable && spec.selected && spec.risk == CleanupRisk::safe;
    std::vector<CleanupTarget> targets;
    for (const Path& root : spec.roots) {
        if (!context.platform().exists(root) || UserPlaces::of(context).holdsUserFolder(root)) {
            continue;
        }
        for (const Offer& offer : offersOf(context, root, spec.splitting)) {
            // Measured once: the figure serves the target and the total.
            const CleanupTarget& found = targets.emplace_back(target(context, offer, preselected, spec.sameness));
            item.bytes = checkedAdd(item.bytes, found.bytes);
            item.files = checkedAdd(item.files, found.files);
            item.isAtLeast = item.isAtLeast || found.isAtLeast;
        }
    }
    targets.shrink_to_fit(); // they stay as long as the list is shown
    item.targets = std::move(targets);
    const bool mayGo = std::ranges::any_of(item.targets, &CleanupTarget::mayGo);
    item.description = item.targets.empty() ? L::tr("%@；未发现可处理项目", spec.description) : spec.description;
    item.isCleanable = spec.cleanable && mayGo;
    item.risk = item.isCleanable ? spec.risk : CleanupRisk::previewOnly;
    item.isSelected = preselected && mayGo;
    return item;
}

std::vector<Path> visibleChildren(const EngineContext& context, const Path& folder) {
    std::vector<Path> children;
    const auto entries = context.platform().entries(folder);
    if (!entries) {
        return children; // an unreadable folder is an empty one for every scanner but the Trash
    }
    for (const FolderEntry& entry : *entries) {
        if (!entry.isHidden) {
            children.push_back(folder / entry.name);
        }
    }
    return children;
}

} // namespace vellmoor
