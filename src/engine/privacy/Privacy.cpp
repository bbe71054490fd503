#include "privacy/Privacy.h"

#include "Glob.h"
#include "privacy/BrowserProfiles.h"
#include "processes/ProcessTable.h"
#include "scan/PathMeasurement.h"

#include <algorithm>
#include <set>
#include <utility>

namespace vellmoor {
namespace {

/// `trace` below `folder`; a pattern stands for the children that it matches, by name.
std::vector<Path> pathsBelow(const Platform& platform, const Path& folder, const TracePath& trace) {
    const Path path = folder / trace.path;
    const std::string pattern = path.filename().string();
    if (!pattern.contains('*')) {
        return {path};
    }
    const auto entries = platform.entries(path.parent_path());
    std::vector<Path> matches;
    for (const FolderEntry& entry : entries.value_or(std::vector<FolderEntry>{})) {
        if (globMatches(pattern, entry.name)) {
            matches.push_back(path.parent_path() / entry.name);
        }
    }
    std::ranges::sort(matches);
    return matches;
}

/// Each path once: two profiles may share a cache folder.
std::vector<Path> tracePaths(const Platform& platform, const TraceCategory& category,
                             const std::vector<BrowserProfile>& profiles) {
    std::vector<Path> paths;
    std::set<std::string> known;
    for (const BrowserProfile& profile : profiles) {
        for (const TracePath& trace : category.paths) {
            if (trace.onlyOutside && !profile.outside) {
                continue;
            }
            const Path& folder = trace.folder == TracePath::Folder::Profile ? profile.profile : profile.cache;
            for (Path& path : pathsBelow(platform, folder, trace)) {
                if (known.insert(path.native()).second) {
                    paths.push_back(std::move(path));
                }
            }
        }
    }
    return paths;
}

BrowserPrivacyDefinition definition(const Platform& platform, const BrowserTraces& browser) {
    BrowserPrivacyDefinition result{browser.name, browser.processNames, browser.symbol, browser.tint, {}};
    const std::vector<BrowserProfile> profiles = browserProfiles(platform, browser);
    for (const TraceCategory& category : browser.categories) {
        const std::string& reason = category.previewReason;
        result.categories.push_back({L::tr(category.title), L::tr(category.description),
                                     tracePaths(platform, category, profiles), category.risk,
                                     reason.empty() ? "" : L::tr(reason, browser.name)});
    }
    return result;
}

std::string stateText(const BrowserPrivacyDefinition& browser, const PrivacyCategory& category, bool running) {
    if (!category.previewReason.empty()) {
        return category.previewReason;
    }
    return running ? L::tr("%@ 正在运行，退出浏览器后可清理 %@", browser.name, category.title)
                   : L::tr("%@，默认不勾选", category.description);
}

CategorySpec row(const BrowserPrivacyDefinition& browser, const PrivacyCategory& category, std::vector<Path> existing,
                 bool running) {
    CategorySpec spec;
    spec.module = CleanerModule::privacy;
    spec.title = browser.name + " " + category.title;
    spec.description = stateText(browser, category, running);
    spec.roots = std::move(existing);
    spec.symbol = browser.symbol;
    spec.tint = browser.tint;
    spec.risk = category.risk;
    spec.cleanable = !running && category.previewReason.empty();
    spec.selected = false;
    return spec;
}

} // namespace

std::vector<BrowserPrivacyDefinition> browserPrivacyDefinitions(const Platform& platform, const SystemLayout& layout) {
    std::vector<BrowserPrivacyDefinition> definitions;
    for (const BrowserTraces& browser : layout.privacy.browsers) {
        definitions.push_back(definition(platform, browser));
    }
    return definitions;
}

std::vector<CleanupItem> privacyItems(EngineContext& context) {
    std::vector<CleanupItem> items;
    for (const BrowserPrivacyDefinition& browser : browserPrivacyDefinitions(context.platform(), context.layout())) {
        const bool running = std::ranges::any_of(
            browser.processNames, [&](const std::string& name) { return runningNames(context).contains(name); });
        for (const PrivacyCategory& category : browser.categories) {
            context.throwIfCancelled();
            std::vector<Path> existing = category.urls;
            std::erase_if(existing, [&](const Path& path) { return !context.platform().exists(path); });
            if (!existing.empty() || !context.layout().privacy.dropsMissing) {
                items.push_back(categoryItem(context, row(browser, category, std::move(existing), running)));
            }
        }
    }
    return items;
}

} // namespace vellmoor
