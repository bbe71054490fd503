#include "applications/AppUninstaller.h"
#include "applications/Applications.h"
#include "applications/ReleaseName.h"
#include "desktop/AppNames.h"
#include "desktop/DesktopEntries.h"
#include "disk/Paths.h"
#include "scan/UserPlaces.h"

#include <algorithm>
#include <set>
#include <string_view>

namespace vellmoor {
namespace {

/// How every ELF file begins.
constexpr std::string_view elfMark{"\x7F"
                                   "ELF"};

/// Where a program of an entry is, executable or not.
std::optional<Path> placeOf(const EngineContext& context, const std::string& program) {
    return program.starts_with('/') ? placedProgram(context.layout(), program) : programPath(context, program);
}

/// Finds and names the applications that no package manager of the system owns.
class Finder {
public:
    explicit Finder(EngineContext& context) : context_(context), platform_(context.platform()) { readOwnEntries(); }

    std::vector<ApplicationMetadata> find();

private:
    void readOwnEntries();
    void findFlatpaks(const Path& folder);
    void findAppImages(const Path& folder);
    void findProgramFolders(const Path& folder, bool onlyByEntry);
    void add(ApplicationKind kind, const Path& path, const InstalledEntry* entry, std::string fallbackName,
             std::optional<std::string> identifier);

    [[nodiscard]] std::vector<FolderEntry> children(const Path& folder) const;
    [[nodiscard]] std::vector<Path> appImageFolders() const;
    [[nodiscard]] bool isAppImage(const Path& file) const;
    [[nodiscard]] bool isSharedFolder(const std::string& name) const;
    [[nodiscard]] bool looksInstalled(const Path& folder) const;
    [[nodiscard]] bool holdsProgram(const Path& folder) const;
    [[nodiscard]] const InstalledEntry* entryOf(const Path& application) const;
    [[nodiscard]] const InstalledEntry* flatpakEntry(const std::string& identifier) const;

