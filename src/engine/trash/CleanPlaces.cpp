#include "trash/CleanPlaces.h"

#include "trash/Trash.h"

#include <algorithm>
#include <iterator>

namespace vellmoor {
namespace {

/// The folders that the rules themselves open through links: users move whole folders to other disks.
std::vector<Path> anchors(const EngineContext& context, const PathGuard& guard) {
    std::vector<Path> all = guard.folders();
    for (const JunkCategory& category : context.layout().junk) {
        std::ranges::transform(category.roots, std::back_inserter(all), &RootPattern::base);
    }
    for (const BrowserTraces& browser : context.layout().privacy.browsers) {
        for (const BrowserFolder& folder : browser.folders) {
            all.insert(all.end(), {folder.userData, folder.cache});
        }
    }
    std::erase_if(all, [](const Path& path) { return !path.is_absolute(); });
    return all;
}

} // namespace

TrashPlaces cleanPlaces(const EngineContext& context, const TrashedPaths& trashed, const PathGuard& guard) {
    const TrashLayout& layout = context.layout().trash;
    return {.home = homeTrash(layout),
            .known = trashed.folders(),
            .volumeForms = layout.volumeForms,
            .anchors = anchors(context, guard),
            .stop = &context.token()};
}

} // namespace vellmoor
