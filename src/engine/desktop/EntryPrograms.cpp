#include "desktop/EntryPrograms.h"

#include "disk/Glob.h"
#include "disk/Paths.h"

#include <algorithm>

namespace vellmoor {

bool isLauncher(const EngineContext& context, const Path& program) {
    const std::string name = program.filename().string();
    return std::ranges::any_of(context.layout().memory.grouping.launchers,
                               [&](const std::string& pattern) { return globMatches(pattern, name); });
}

namespace {

/// The words of its command line that choose what the program does: an entry without any is the program's own.
std::ptrdiff_t ownArguments(const InstalledEntry& entry) {
    const std::vector<std::string> words = execWords(entry.exec).value_or(std::vector<std::string>());
    const auto program = std::ranges::find(words, entry.execProgram);
    const auto isOwn = [](const std::string& word) { return !word.starts_with('%') && !word.starts_with("@@"); };
    return program == words.end() ? 0 : std::count_if(program + 1, words.end(), isOwn);
}

} // namespace

EntryPrograms::EntryPrograms(EngineContext& context) : context_(context) {
    std::vector<const InstalledEntry*> entries;
    for (const InstalledEntry& entry : installedEntries(context)) {
        if (!entry.shadowed && !entry.hidden) {
            entries.push_back(&entry);
        }
    }
    std::ranges::stable_sort(
        entries, {}, [](const InstalledEntry* entry) { return std::pair(entry->noDisplay, ownArguments(*entry)); });
    for (const InstalledEntry* entry : entries) {
        byId_.emplace(entry->id, entry);
        byFile_.emplace(entry->path.native(), entry);
        addProgram(*entry, entry->execProgram);
        addProgram(*entry, entry->tryExec);
    }
}

void EntryPrograms::addProgram(const InstalledEntry& entry, const std::string& written) {
    const Platform& platform = context_.platform();
    const std::optional<Path> found = programPath(context_, written);
    const std::optional<Path> program = found ? platform.realPath(*found) : std::nullopt;
    if (!program || isLauncher(context_, *found) || isLauncher(context_, *program)) {
        return;
    }
    programs_.emplace(&entry, program->native());
    byProgram_.emplace(program->native(), &entry);
    if (platform.fileStart(*program, 2) == "#!") {
        byScriptName_.emplace(found->filename().native(), &entry);
        byScriptName_.emplace(program->filename().native(), &entry);
    }
    if (const Path folder = program->parent_path(); !isShared(folder)) {
        byFolder_.emplace(folder.native(), &entry);
    }
}

bool EntryPrograms::isShared(const Path& folder) const {
    const Path& home = context_.layout().home;
    const auto& shared = context_.layout().memory.grouping.sharedFolders;
    return isAtOrBelow(home, folder) || std::ranges::find(shared, folder) != shared.end();
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
    return find(byProgram_, program.native());
}

const InstalledEntry* EntryPrograms::byScriptName(const Path& program) const {
    return find(byScriptName_, program.filename().native());
}

const InstalledEntry* EntryPrograms::byFolder(const Path& program) const {
    for (Path folder = program.parent_path(); folder.has_relative_path(); folder = folder.parent_path()) {
        if (const InstalledEntry* entry = find(byFolder_, folder.native())) {
            return entry;
        }
    }
    return nullptr;
}

const InstalledEntry* EntryPrograms::shown(const InstalledEntry* entry) const {
    const auto program = programs_.find(entry);
    const InstalledEntry* twin = program == programs_.end() ? nullptr : find(byProgram_, program->second);
    return entry != nullptr && entry->noDisplay && twin != nullptr && !twin->noDisplay ? twin : entry;
}

} // namespace vellmoor
