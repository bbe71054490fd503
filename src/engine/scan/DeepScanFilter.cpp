#include "scan/DeepScanFilter.h"

#include "disk/Glob.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {
namespace {

bool isNumberedTrash(std::string_view component) {
    constexpr std::string_view prefix = ".Trash-";
    return component.starts_with(prefix) && component.size() > prefix.size() &&
           component.find_first_not_of("0123456789", prefix.size()) == std::string_view::npos;
}

bool isExcludedName(const DeepScanRules& rules, std::string_view name) {
    return std::ranges::find(rules.names, name) != rules.names.end() ||
           std::ranges::any_of(rules.nameEndings, [&](const std::string& ending) { return name.ends_with(ending); });
}

std::size_t lastByte(std::string_view name) {
    return name.empty() ? 0 : static_cast<unsigned char>(name.back());
}

bool isCloudName(const DeepScanRules& rules, std::string_view name) {
    return std::ranges::any_of(rules.homeNames, [&](const std::string& pattern) { return globMatches(pattern, name); });
}

/// The direct child of `home` that `path` is or lies below, if that is a cloud folder.
bool liesInCloudFolder(const DeepScanRules& rules, const Path& home, const Path& path) {
    if (rules.homeNames.empty() || !isStrictlyBelow(path, home)) {
        return false;
    }
    const std::string_view rest = std::string_view(path.native()).substr(home.native().size() + 1);
    return isCloudName(rules, rest.substr(0, rest.find('/')));
}

bool liesInAny(const std::vector<Path>& folders, const Path& path) {
    return std::ranges::any_of(folders, [&](const Path& folder) { return isAtOrBelow(path, folder); });
}

} // namespace

bool liesInTrash(const DeepScanRules& rules, const Path& path) {
    if (containsAny(path.native(), rules.trashFragments) ||
        std::ranges::any_of(rules.trashFolders, [&](const Path& folder) { return isStrictlyBelow(path, folder); })) {
        return true;
    }
    return rules.numberedTrash &&
           std::ranges::any_of(path, [](const Path& component) { return isNumberedTrash(component.native()); });
}

bool isReachedFrom(const Platform& platform, const Path& below, const Path& above) {
    if (!isStrictlyBelow(below, above)) {
        return false;
    }
    for (Path place = below; place != above; place = place.parent_path()) {
        if (place.filename().native().starts_with('.') || platform.isMountPoint(place)) {
            return false;
        }
    }
    return true;
}

DeepScanFilter::DeepScanFilter(const Platform& platform, const SystemLayout& layout, const Path& root,
                               const KeptPaths& kept)
    : rules_(layout.deepScan),
      home_(platform.standardized(layout.home)),
      trashFolders_(rules_.trashFolders),
      kept_(kept.placesBelow(platform, root)) {
    // A home behind a link has two spellings; the walk may start from either.
    for (const Path& folder : rules_.trashFolders) {
        if (const auto real = platform.realPath(folder); real && *real != folder) {
            trashFolders_.push_back(*real);
        }
    }
    for (const auto* const excluded : {&rules_.names, &rules_.nameEndings}) {
        for (const std::string& name : *excluded) {
            mayBeExcluded_.at(lastByte(name)) = true;
        }
    }
    const Path start = platform.standardized(root);
    const bool rootInTrash = liesInTrash(rules_, start) || std::ranges::any_of(trashFolders_, [&](const Path& folder) {
                                 return isStrictlyBelow(start, folder);
                             });
    trashRule_ = !rootInTrash;
    rootIsHome_ = start == home_;
    excludesAll_ = (start != Path("/") && excludesFolder(start)) || kept.covers(platform, root);
}

bool DeepScanFilter::excludesName(std::string_view name, std::uint32_t depth) const {
    if (mayBeExcluded_[lastByte(name)] && isExcludedName(rules_, name)) {
        return true;
    }
    return rootIsHome_ && depth == 1 && isCloudName(rules_, name);
}

bool DeepScanFilter::mayBeKept(std::string_view name) const {
    return std::ranges::any_of(kept_, [&](const Path& kept) { return kept.filename().native() == name; });
}

bool DeepScanFilter::isKept(const Path& path) const {
    return std::ranges::find(kept_, path) != kept_.end();
}

bool DeepScanFilter::excludesFolder(const Path& folder) const {
    const std::string inside = folder.native() + "/";
    if (containsAny(inside, rules_.fragments)) {
        return true;
    }
    if (trashRule_) {
        if (containsAny(inside, rules_.trashFragments) || liesInAny(trashFolders_, folder)) {
            return true;
        }
        if (rules_.numberedTrash && inside.contains("/.Trash-") && liesInTrash(rules_, folder)) {
            return true;
        }
    }
    return liesInCloudFolder(rules_, home_, folder);
}

bool DeepScanFilter::marksSyncRoot(std::span<const std::string_view> names) const {
    return std::ranges::any_of(names, [&](std::string_view name) {
        // Every marker is a hidden name; this keeps the common case cheap.
        return name.starts_with('.') && std::ranges::any_of(rules_.markers, [&](const std::string& marker) {
                   return globMatches(marker, name);
               });
    });
}

} // namespace vellmoor
