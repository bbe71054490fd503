// From the patterns of a layout to the paths that they name on this disk.
#include "Glob.h"
#include "Platform.h"
#include "processes/ProcessTable.h"
#include "scan/PathMeasurement.h"

#include <algorithm>

namespace vellmoor {
namespace {

bool isWildcard(std::string_view component) {
    return component.find_first_of("*#|") != std::string_view::npos;
}

bool anyRuns(EngineContext& context, const std::vector<std::string>& owners) {
    return std::ranges::any_of(owners, [&](const std::string& owner) { return runningNames(context).contains(owner); });
}

bool matchesAny(const std::vector<std::string>& patterns, std::string_view name) {
    return std::ranges::any_of(patterns, [&](const std::string& pattern) { return globMatchesAny(pattern, name); });
}

/// One pattern on its way down the disk.
class Expansion {
public:
    Expansion(EngineContext& context, const RootPattern& pattern, std::vector<Path>& out)
        : context_(context),
          pattern_(pattern),
          out_(out) {}

    void run() {
        if (anyRuns(context_, pattern_.owners) || !isOnHomeDevice()) {
            return;
        }
        descend(pattern_.base, 0, false);
    }

private:
    [[nodiscard]] bool isOnHomeDevice() const {
        if (!pattern_.onHomeDevice) {
            return true;
        }
        const auto base = context_.platform().facts(pattern_.base);
        const auto home = context_.platform().facts(context_.layout().home);
        return base && home && base->device == home->device;
    }

    void descend(const Path& folder, std::size_t level, bool ownerChecked) {
        if (level == pattern_.components.size()) {
            take(folder);
            return;
        }
        const std::string& component = pattern_.components[level];
        if (component == "@current") {
            if (const auto current = context_.platform().linkTarget(folder / "current");
                current && !current->has_parent_path()) {
                descend(folder / *current, level + 1, ownerChecked);
            }
            return;
        }
        if (!isWildcard(component)) {
            if (context_.platform().exists(folder / component)) {
                descend(folder / component, level + 1, ownerChecked);
            }
            return;
        }
        const auto entries = context_.platform().entries(folder);
        if (!entries) {
            return; // missing or unreadable: no roots here
        }
        const bool last = level + 1 == pattern_.components.size();
        for (const FolderEntry& entry : *entries) {
            if (!admits(entry, component) || (!last && !entry.isDirectory)) {
                continue;
            }
            if (!ownerChecked && ownerRuns(entry.name)) {
                continue;
            }
            descend(folder / entry.name, level + 1, true);
        }
    }

    [[nodiscard]] bool admits(const FolderEntry& entry, const std::string& component) {
        if (entry.isHidden && !pattern_.hiddenToo) {
            return false;
        }
        if (!globMatchesAny(component, entry.name) || matchesAny(pattern_.except, entry.name)) {
            return false;
        }
        return std::ranges::none_of(pattern_.busy, [&](const BusyNames& busy) {
            return matchesAny(busy.names, entry.name) && anyRuns(context_, busy.owners);
        });
    }

    [[nodiscard]] bool ownerRuns(const std::string& name) {
        return !pattern_.ownerPrefix.empty() && runningNames(context_).contains(pattern_.ownerPrefix + name);
    }

    void take(const Path& path) {
        const std::optional<FileFacts> facts = context_.platform().facts(path);
        if (!facts || !isOfKind(*facts)) {
            return;
        }
        if (pattern_.ownedByUser && facts->owner != context_.platform().userId()) {
            return;
        }
        const bool hasNeighbour = std::ranges::any_of(pattern_.besides, [&](const std::string& name) {
            return context_.platform().exists(path.parent_path() / name);
        });
        if (pattern_.besides.empty() || hasNeighbour) {
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
        case RootKind::Folder:
            return facts.isDirectory;
        }
        return false;
    }

    EngineContext& context_;
    const RootPattern& pattern_;
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
