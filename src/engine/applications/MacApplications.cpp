#include "applications/AppUninstaller.h"
#include "applications/Applications.h"
#include "desktop/AppNames.h"
#include "disk/Paths.h"

namespace vellmoor {
namespace {

bool hasExtension(const EngineContext& context, const std::string& name, const std::string& extension) {
    return context.platform().lowerCase(Path(name).extension().string()) == "." + extension;
}

/// An application that lies on the system's own image may be shown here through a link of the file system.
bool isProtected(const EngineContext& context, const Path& bundle) {
    const std::optional<Path> real = context.platform().realPath(bundle);
    return isProtectedSystemAppPath(context, bundle) || (real && isProtectedSystemAppPath(context, *real));
}

ApplicationMetadata appMetadata(const EngineContext& context, const Path& bundle) {
    const std::optional<BundleInfo> info = context.platform().bundleInfo(bundle);
    return {.appURL = bundle,
            .displayName = bundleName(context, bundle),
            .bundleIdentifier = info ? info->identifier : std::nullopt,
            .kind = ApplicationKind::Bundle};
}

} // namespace

std::vector<ApplicationMetadata> installedBundles(EngineContext& context) {
    const AppLayout& layout = context.layout().apps;
    std::vector<ApplicationMetadata> found;
    for (const Path& folder : layout.bundleFolders) {
        const auto entries = context.platform().entries(folder);
        if (!entries) {
            continue; // a missing folder holds no applications
        }
        for (const FolderEntry& entry : *entries) {
            context.throwIfCancelled();
            const Path path = folder / entry.name;
            if (entry.isHidden || !entry.isDirectory || entry.isSymlink ||
                !hasExtension(context, entry.name, layout.bundleExtension) || isProtected(context, path)) {
                continue;
            }
            found.push_back(appMetadata(context, path));
        }
    }
    return found;
}

} // namespace vellmoor
