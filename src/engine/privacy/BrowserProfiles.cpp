#include "privacy/BrowserProfiles.h"

#include "disk/Paths.h"
#include "scan/AccessLimited.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace vellmoor {
namespace {

/// "Profile 2" before "Profile 10", and "Default" before both.
bool precedes(std::string_view a, std::string_view b) {
    return std::pair(a.size(), a) < std::pair(b.size(), b);
}

bool holdsFile(const Platform& platform, const Path& folder, std::string_view name) {
    const std::optional<FileFacts> facts = platform.facts(folder / name);
    return facts && facts->isRegularFile;
}

/// The direct child folders that hold the plain file `mark`.
std::vector<Path> markedChildren(const Platform& platform, const Path& folder, std::string_view mark) {
    const auto entries = platform.entries(folder);
    if (!entries) {
        return {};
    }
    std::vector<std::string> names;
    for (const FolderEntry& entry : *entries) {
        if (entry.isDirectory && holdsFile(platform, folder / entry.name, mark)) {
            names.push_back(entry.name);
        }
    }
    std::ranges::sort(names, precedes);
    std::vector<Path> children;
    for (const std::string& name : names) {
        children.push_back(folder / name);
    }
    return children;
}

constexpr std::string_view chromiumMark = "Preferences";

/// The two folders left out are the browser's own.
std::vector<BrowserProfile> chromiumProfiles(const Platform& platform, const BrowserFolder& folder) {
    std::vector<BrowserProfile> profiles;
    for (const Path& child : markedChildren(platform, folder.userData, chromiumMark)) {
        const Path name = child.filename();
        if (name != "System Profile" && name != "Guest Profile") {
            profiles.push_back({child, folder.cache / name, !folder.insideConfig});
        }
    }
    return profiles;
}

std::vector<BrowserProfile> operaProfiles(const Platform& platform, const BrowserFolder& folder) {
    std::vector<BrowserProfile> profiles = chromiumProfiles(platform, folder);
    if (platform.isFolder(folder.userData) && holdsFile(platform, folder.userData, chromiumMark)) {
        profiles.insert(profiles.begin(), {folder.userData, folder.cache, !folder.insideConfig});
    }
    return profiles;
}

/// The folder that a [Profile] group of profiles.ini in `root` names.
std::optional<Path> namedProfile(const Path& root, const std::map<std::string, std::string>& group) {
    const auto path = group.find("Path");
    if (path == group.end() || path->second.empty()) {
        return std::nullopt;
    }
    const auto relative = group.find("IsRelative");
    if (relative != group.end() && relative->second == "1") {
        return lexicallyStandardized(root.native() + "/" + path->second);
    }
    if (!path->second.starts_with('/')) {
        return std::nullopt;
    }
    return lexicallyStandardized(path->second);
}

std::vector<Path> profilesOfIni(const Platform& platform, const Path& root) {
    const std::optional<KeyFile> ini = platform.keyFile(root / "profiles.ini");
    if (!ini) {
        return {};
    }
    std::vector<std::string> groups;
    for (const auto& [name, keys] : *ini) {
        if (name.starts_with("Profile")) {
            groups.push_back(name);
        }
    }
    std::ranges::sort(groups, precedes);
    std::vector<Path> profiles;
    for (const std::string& group : groups) {
        if (auto profile = namedProfile(root, ini->at(group))) {
            profiles.push_back(std::move(*profile));
        }
    }
    return profiles;
}

std::vector<BrowserProfile> firefoxProfiles(const Platform& platform, const BrowserFolder& folder) {
    std::vector<Path> paths = profilesOfIni(platform, folder.userData);
    std::ranges::move(markedChildren(platform, folder.userData, "prefs.js"), std::back_inserter(paths));
    std::vector<BrowserProfile> profiles;
    for (const Path& path : paths) {
        const auto known = std::ranges::find(profiles, path, &BrowserProfile::profile);
        if (known != profiles.end() || path.filename().empty() || !platform.isFolder(path)) {
            continue;
        }
        profiles.push_back({path, folder.cache / path.filename(), !isStrictlyBelow(path, folder.userData)});
    }
    return profiles;
}

std::vector<BrowserProfile> profilesIn(const Platform& platform, ProfileSearch search, const BrowserFolder& folder) {
    switch (search) {
    case ProfileSearch::Chromium:
        return chromiumProfiles(platform, folder);
    case ProfileSearch::Opera:
        return operaProfiles(platform, folder);
    case ProfileSearch::Firefox:
        return firefoxProfiles(platform, folder);
    case ProfileSearch::FolderItself:
        break;
    }
    return {{folder.userData, folder.cache, false}};
}

/// Whether the browser gives its profiles such names; Firefox's family gives any.
bool mayNameProfile(ProfileSearch search, std::string_view name) {
    switch (search) {
    case ProfileSearch::Chromium:
    case ProfileSearch::Opera:
        return name == "Default" || name.starts_with("Profile ");
    case ProfileSearch::Firefox:
        return name.contains('.') || name.contains('-');
    case ProfileSearch::FolderItself:
        break;
    }
    return false;
}

} // namespace

std::vector<Path> closedProfiles(const Platform& platform, const BrowserTraces& browser) {
    std::vector<Path> closed;
    for (const BrowserFolder& folder : browser.folders) {
        const auto entries = platform.entries(folder.userData);
        for (const FolderEntry& entry : entries.value_or(std::vector<FolderEntry>{})) {
            const Path profile = folder.userData / entry.name;
            if (entry.isDirectory && mayNameProfile(browser.search, entry.name) && closedFolder(platform, profile)) {
                closed.push_back(profile);
            }
        }
    }
    std::ranges::sort(closed);
    return closed;
}

std::vector<BrowserProfile> browserProfiles(const Platform& platform, const BrowserTraces& browser) {
    std::vector<BrowserProfile> profiles;
    for (const BrowserFolder& folder : browser.folders) {
        std::ranges::move(profilesIn(platform, browser.search, folder), std::back_inserter(profiles));
    }
    return profiles;
}

} // namespace vellmoor