    EngineContext& context_;
    const Platform& platform_;
    std::vector<EntryProgram> programs_;
    std::set<Path> seen_;
    std::vector<ApplicationMetadata> found_;
};

std::vector<ApplicationMetadata> Finder::find() {
    const AppLayout& layout = context_.layout().apps;
    std::ranges::for_each(layout.flatpakFolders, [this](const Path& folder) { findFlatpaks(folder); });
    std::ranges::for_each(appImageFolders(), [this](const Path& folder) { findAppImages(folder); });
    std::ranges::for_each(layout.programFolders, [this](const Path& folder) { findProgramFolders(folder, false); });
    std::ranges::for_each(layout.entryProgramFolders, [this](const Path& folder) { findProgramFolders(folder, true); });
    return std::move(found_);
}

void Finder::readOwnEntries() {
    const std::vector<Path>& own = context_.layout().apps.ownEntryFolders;
    for (const InstalledEntry& entry : installedEntries(context_)) {
        const bool isOwn =
            std::ranges::any_of(own, [&](const Path& folder) { return isStrictlyBelow(entry.path, folder); });
        if (isOwn && !entry.hidden) {
            std::ranges::move(entryPrograms(context_, entry), std::back_inserter(programs_));
        }
    }
}

std::vector<FolderEntry> Finder::children(const Path& folder) const {
    auto entries = platform_.entries(folder);
    if (!entries) {
        return {}; // a missing folder holds no applications
    }
    std::erase_if(*entries, [](const FolderEntry& entry) { return entry.isHidden; });
    return std::move(*entries);
}

void Finder::add(ApplicationKind kind, const Path& path, const InstalledEntry* entry, std::string fallbackName,
                 std::optional<std::string> identifier) {
    const std::optional<Path> real = platform_.realPath(path);
    if (!seen_.insert(real.value_or(path)).second || isProtectedSystemAppPath(context_, path) ||
        (real && isProtectedSystemAppPath(context_, *real))) {
        return;
    }
    if (entry != nullptr && !entry->name.empty()) {
        fallbackName = entry->name;
    }
    found_.push_back({.appURL = path,
                      .displayName = std::move(fallbackName),
                      .unlocalizedName = entry != nullptr ? entry->unlocalizedName : std::string(),
                      .bundleIdentifier = std::move(identifier),
                      .kind = kind});
}

void Finder::findFlatpaks(const Path& folder) {
    for (const FolderEntry& child : children(folder)) {
        context_.throwIfCancelled();
        const Path path = folder / child.name;
        if (child.isDirectory && !child.isSymlink && platform_.exists(path / "current/active")) {
            add(ApplicationKind::Flatpak, path, flatpakEntry(child.name), child.name, child.name);
        }
    }
}

std::vector<Path> Finder::appImageFolders() const {
    const SystemLayout& layout = context_.layout();
    std::vector<Path> folders = layout.apps.appImageFolders;
    if (layout.apps.appImagesOnDesktop) {
        if (const Path& desktop = UserPlaces::of(context_).desktop(); !desktop.empty()) {
            folders.push_back(desktop);
        }
    }
    return folders;
}

void Finder::findAppImages(const Path& folder) {
    for (const FolderEntry& child : children(folder)) {
        context_.throwIfCancelled();
        const Path path = folder / child.name;
        if (!child.isRegularFile || child.isSymlink || !isAppImage(path)) {
            continue;
        }
        const InstalledEntry* entry = entryOf(path);
        add(ApplicationKind::AppImage, path, entry, releaseName(child.name),
            entry == nullptr ? std::nullopt : std::optional(entry->id));
    }
}

/// AppImage specification: an ELF file with "AI" and the type 1 or 2 in the padding of its identification.
bool Finder::isAppImage(const Path& file) const {
    if (platform_.lowerCase(file.extension().string()) == ".appimage") {
        return true;
    }
    const std::optional<std::string> start = platform_.fileStart(file, 11);
    return start && start->size() == 11 && start->starts_with(elfMark) && start->substr(8, 2) == "AI" &&
           (start->back() == '\x01' || start->back() == '\x02');
}

void Finder::findProgramFolders(const Path& folder, bool onlyByEntry) {
    for (const FolderEntry& child : children(folder)) {
        context_.throwIfCancelled();
        const Path path = folder / child.name;
        if (!child.isDirectory || child.isSymlink) {
            continue;
        }
        const InstalledEntry* entry = entryOf(path);
        if (isSharedFolder(child.name) || (entry == nullptr && (onlyByEntry || !looksInstalled(path)))) {
            continue;
        }
        add(ApplicationKind::ProgramFolder, path, entry, child.name,
            entry == nullptr ? std::nullopt : std::optional(entry->id));
    }
}

/// A folder such as bin holds the programs of many applications, whichever of them an entry names.
bool Finder::isSharedFolder(const std::string& name) const {
    const std::vector<std::string>& shared = context_.layout().apps.sharedFolderNames;
    return std::ranges::find(shared, platform_.lowerCase(name)) != shared.end();
}

/// Holds a program that was built, and no work of the user's own. A folder of scripts may be anything.
bool Finder::looksInstalled(const Path& folder) const {
    return !platform_.exists(folder / ".git") && (holdsProgram(folder) || holdsProgram(folder / "bin"));
}

bool Finder::holdsProgram(const Path& folder) const {
    return std::ranges::any_of(children(folder), [&](const FolderEntry& child) {
        const Path path = folder / child.name;
        return child.isRegularFile && platform_.isExecutable(path) &&
               (child.name == "AppRun" || platform_.fileStart(path, elfMark.size()) == elfMark);
    });
}

/// The entry that starts the application: one that menus show, if there is any.
const InstalledEntry* Finder::entryOf(const Path& application) const {
    const Path real = platform_.realPath(application).value_or(application);
    const InstalledEntry* best = nullptr;
    for (const EntryProgram& program : programs_) {
        if (isProgramOf(program, application, real) &&
            (best == nullptr || (best->noDisplay && !program.entry->noDisplay))) {
            best = program.entry;
        }
    }
    return best;
}

const InstalledEntry* Finder::flatpakEntry(const std::string& identifier) const {
    const std::vector<InstalledEntry>& entries = installedEntries(context_);
    const auto visible = [&](const InstalledEntry& entry) { return !entry.hidden && !entry.name.empty(); };
    auto found = std::ranges::find_if(
        entries, [&](const InstalledEntry& entry) { return entry.id == identifier && visible(entry); });
    if (found == entries.end()) {
        found = std::ranges::find_if(
            entries, [&](const InstalledEntry& entry) { return entry.flatpakId == identifier && visible(entry); });
    }
    return found == entries.end() ? nullptr : &*found;
}

} // namespace

std::vector<EntryProgram> entryPrograms(const EngineContext& context, const InstalledEntry& entry) {
    std::vector<EntryProgram> programs;
    for (const std::string& program : {entry.execProgram, entry.tryExec}) {
        if (const std::optional<Path> path = placeOf(context, program)) {
            programs.push_back({&entry, *path, context.platform().realPath(*path).value_or(*path)});
        }
    }
    return programs;
}

bool isProgramOf(const EntryProgram& program, const Path& application, const Path& real) {
    return isAtOrBelow(program.program, application) || program.real == real || isStrictlyBelow(program.real, real);
}

std::vector<ApplicationMetadata> unpackagedApplications(EngineContext& context) {
    return Finder(context).find();
}

} // namespace vellmoor
