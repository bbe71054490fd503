#include "privacy/Privacy.h"

#include "disk/Glob.h"
#include "disk/Paths.h"
#include "privacy/BrowserProfiles.h"
#include "processes/ProcessTable.h"
#include "scan/AccessLimited.h"
#include "scan/PathMeasurement.h"

#include <algorithm>
#include <iterator>
#include <optional>
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
        if (globMatches(pattern, entry.name) && !globMatches(trace.except, entry.name)) {
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

/// "gnome-web-flatpak" for "GNOME Web (Flatpak)".
std::string slug(const Platform& platform, std::string_view name) {
    std::string text;
    for (const char c : platform.lowerCase(name)) {
        if ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')) {
            text += c;
        } else if (!text.empty() && text.back() != '-') {
            text += '-';
        }
    }
    text.erase(text.find_last_not_of('-') + 1);
    return text;
}

BrowserPrivacyDefinition definition(const Platform& platform, const BrowserTraces& browser,
                                    const std::vector<BrowserProfile>& profiles) {
    BrowserPrivacyDefinition result{browser.name, browser.processNames, browser.symbol, browser.tint, {}};
    for (const TraceCategory& category : browser.categories) {
        const std::string& reason = category.previewReason;
        const std::string plain = L::tr(category.description);
        result.categories.push_back({rowKey(CleanerModule::privacy, slug(platform, browser.name) + "/" + category.key),
                                     L::tr(category.title), category.note.empty() ? plain : L::tr(category.note, plain),
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
    spec.key = category.key;
    spec.title = browser.name + " " + category.title;
    spec.description = stateText(browser, category, running);
    spec.roots = std::move(existing);
    spec.symbol = browser.symbol;
    spec.tint = browser.tint;
    spec.risk = category.risk;
    spec.cleanable = !running && category.previewReason.empty();
    spec.selected = false;
    spec.splitting = Splitting::Never; // a database, or a store with an index
    return spec;
}

/// Whether profiles of no other browser lie in `folder`. A closed folder that several share says nothing about any one
/// of them; the permission hint tells of it.
bool belongsTo(const BrowserTraces& browser, const Path& folder, const PrivacyLayout& layout) {
    return std::ranges::all_of(layout.browsers, [&](const BrowserTraces& other) {
        return other.name == browser.name || std::ranges::none_of(other.folders, [&](const BrowserFolder& its) {
                   return isAtOrBelow(its.userData, folder);
               });
    });
}

/// A browser, or one of its profiles, that would vanish from the list only because it cannot be read.
void appendClosedProfiles(const EngineContext& context, const BrowserTraces& browser, std::vector<CleanupItem>& rows) {
    std::vector<Path> all;
    for (const BrowserFolder& folder : browser.folders) {
        const std::optional<Path> closed = closedFolder(context.platform(), folder.userData);
        if (closed && belongsTo(browser, *closed, context.layout().privacy) &&
            std::ranges::find(all, *closed) == all.end()) {
            all.push_back(*closed);
        }
    }
    std::ranges::move(closedProfiles(context.platform(), browser), std::back_inserter(all));
    for (const Path& closed : all) {
        rows.push_back(accessLimitedRow(CleanerModule::privacy, browser.name,
                                        L::tr("无法读取 %@ 的配置文件，请检查权限", browser.name), closed));
    }
}

} // namespace

std::vector<BrowserPrivacyDefinition> browserPrivacyDefinitions(const Platform& platform, const SystemLayout& layout) {
    std::vector<BrowserPrivacyDefinition> definitions;
    for (const BrowserTraces& browser : layout.privacy.browsers) {
        definitions.push_back(definition(platform, browser, browserProfiles(platform, browser)));
    }
    return definitions;
}

std::vector<CleanupItem> privacyItems(EngineContext& context) {
    const PrivacyLayout& layout = context.layout().privacy;
    std::vector<CleanupItem> items;
    for (const BrowserTraces& traces : layout.browsers) {
        const std::vector<BrowserProfile> profiles = browserProfiles(context.platform(), traces);
        if (layout.dropsMissing) {
            appendClosedProfiles(context, traces, items);
            if (profiles.empty()) {
                continue; // as for most browsers of the table
            }
        }
        const BrowserPrivacyDefinition browser = definition(context.platform(), traces, profiles);
        const bool running = std::ranges::any_of(
            browser.processNames, [&](const std::string& name) { return runningNames(context).contains(name); });
        for (const PrivacyCategory& category : browser.categories) {
            context.throwIfCancelled();
            std::vector<Path> existing = category.urls;
            std::erase_if(existing, [&](const Path& path) {
                return !context.platform().exists(path) || keptPaths(context).covers(context.platform(), path);
            });
            if (!existing.empty() || !layout.dropsMissing) {
                items.push_back(categoryItem(context, row(browser, category, std::move(existing), running)));
            }
        }
    }
    return items;
}

} // namespace vellmoor
