#include "applications/EntryPrograms.h"

#include "Glob.h"
#include "Paths.h"

#include <algorithm>

namespace vellmoor {

bool isLauncher(const EngineContext& context, const Path& program) {
    const std::string name = program.filename().string();
    return std::ranges::any_of(context.layout().memory.grouping.launchers,
                               [&](const std::string& pattern) { return globMatches(pattern, name); });
}

namespace {

/// Whether programs of other applications may lie below the folder, too.
bool isShared(const EngineContext& context, const Path& folder) {
    const Path& home = context.layout().home;
    const auto& shared = context.layout().memory.grouping.sharedFolders;
    return folder == home || isStrictlyBelow(home, folder) || std::ranges::find(shared, folder) != shared.end();
}

} // namespace

EntryPrograms::EntryPrograms(EngineContext& context) {
    std::vector<const InstalledEntry*> entries;
    for (const InstalledEntry& entry : installedEntries(context)) {
        if (!entry.shadowed && !entry.hidden) {
            entries.push_back(&entry);
        }
    }
    std::ranges::stable_partition(entries, [](const InstalledEntry* entry) { return !entry->noDisplay; });
    for (const InstalledEntry* entry : entries) {
        byId_.emplace(entry->id, entry);
        byFile_.emplace(entry->path.native(), entry);
        addProgram(context, *entry, entry->execProgram);
        addProgram(context, *entry, entry->tryExec);
    }
}

void EntryPrograms::addProgram(const EngineContext& context, const InstalledEntry& entry, const std::string& written) {
    const std::optional<Path> found = programPath(context, written);
    const std::optional<Path> program = found ? context.platform().realPath(*found) : std::nullopt;
    if (!program || isLauncher(context, *found) || isLauncher(context, *program)) {
        return;
    }
    byProgram_.emplace(program->native(), &entry);
    if (const Path folder = program->parent_path(); !isShared(context, folder)) {
        byFolder_.emplace(folder.native(), &entry);
    }
}

const InstalledEntry* EntryPrograms::find(const Index& index, const std::string& key) {
    const auto found = index.find(key);
    return found == index.end() ? nullptr : found->second;
}

const InstalledEntry* EntryPrograms::byId(const std::string& id) const {
    return find(byId_, id);
}

const InstalledEntry* EntryPrograms::byFile(const Path& file) const {
    return find(byFile_, file.native());
}

const InstalledEntry* EntryPrograms::byProgram(const Path& program) const {
    if (const InstalledEntry* entry = find(byProgram_, program.native())) {
        return entry;
    }
    for (Path folder = program.parent_path(); folder.has_relative_path(); folder = folder.parent_path()) {
        if (const InstalledEntry* entry = find(byFolder_, folder.native())) {
            return entry;
        }
    }
    return nullptr;
}

} // namespace vellmoor
