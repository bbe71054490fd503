#include "desktop/AppNames.h"

#include "desktop/DesktopEntries.h"
#include "disk/Glob.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {
namespace {

const InstalledEntry* entryAt(EngineContext& context, const Path& path) {
    const std::vector<InstalledEntry>& entries = installedEntries(context);
    const auto found = std::ranges::find(entries, path, &InstalledEntry::path);
    return found == entries.end() ? nullptr : &*found;
}

} // namespace

bool isProtectedSystemAppPath(const EngineContext& context, const Path& given) {
    const AppLayout& layout = context.layout().apps;
    const Path path = context.platform().standardized(given);
    const Path own = context.platform().standardized(context.platform().ownPath());
    if (!own.empty() && isAtOrBelow(own, path)) {
        return true; // this program, or a folder that it runs from
    }
    return std::ranges::find(layout.protectedPaths, path) != layout.protectedPaths.end() ||
           std::ranges::any_of(layout.protectedPrefixes,
                               [&](const std::string& prefix) { return path.native().starts_with(prefix); }) ||
           containsAny(path.native(), layout.protectedFragments);
}

std::optional<Path> appLookupByBundleID(EngineContext& context, std::string_view identifier) {
    const AppLayout& layout = context.layout().apps;
    for (const Path& folder : layout.bundleFolders) {
        const auto entries = context.platform().entries(folder);
        if (!entries) {
            continue; // a missing folder holds no applications
        }
        for (const FolderEntry& entry : *entries) {
            const Path path = folder / entry.name;
            if (path.extension() != "." + layout.bundleExtension) {
                continue;
            }
            const std::optional<BundleInfo> info = context.platform().bundleInfo(path);
            if (info && info->identifier == identifier) {
                return path;
            }
        }
    }
    const std::vector<InstalledEntry>& entries = installedEntries(context);
    const auto found = std::ranges::find_if(
        entries, [&](const InstalledEntry& entry) { return entry.id == identifier && !entry.hidden; });
    return found == entries.end() ? std::nullopt : std::optional(found->path);
}

std::string bundleName(const EngineContext& context, const Path& bundle) {
    const std::optional<BundleInfo> info = context.platform().bundleInfo(bundle);
    if (info && info->displayName && !info->displayName->empty()) {
        return *info->displayName;
    }
    if (info && info->name && !info->name->empty()) {
        return *info->name;
    }
    return bundle.stem().string();
}

std::string appDisplayName(EngineContext& context, const Path& app) {
    if (const InstalledEntry* entry = entryAt(context, app)) {
        return entry->name.empty() ? entry->id : entry->name;
    }
    return bundleName(context, app);
}

std::optional<std::string> appIdentifier(EngineContext& context, const Path& app) {
    if (const InstalledEntry* entry = entryAt(context, app)) {
        return entry->id;
    }
    const std::optional<BundleInfo> info = context.platform().bundleInfo(app);
    return info ? info->identifier : std::nullopt;
}

std::string friendlyName(std::string_view identifier, std::string_view fallback) {
    while (identifier.ends_with('.')) {
        identifier.remove_suffix(1);
    }
    std::string name(identifier.substr(identifier.find_last_of('.') + 1));
    std::ranges::replace_if(name, [](char c) { return c == '-' || c == '_'; }, ' ');
    return name.empty() ? std::string(fallback) : name;
}

} // namespace vellmoor
