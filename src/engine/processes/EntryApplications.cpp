// Which installed application a Linux process belongs to. The sources are asked from the surest to the vaguest:
//
//   0  its program is the one that an entry starts: a browser that was opened from a mail program is the browser,
//      whatever it inherited from there;
//   1  the control group that the desktop made for the application: it holds whatever the application started, too,
//      so what runs in a terminal is taken out of it again;
//   2  the variables with which launchers mark their child, and 3 those of an AppImage;
//   4  the folder of its program, and 5 its parent beside it in that folder.
//
// Last of all a control group that names an application without an entry, which several programs may share.
#include "Platform.h"
#include "desktop/AppNames.h"
#include "desktop/DesktopEntries.h"
#include "desktop/EntryPrograms.h"
#include "disk/Glob.h"
#include "disk/Paths.h"
#include "processes/ControlGroups.h"
#include "processes/LinuxProcesses.h"
#include "processes/ProcessApplications.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>

namespace vellmoor {
namespace {

/// What is known of the application of one process.
struct Owner {
    const InstalledEntry* entry = nullptr;
    std::string id; ///< its desktop ID; empty without one
    Path appImage;  ///< the file it was started from; empty: none
    Path program;   ///< the one that shares `id` with nobody; only where there is no entry

    [[nodiscard]] bool isKnown() const { return entry != nullptr || !id.empty() || !appImage.empty(); }
    [[nodiscard]] std::string key() const {
        if (entry != nullptr) {
            return entry->path.native();
        }
        return appImage.empty() ? id + '\n' + program.native() : appImage.native();
    }
};

Owner ownerOfEntry(const InstalledEntry* entry) {
    return {.entry = entry, .id = entry->id, .appImage = {}, .program = {}};
}

bool isTerminal(const InstalledEntry& entry) {
    return std::ranges::find(entry.categories, "TerminalEmulator") != entry.categories.end();
}

/// Whether the process runs in the window of a terminal, not on a console that a whole session may have.
bool hasPseudoTerminal(const std::optional<ProcessLine>& line) {
    constexpr std::uint32_t firstMajor = 136; // the kernel's devices.txt: Unix98 PTY slaves
    constexpr std::uint32_t lastMajor = 143;
    const std::uint32_t major = line ? (static_cast<std::uint32_t>(line->terminal) >> 8U) & 0xfffU : 0;
    return major >= firstMajor && major <= lastMajor;
}

class EntryApplications : public ProcessApplications {
public:
    EntryApplications(EngineContext& context, const LinuxProcesses& processes,
                      const std::vector<ProcessMemorySample>& samples)
        : context_(context),
          processes_(processes),
          programs_(context),
          own_(realPath(context.platform().ownPath())),
          ownEntry_(installedProgram(own_)) {
        for (const ProcessMemorySample& sample : samples) {
            commands_.emplace(sample.pid, sample.command.empty() ? claimedProgram(sample.pid) : sample.command);
        }
    }

    std::optional<std::string> keyOf(const ProcessMemorySample& sample) override {
        const Owner& owner = ownerOf(sample.pid);
        if (!owner.isKnown() || isOwn(owner) || (owner.entry != nullptr && owner.entry->noDisplay)) {
            return std::nullopt;
        }
        ownerByKey_.emplace(owner.key(), owner);
        return owner.key();
    }

    MemoryApp describe(const std::string& key, const ProcessMemorySample&) override {
        const Owner& owner = ownerByKey_.at(key);
        MemoryApp app;
        app.isActive = owner.entry != nullptr;
        if (owner.entry != nullptr) {
            app.path = owner.entry->path.native();
            app.bundleIdentifier = owner.entry->id;
            app.name = owner.entry->name;
        } else if (!owner.id.empty()) {
            app.bundleIdentifier = owner.id;
            app.name = nameWithoutEntry(owner);
            app.path = owner.program.native();
        } else {
            app.path = owner.appImage.native();
        }
        app.id = app.path.value_or(key);
        app.name = app.name.empty() ? Path(app.id).stem().string() : app.name;
        return app;
    }

private:
    [[nodiscard]] Path realPath(const Path& path) const { return context_.platform().realPath(path).value_or(path); }

    /// The owner of one of the samples' processes, or an unknown one. Each is found once.
    const Owner& ownerOf(std::int32_t pid) {
        if (const auto known = owners_.find(pid); known != owners_.end()) {
            return known->second;
        }
        // The entry stands before the search: parents that form a loop, as reused pids may, end there.
        Owner& owner = owners_[pid];
        if (const auto command = commands_.find(pid); command != commands_.end()) {
            const std::string group = processes_.group(pid);
            if (!isExcluded(command->second, group)) {
                owner = findOwner(pid, command->second, group);
            }
        }
        return owner;
    }

