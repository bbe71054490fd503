#include "scan/UserPlaces.h"

#include "disk/Paths.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace vellmoor {
namespace {

using Folders = std::vector<Path>;

/// Whether one of `paths` equals or lies below one of `folders`.
bool anyAtOrBelow(const Folders& paths, const Folders& folders) {
    return std::ranges::any_of(paths, [&](const Path& path) {
        return std::ranges::any_of(folders, [&](const Path& folder) { return isAtOrBelow(path, folder); });
    });
}

/// Each as the desktop names it, else as the layout does.
Folders named(const Folders& named, const Folders& fallbacks) {
    Folders folders = named;
    for (std::size_t index = 0; index < folders.size() && index < fallbacks.size(); ++index) {
        if (folders[index].empty()) {
            folders[index] = fallbacks[index];
        }
    }
    return folders;
}

} // namespace

const UserPlaces& UserPlaces::of(EngineContext& context) {
    struct Known {
        std::optional<UserPlaces> places;
    };
    std::optional<UserPlaces>& known = context.remembered<Known>().places;
    if (!known) {
        known.emplace(context);
    }
    return *known;
}

UserPlaces::UserPlaces(const EngineContext& context)
    : platform_(context.platform()),
      bases_(context.layout().bases),
      home_(formsOf(context.layout().home)) {
    const SystemLayout& layout = context.layout();
    const UserFolders folders = platform_.userFolders();
    everyday_ = named({folders.downloads, folders.desktop, folders.documents, folders.videos, folders.pictures},
                      layout.largeFileRoots);
    const Folders further = named({folders.music, folders.publicShare, folders.templates}, layout.furtherUserFolders);
    for (Path& folder : everyday_) {
        folder = folder.empty() || anyAtOrBelow(home_, formsOf(folder)) ? Path() : platform_.standardized(folder);
    }
    Folders all = everyday_;
    std::ranges::copy(further, std::back_inserter(all));
    for (const Path& folder : all) {
        const Forms forms = folder.empty() ? Forms() : formsOf(folder);
        if (!anyAtOrBelow(home_, forms)) {
            std::ranges::copy(forms, std::back_inserter(userFolders_));
        }
    }
}

UserPlaces::Forms UserPlaces::formsOf(const Path& path) const {
    Forms forms{platform_.standardized(path)};
    if (std::optional<Path> real = platform_.realPath(path); real && *real != forms.front()) {
        forms.push_back(*std::move(real));
    }
    return forms;
}

UserPlaces::Forms UserPlaces::formsOfAll(const std::vector<Path>& paths) const {
    Forms all;
    for (const Path& path : paths) {
        std::ranges::move(formsOf(path), std::back_inserter(all));
    }
    return all;
}

bool UserPlaces::holdsUserFolder(const Path& path) const {
    Forms forms{platform_.standardized(path)}; // a link holds nothing: only the folders above it are resolved
    if (std::optional<Path> real = platform_.realPlace(path)) {
        forms.push_back(*std::move(real));
    }
    return anyAtOrBelow(userFolders_, forms) || anyAtOrBelow(home_, forms);
}

bool UserPlaces::liesInUserFolder(const Path& path) const {
    return anyAtOrBelow(formsOf(path), userFolders_);
}

bool UserPlaces::isFit(const Path& folder, BaseOrigin origin) const {
    if (origin == BaseOrigin::Fixed) {
        return true;
    }
    const auto [known, isNew] = fit_.try_emplace({folder.native(), origin});
    if (isNew) {
        known->second = findFit(folder, origin);
    }
    return known->second;
}

bool UserPlaces::findFit(const Path& folder, BaseOrigin origin) const {
    const Forms forms = formsOf(folder);
    if (anyAtOrBelow(home_, forms) || anyAtOrBelow(forms, userFolders_)) {
        return false;
    }
    Folders others{bases_.config, bases_.data, bases_.cache, bases_.state};
    if (origin == BaseOrigin::Tool) {
        return !anyAtOrBelow(userFolders_, forms) && !anyAtOrBelow(formsOfAll(others), forms);
    }
    if (const auto itself = std::ranges::find(others, folder); itself != others.end()) {
        others.erase(itself); // once: where CACHE is also STATE, the other one stays
    }
    return !anyAtOrBelow(formsOfAll(others), forms) && !anyAtOrBelow(forms, formsOfAll({bases_.config, bases_.data}));
}

} // namespace vellmoor
