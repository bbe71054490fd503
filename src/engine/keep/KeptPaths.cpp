#include "keep/KeptPaths.h"

#include "PercentText.h"
#include "ProtectedPaths.h"
#include "disk/OwnFile.h"
#include "disk/Paths.h"
#include "disk/PosixFiles.h"
#include "texts/L.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <functional>
#include <iterator>
#include <thread>
#include <utility>

namespace vellmoor {
namespace {

OwnFile listFile(const SystemLayout& layout) {
    return OwnFile(layout.stateFolder / "kept");
}

/// One percent-encoded path a line. What is no absolute path keeps nothing, and is dropped at the next change.
std::vector<Path> parsed(std::string_view text) {
    std::vector<Path> paths;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        Path path = percentDecoded(line);
        if (path.is_absolute()) {
            paths.push_back(std::move(path));
        }
    }
    return paths;
}

std::string written(const std::vector<Path>& paths) {
    std::string text;
    for (const Path& path : paths) {
        text += percentEncoded(path.native()) + "\n";
    }
    return text;
}

/// `path` as it is written, and with the links above it resolved as far up as something exists.
std::vector<Path> placeForms(const Platform& platform, const Path& path) {
    std::vector<Path> all{platform.standardized(path)};
    Path rest;
    for (Path folder = all.front(); folder.has_relative_path(); folder = folder.parent_path()) {
        rest = rest.empty() ? folder.filename() : folder.filename() / rest;
        if (const auto real = platform.realPath(folder.parent_path())) {
            all.push_back(*real / rest);
            break;
        }
    }
    return all;
}

/// The same, and what a link at its end names.
std::vector<Path> forms(const Platform& platform, const Path& path) {
    std::vector<Path> all = placeForms(platform, path);
    if (const auto real = platform.realPath(path)) {
        all.push_back(*real);
    }
    std::ranges::sort(all);
    all.erase(std::ranges::unique(all).begin(), all.end());
    return all;
}

/// The window and the command line may change the list at once; each waits for the other, which takes no time.
std::expected<OwnLock, std::string> lockList(const SystemLayout& layout) {
    constexpr std::chrono::milliseconds pause{10};
    constexpr int tries = 200;
    for (int tried = 0; tried < tries; ++tried) {
        auto lock = OwnLock::tryTake(layout.stateFolder / "kept.lock");
        if (!lock) {
            return std::unexpected(lock.error());
        }
        if (*lock) {
            return *std::move(*lock);
        }
        std::this_thread::sleep_for(pause);
    }
    return std::unexpected(files::reason(EBUSY));
}

/// Lets `change` change the list, and writes it when that answers true.
ListChange changeList(const Platform& platform, const SystemLayout& layout,
                      const std::function<bool(std::vector<Path>&)>& change) {
    const auto lock = lockList(layout);
    if (!lock) {
        return std::unexpected(lock.error());
    }
    const auto list = KeptPaths::read(platform, layout);
    if (!list) {
        return std::unexpected(list.error());
    }
    std::vector<Path> paths = list->paths();
    if (!change(paths)) {
        return false;
    }
    const Outcome outcome = listFile(layout).replace(written(paths));
    return outcome ? ListChange(true) : std::unexpected(outcome.error());
}

} // namespace

KeptPaths::KeptPaths(const Platform& platform, std::vector<Path> paths) : paths_(std::move(paths)) {
    for (const Path& path : paths_) {
        std::ranges::move(forms(platform, path), std::back_inserter(places_));
    }
    std::ranges::sort(places_);
    places_.erase(std::ranges::unique(places_).begin(), places_.end());
}

std::expected<KeptPaths, std::string> KeptPaths::read(const Platform& platform, const SystemLayout& layout) {
    const auto text = listFile(layout).read();
    if (!text) {
        return std::unexpected(text.error());
    }
    return KeptPaths(platform, parsed(*text));
}

bool KeptPaths::covers(const Platform& platform, const Path& path) const {
    if (places_.empty()) {
        return false;
    }
    return std::ranges::any_of(forms(platform, path), [&](const Path& form) {
        return std::ranges::any_of(places_, [&](const Path& kept) { return isAtOrBelow(form, kept); });
    });
}

bool KeptPaths::liesBelow(const Platform& platform, const Path& path) const {
    if (places_.empty()) {
        return false;
    }
    // Removing a link takes nothing along of what it names.
    return std::ranges::any_of(placeForms(platform, path), [&](const Path& form) {
        return std::ranges::any_of(
            places_, [&](const Path& kept) { return isStrictlyBelow(kept, form) && platform.exists(kept); });
    });
}

std::vector<Path> KeptPaths::placesBelow(const Platform& platform, const Path& folder) const {
    std::vector<Path> below;
    if (places_.empty()) {
        return below;
    }
    const Path real = platform.realPath(folder).value_or(folder);
    for (const Path& kept : places_) {
        if (isStrictlyBelow(kept, folder)) {
            below.push_back(kept);
        } else if (isStrictlyBelow(kept, real)) {
            below.push_back(folder / kept.lexically_relative(real));
        }
    }
    return below;
}

ListChange keep(const Platform& platform, const SystemLayout& layout, const Path& path) {
    const Path plain = platform.standardized(path);
    if (PathGuard(platform, layout).refusalReason(plain)) {
        return std::unexpected(L::tr("此位置本身从不会被移除，只能保留其中的项目"));
    }
    return changeList(platform, layout, [&](std::vector<Path>& paths) {
        const bool isNew = std::ranges::find(paths, plain) == paths.end();
        if (isNew) {
            paths.push_back(plain);
        }
        return isNew;
    });
}

ListChange offerAgain(const Platform& platform, const SystemLayout& layout, const Path& path) {
    const Path plain = platform.standardized(path);
    return changeList(platform, layout, [&](std::vector<Path>& paths) { return std::erase(paths, plain) > 0; });
}

} // namespace vellmoor
