#include "keep/KeptPaths.h"

#include "OwnFile.h"
#include "Paths.h"
#include "PercentText.h"
#include "ProtectedPaths.h"

#include <algorithm>
#include <optional>

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

/// `path` as it is written, with the links above it resolved as far up as something exists, and with its own.
std::vector<Path> forms(const Platform& platform, const Path& path) {
    std::vector<Path> all{platform.standardized(path)};
    Path rest;
    for (Path folder = all.front(); folder.has_relative_path(); folder = folder.parent_path()) {
        rest = rest.empty() ? folder.filename() : folder.filename() / rest;
        if (const auto real = platform.realPath(folder.parent_path())) {
            all.push_back(*real / rest);
            break;
        }
    }
    if (const auto real = platform.realPath(path)) {
        all.push_back(*real);
    }
    std::ranges::sort(all);
    all.erase(std::ranges::unique(all).begin(), all.end());
    return all;
}

Outcome change(EngineContext& context, const std::vector<Path>& paths) {
    return listFile(context.layout()).replace(written(paths));
}

} // namespace

KeptPaths::KeptPaths(const Platform& platform, std::vector<Path> paths) : paths_(std::move(paths)) {
    for (const Path& path : paths_) {
        std::ranges::move(forms(platform, path), std::back_inserter(places_));
    }
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
        return std::ranges::any_of(places_,
                                   [&](const Path& kept) { return form == kept || isStrictlyBelow(form, kept); });
    });
}

bool KeptPaths::liesBelow(const Platform& platform, const Path& path) const {
    if (places_.empty()) {
        return false;
    }
    return std::ranges::any_of(forms(platform, path), [&](const Path& form) {
        return std::ranges::any_of(places_, [&](const Path& kept) { return isStrictlyBelow(kept, form); });
    });
}

const std::expected<KeptPaths, std::string>& keptPaths(EngineContext& context) {
    struct Known {
        std::optional<std::expected<KeptPaths, std::string>> list;
    };
    auto& known = context.remembered<Known>().list;
    if (!known) {
        known = KeptPaths::read(context.platform(), context.layout());
    }
    return *known;
}

Outcome keep(EngineContext& context, const Path& path) {
    const Path plain = context.platform().standardized(path);
    if (auto reason = PathGuard(context.platform(), context.layout()).refusalReason(plain)) {
        return std::unexpected(std::move(*reason));
    }
    const auto list = KeptPaths::read(context.platform(), context.layout());
    if (!list) {
        return std::unexpected(list.error());
    }
    std::vector<Path> paths = list->paths();
    if (std::ranges::find(paths, plain) != paths.end()) {
        return {};
    }
    paths.push_back(plain);
    return change(context, paths);
}

Outcome offerAgain(EngineContext& context, const Path& path) {
    const auto list = KeptPaths::read(context.platform(), context.layout());
    if (!list) {
        return std::unexpected(list.error());
    }
    std::vector<Path> paths = list->paths();
    const Path plain = context.platform().standardized(path);
    return std::erase(paths, plain) == 0 ? Outcome() : change(context, paths);
}

} // namespace vellmoor
