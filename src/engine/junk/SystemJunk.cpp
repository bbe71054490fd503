#include "junk/SystemJunk.h"

#include "disk/Paths.h"
#include "scan/PathMeasurement.h"
#include "scan/UserPlaces.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

namespace vellmoor {
namespace {

constexpr std::chrono::hours downloadAge{7 * 24};

CategorySpec specOf(const EngineContext& context, const JunkCategory& category) {
    CategorySpec spec;
    spec.module = CleanerModule::systemJunk;
    spec.key = rowKey(CleanerModule::systemJunk, category.key);
    spec.title = L::tr(category.title);
    spec.description = category.argument.empty()
                           ? L::tr(category.description)
                           : L::tr(category.description, displayPath(context.layout(), category.argument));
    spec.symbol = category.symbol;
    spec.tint = category.tint;
    spec.risk = category.risk;
    spec.cleanable = true;
    spec.selected = category.selected;
    spec.sameness = category.changesByItself ? Sameness::Kind : Sameness::Content;
    return spec;
}

/// Folders that are there but list nothing make the row disappear; missing ones leave it as information.
bool isEmptyListing(const EngineContext& context, const JunkCategory& category, const CleanupItem& item) {
    std::vector<Path> present = category.listed;
    std::erase_if(present, [&](const Path& folder) { return !context.platform().exists(folder); });
    return item.targets.empty() && !present.empty() &&
           std::ranges::all_of(present, [&](const Path& folder) { return visibleChildren(context, folder).empty(); });
}

/// Without those that equal another one, or lie below it; the first of equal ones stays.
void keepOutermost(const EngineContext& context, std::vector<Path>& roots) {
    std::vector<Path> places;
    for (const Path& root : roots) {
        places.push_back(context.platform().realPlace(root).value_or(root));
    }
    std::vector<Path> kept;
    for (std::size_t index = 0; index < roots.size(); ++index) {
        const Path& place = places[index];
        const bool isInside =
            std::ranges::any_of(places, [&](const Path& other) { return isStrictlyBelow(place, other); });
        const auto first = std::ranges::find(places, place) - places.begin();
        if (!isInside && first == static_cast<std::ptrdiff_t>(index)) {
            kept.push_back(roots[index]);
        }
    }
    roots = std::move(kept);
}

/// What the category's patterns find. Nothing when its folder is none that may be listed; never what lies in the user's
/// own folders.
std::vector<Path> rootsOf(EngineContext& context, const JunkCategory& category) {
    const UserPlaces& places = UserPlaces::of(context);
    if (!category.argument.empty() && !places.isFit(category.argument, BaseOrigin::BaseFolder)) {
        return {};
    }
    std::vector<Path> roots = expandRoots(context, category.roots);
    std::erase_if(roots, [&](const Path& root) { return places.liesInUserFolder(root); });
    if (category.countsOnce) {
        keepOutermost(context, roots);
    }
    return roots;
}

CleanupItem downloadLeftovers(EngineContext& context) {
    CategorySpec spec;
    spec.module = CleanerModule::systemJunk;
    spec.key = rowKey(CleanerModule::systemJunk, "downloadLeftovers");
    spec.title = L::tr("下载残留");
    spec.description = L::tr("下载目录中的旧安装包、磁盘映像和压缩包");
    spec.roots = downloadResidualFiles(context);
    spec.symbol = "arrow.down.doc";
    spec.tint = Tint::pink;
    spec.risk = CleanupRisk::cautious;
    return categoryItem(context, spec);
}

bool isNothing(const CleanupItem& item) {
    return item.isCleanable && item.bytes < 1 && item.files < 1;
}

} // namespace

std::vector<CleanupItem> systemJunkItems(EngineContext& context) {
    std::vector<CleanupItem> items;
    for (const JunkCategory& category : context.layout().junk) {
        context.throwIfCancelled();
        CategorySpec spec = specOf(context, category);
        spec.roots = rootsOf(context, category);
        CleanupItem item = categoryItem(context, spec);
        if (!isEmptyListing(context, category, item)) {
            items.push_back(std::move(item));
        }
    }
    context.throwIfCancelled();
    items.push_back(downloadLeftovers(context));
    std::erase_if(items, isNothing);
    return items;
}

std::vector<Path> downloadResidualFiles(EngineContext& context) {
    const std::vector<std::string>& extensions = context.layout().installerExtensions;
    const Path& folder = UserPlaces::of(context).downloads();
    const TimePoint cutOff = context.now() - downloadAge;
    std::vector<Path> kept;
    if (folder.empty()) {
        return kept; // switched off
    }
    for (const Path& path : visibleChildren(context, folder)) {
        if (std::ranges::find(extensions, lowerExtension(path)) == extensions.end()) {
            continue;
        }
        if (modificationDate(context, path).value_or(TimePoint::min()) < cutOff) {
            kept.push_back(path);
        }
    }
    return kept;
}

} // namespace vellmoor
