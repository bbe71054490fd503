// From the patterns of a layout to the paths that they name on this disk.
#include "Platform.h"
#include "clean/RunningOwners.h"
#include "scan/PathMeasurement.h"
#include "scan/UserPlaces.h"

#include <algorithm>

namespace vellmoor {
namespace {

/// One pattern on its way down the disk.
class Expansion {
public:
    Expansion(EngineContext& context, const RootPattern& pattern, std::vector<Path>& out)
        : context_(context),
          platform_(context.platform()),
          pattern_(pattern),
          levels_(components(pattern)),
          out_(out) {}

    void run() {
        if (UserPlaces::of(context_).isFit(pattern_.base, pattern_.origin)) {
            descend(pattern_.base, 0);
        }
    }

private:
    void descend(const Path& folder, std::size_t level) {
        if (level == levels_.size()) {
            take(folder);
            return;
        }
        const RootComponent& component = levels_[level];
        if (component.names == "@current") {
            if (const auto current = platform_.linkTarget(folder / "current"); current && !current->has_parent_path()) {
                enter(folder / *current, level);
            }
            return;
        }
        if (!component.isWildcard()) {
            enter(folder / component.names, level);
            return;
        }
        const auto entries = platform_.entries(folder);
        if (!entries) {
            return; // missing or unreadable: no roots here
        }
        for (const FolderEntry& entry : *entries) {
            if (!entry.isHidden && admits(pattern_, component, entry.name)) {
                enter(folder / entry.name, level);
            }
        }
    }

    /// Goes on below `path`, which the component of `level` has named. A link on the way is not followed.
    void enter(const Path& path, std::size_t level) {
        const bool isLast = level + 1 == levels_.size();
        if ((isLast || platform_.isFolder(path)) && holdsOne(path, levels_[level].holding)) {
            descend(path, level + 1);
        }
    }

    [[nodiscard]] bool holdsOne(const Path& folder, const std::vector<std::string>& names) const {
        return names.empty() ||
               std::ranges::any_of(names, [&](const std::string& name) { return platform_.exists(folder / name); });
    }

    void take(const Path& path) {
        const std::optional<FileFacts> facts = platform_.facts(path);
        if (facts && isOfKind(*facts) && !RunningOwners::of(context_).ownerOf(path)) {
            out_.push_back(path);
        }
    }

    [[nodiscard]] bool isOfKind(const FileFacts& facts) const {
        switch (pattern_.kind) {
        case RootKind::Any:
            return true;
        case RootKind::AnyButLinks:
            return !facts.isSymlink;
        case RootKind::PlainFile:
            return facts.isRegularFile;
        case RootKind::OwnFile:
            return facts.isRegularFile && facts.owner == platform_.userId() && isOnTrashDisk();
        case RootKind::Folder:
            return facts.isDirectory;
        }
        return false;
    }

    /// Of the folders, as everywhere: on some file systems plain files name another device.
    [[nodiscard]] bool isOnTrashDisk() const {
        const auto folder = platform_.facts(pattern_.base);
        const auto data =
            platform_.facts(platform_.realPath(context_.layout().bases.data).value_or(context_.layout().home));
        return folder && data && folder->device == data->device;
    }

    EngineContext& context_;
    const Platform& platform_;
    const RootPattern& pattern_;
    std::vector<RootComponent> levels_;
    std::vector<Path>& out_;
};

} // namespace

std::vector<Path> expandRoots(EngineContext& context, const std::vector<RootPattern>& patterns) {
    std::vector<Path> roots;
    for (const RootPattern& pattern : patterns) {
        Expansion(context, pattern, roots).run();
    }
    return roots;
}

} // namespace vellmoor
