#include "junk/SystemJunk.h"

#include "scan/PathMeasurement.h"

#include <algorithm>
#include <chrono>

namespace vellmoor {
namespace {

constexpr std::chrono::hours downloadAge{7 * 24};

CategorySpec specOf(const EngineContext& context, const JunkCategory& category) {
    CategorySpec spec;
    spec.module = CleanerModule::systemJunk;
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

/// A listed folder that exists but holds nothing makes its row disappear; a missing one leaves it as information.
bool isEmptyListing(const EngineContext& context, const JunkCategory& category, const CleanupItem& item) {
    return item.targets.empty() && std::ranges::any_of(category.roots, [&](const RootPattern& pattern) {
               return !pattern.components.empty() && context.platform().exists(pattern.base);
           });
}

CleanupItem downloadLeftovers(EngineContext& context) {
    CategorySpec spec;
    spec.module = CleanerModule::systemJunk;
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
        CategorySpec spec = specOf(context, category);
        spec.roots = expandRoots(context, category.roots);
        if (category.risk != CleanupRisk::safe) {
            context.throwIfCancelled();
        }
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
    const DownloadRule& rule = context.layout().downloads;
    const Path named = context.platform().userFolders().downloads;
    const TimePoint cutOff = context.now() - downloadAge;
    std::vector<Path> kept;
    for (const Path& path : visibleChildren(context, named.empty() ? rule.folder : named)) {
        if (std::ranges::find(rule.extensions, lowerExtension(path)) == rule.extensions.end()) {
            continue;
        }
        if (modificationDate(context, path).value_or(TimePoint::min()) < cutOff) {
            kept.push_back(path);
        }
    }
    return kept;
}

} // namespace vellmoor