    /// Whether it is this program: by its AppImage, by one of its entries in the user's folder, or by its program.
    [[nodiscard]] bool isOwn(const Owner& owner) const {
        const std::vector<Path>& protectedPaths = context_.layout().apps.protectedPaths;
        return std::ranges::find(protectedPaths, Path(owner.key())) != protectedPaths.end() ||
               (owner.entry != nullptr && owner.entry == ownEntry_);
    }

    [[nodiscard]] bool isExcluded(const std::string& command, const std::string& group) const {
        const ProcessGrouping& rules = context_.layout().memory.grouping;
        const std::string name = Path(command).filename().string();
        return groupIsBelow(group, rules.systemSlices) || (!command.empty() && realPath(command) == own_) ||
               std::ranges::any_of(rules.systemPrograms,
                                   [&](const std::string& pattern) { return globMatches(pattern, name); });
    }

    Owner findOwner(std::int32_t pid, const std::string& command, const std::string& group) {
        const Path program = command.empty() ? Path() : realPath(command);
        if (const InstalledEntry* entry = startedEntry(pid, program, group)) {
            return ownerOfEntry(entry);
        }
        const GroupApplication inGroup = groupApplication(group, context_.platform().userId());
        const InstalledEntry* groupEntry = inGroup.id ? programs_.shown(programs_.byId(*inGroup.id)) : nullptr;
        if (inGroup.isBusName && groupEntry == nullptr) {
            return {};
        }
        const bool isGuest =
            inGroup.isTerminalChild || (groupEntry != nullptr && isGuestOf(*groupEntry, inGroup, pid, program));
        if (groupEntry != nullptr && !isGuest) {
            return ownerOfEntry(groupEntry);
        }
        if (Owner owner = isGuest ? Owner() : launchedOwner(pid); owner.isKnown()) {
            return owner;
        }
        if (const InstalledEntry* entry = program.empty() ? nullptr : installedProgram(program)) {
            return ownerOfEntry(entry);
        }
        if (Owner owner = parentsOwner(pid, command); owner.isKnown()) {
            return owner;
        }
        const bool isNamed = inGroup.id && groupEntry == nullptr && !command.empty();
        return isNamed ? Owner{.entry = nullptr, .id = *inGroup.id, .appImage = {}, .program = command} : Owner();
    }

    /// The visible entry that starts exactly this program: it, the script that it interprets, or the script that runs
    /// it. The programs of a sandbox are files of the sandbox, whatever they are called.
    const InstalledEntry* startedEntry(std::int32_t pid, const Path& program, const std::string& group) {
        if (program.empty() || !groupFlatpak(group).empty() || !groupSnap(group).empty()) {
            return nullptr;
        }
        const InstalledEntry* entry = programs_.byProgram(program);
        if (entry == nullptr && isLauncher(context_, program)) {
            const std::optional<Path> script = interpretedScript(pid);
            entry = script ? programs_.byProgram(*script) : nullptr;
        } else if (entry == nullptr) {
            entry = programs_.byScriptName(program);
        }
        return entry != nullptr && !entry->noDisplay ? entry : nullptr;
    }

    /// The file that an interpreter was started with.
    [[nodiscard]] std::optional<Path> interpretedScript(std::int32_t pid) const {
        const std::vector<std::string> words = processes_.arguments(pid);
        const auto isOption = [](const std::string& word) { return word.starts_with('-'); };
        const auto script = std::find_if_not(words.begin() + (words.empty() ? 0 : 1), words.end(), isOption);
        const bool isPath = script != words.end() && script->starts_with('/');
        return isPath ? std::optional(realPath(placedPath(*script))) : std::nullopt;
    }

    /// Whether the process is in the application's control group only because it was started there: it runs in a
    /// terminal, or in the unit of a terminal without being that terminal's own service.
    [[nodiscard]] bool isGuestOf(const InstalledEntry& entry, const GroupApplication& inGroup, std::int32_t pid,
                                 const Path& program) const {
        const auto& servers = context_.layout().memory.grouping.terminalServers;
        const std::string name = program.filename().string();
        return (isTerminal(entry) && (inGroup.isInnermost || inGroup.isInScope)) ||
               hasPseudoTerminal(processes_.line(pid)) ||
               std::ranges::any_of(servers, [&](const std::string& pattern) { return globMatches(pattern, name); });
    }

