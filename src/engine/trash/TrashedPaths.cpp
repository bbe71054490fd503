#include "trash/TrashedPaths.h"

#include "disk/Paths.h"

#include <algorithm>
#include <string>

namespace vellmoor {
namespace {

/// The contents of the Trash folders that are listed. A folder elsewhere that only looks like one is none.
class ListedFolders final : public TrashedPaths {
public:
    explicit ListedFolders(const EngineContext& context) {
        const Platform& platform = context.platform();
        for (TrashSource& source : trashSources(context)) {
            const std::optional<Path> folder = platform.realPath(source.trash.folder);
            if (folder) {
                const Path inside = source.url.lexically_relative(source.trash.folder);
                known_.push_back({std::move(source.trash), platform.standardized(source.url), *folder / inside});
            }
        }
    }

    std::optional<Trashed> find(const Path& /*path*/, const Path& real) const override {
        // Contents that are a link hold nothing: they would make a Trash of the folder that they name.
        const auto found =
            std::ranges::find_if(known_, [&](const Known& one) { return isStrictlyBelow(real, one.realContents); });
        if (found == known_.end()) {
            return std::nullopt;
        }
        return Trashed{.path = found->trash.contents / real.lexically_relative(found->realContents),
                       .trash = found->trash};
    }

    bool names(const Path& path) const override {
        return std::ranges::any_of(known_, [&](const Known& one) { return isStrictlyBelow(path, one.contents); });
    }

    std::vector<TrashFolder> folders() const override {
        std::vector<TrashFolder> all;
        std::ranges::transform(known_, std::back_inserter(all), &Known::trash);
        return all;
    }

private:
    struct Known {
        TrashFolder trash;
        Path contents; ///< standardised
        Path realContents;
    };
    std::vector<Known> known_;
};

/// A path lies in a Trash when it holds one of these pieces, such as "/.Trash/". The Trash folder is what stands
/// before the piece's last slash.
class NamedFolders final : public TrashedPaths {
public:
    explicit NamedFolders(const EngineContext& context)
        : platform_(context.platform()),
          pieces_(context.layout().trash.permanentFragments) {}

    std::optional<Trashed> find(const Path& path, const Path& real) const override {
        const std::optional<Path> folder = trashOf(path);
        const std::optional<Path> resolved = folder ? platform_.realPath(*folder) : std::nullopt;
        // A Trash that is a link to another folder would make a Trash of that one.
        if (!resolved || resolved->filename() != folder->filename() || !isStrictlyBelow(real, *resolved)) {
            return std::nullopt;
        }
        return Trashed{.path = path, .trash = {.folder = *resolved, .contents = *resolved, .anchor = *resolved}};
    }

    bool names(const Path& path) const override { return trashOf(path).has_value(); }

private:
    [[nodiscard]] std::optional<Path> trashOf(const Path& path) const {
        std::size_t first = std::string::npos;
        for (const std::string& piece : pieces_) {
            if (const std::size_t at = path.native().find(piece); at != std::string::npos) {
                first = std::min(first, at + piece.size() - 1);
            }
        }
        return first == std::string::npos ? std::nullopt : std::optional<Path>(path.native().substr(0, first));
    }

    const Platform& platform_;
    const std::vector<std::string>& pieces_;
};

} // namespace

std::unique_ptr<const TrashedPaths> TrashedPaths::of(const EngineContext& context) {
    if (context.layout().trash.isKnownByName) {
        return std::make_unique<NamedFolders>(context);
    }
    return std::make_unique<ListedFolders>(context);
}

} // namespace vellmoor