    /// The entry that starts this program, or one from the folder of such a program.
    [[nodiscard]] const InstalledEntry* installedProgram(const Path& program) const {
        const InstalledEntry* entry = programs_.byProgram(program);
        return entry != nullptr ? entry : programs_.byFolder(program);
    }

    /// What a process calls itself, where the kernel does not tell its program: those that keep secrets, and the
    /// sandboxed ones of browsers, let nobody look (prctl(2), PR_SET_DUMPABLE).
    [[nodiscard]] std::string claimedProgram(std::int32_t pid) const {
        const std::vector<std::string> words = processes_.arguments(pid);
        if (words.empty()) {
            return {};
        }
        // Browsers write the whole command line into the first word.
        for (const std::string& claimed : {words.front(), words.front().substr(0, words.front().find(" -"))}) {
            if (const std::optional<Path> program = programPath(context_, claimed)) {
                return program->native();
            }
        }
        return {};
    }

    /// After its ID when that speaks of its program; else after the program, for many share the ID of their toolkit.
    [[nodiscard]] std::string nameWithoutEntry(const Owner& owner) const {
        const std::string friendly = friendlyName(owner.id, owner.id);
        const std::string program = owner.program.filename().string();
        const Platform& platform = context_.platform();
        const bool speaksOfIt =
            platform.lettersAndDigits(friendly).find(platform.lettersAndDigits(program)) != std::string::npos;
        return speaksOfIt || isLauncher(context_, owner.program) ? friendly : program;
    }

    /// What the variables say that launchers and AppImages set.
    Owner launchedOwner(std::int32_t pid) {
        const std::string& environment = processes_.environment(pid);
        const auto file = environmentValue(environment, "GIO_LAUNCHED_DESKTOP_FILE");
        const auto launched = environmentValue(environment, "GIO_LAUNCHED_DESKTOP_FILE_PID");
        if (file && launched == std::to_string(pid) && file->starts_with('/')) {
            if (const InstalledEntry* entry = programs_.shown(entryOfFile(placedPath(*file)))) {
                return ownerOfEntry(entry);
            }
        }
        const std::optional<Path> image = processes_.appImage(pid);
        if (!image) {
            return {};
        }
        const Path path = realPath(*image);
        const InstalledEntry* entry = programs_.byProgram(path);
        return {.entry = entry, .id = entry == nullptr ? std::string() : entry->id, .appImage = path, .program = {}};
    }

    /// An installed entry of that file or name, else the file itself as an entry.
    const InstalledEntry* entryOfFile(const Path& file) {
        if (const InstalledEntry* entry = programs_.byFile(file)) {
            return entry;
        }
        const std::string id = file.extension() == ".desktop" ? file.stem().string() : std::string();
        if (const InstalledEntry* entry = programs_.byId(id)) {
            return entry;
        }
        const std::optional<KeyFile> contents = id.empty() ? std::nullopt : context_.platform().keyFile(file);
        std::optional<InstalledEntry> entry = contents ? desktopEntry(*contents, id, file) : std::nullopt;
        return entry ? &looseEntries_.emplace_back(std::move(*entry)) : nullptr;
    }

    /// The parent's application, for a helper program that lies beside the parent's in a folder of their own.
    Owner parentsOwner(std::int32_t pid, const std::string& command) {
        const std::optional<std::int32_t> parent = processes_.parent(pid);
        if (!parent || command.empty()) {
            return {};
        }
        const auto parentCommand = commands_.find(*parent);
        const Path folder = Path(command).parent_path();
        const bool isBeside = parentCommand != commands_.end() && !programs_.isShared(folder) &&
                              Path(parentCommand->second).parent_path() == folder;
        return isBeside ? ownerOf(*parent) : Owner();
    }

    [[nodiscard]] Path placedPath(std::string_view path) const {
        return placed(lexicallyStandardized(path), context_.layout().home, context_.layout().root);
    }

    EngineContext& context_;
    const LinuxProcesses& processes_;
    EntryPrograms programs_;
    Path own_;
    const InstalledEntry* ownEntry_;
    std::map<std::int32_t, std::string> commands_;
    std::map<std::int32_t, Owner> owners_;
    std::map<std::string, Owner> ownerByKey_;
    std::deque<InstalledEntry> looseEntries_; // stable addresses
};

} // namespace

std::unique_ptr<ProcessApplications> entryApplications(EngineContext& context, const LinuxProcesses& processes,
                                                       const std::vector<ProcessMemorySample>& samples) {
    return std::make_unique<EntryApplications>(context, processes, samples);
}

} // namespace vellmoor
