// Which installed application a Linux process belongs to. Five sources are asked, from the surest to the vaguest:
// the control group that the desktop made for the application, the two variables with which launchers and AppImages
// mark their children, the program's own path, and the parent process.
#include "Glob.h"
#include "Paths.h"
#include "Platform.h"
#include "applications/AppUninstaller.h"
#include "applications/DesktopEntries.h"
#include "applications/EntryPrograms.h"
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

    [[nodiscard]] bool isKnown() const { return entry != nullptr || !id.empty() || !appImage.empty(); }
    [[nodiscard]] std::string key() const {
        return entry != nullptr ? entry->path.native() : appImage.empty() ? id : appImage.native();
    }
};

class EntryApplications : public ProcessApplications {
public:
    EntryApplications(EngineContext& context, const std::vector<ProcessMemorySample>& samples)
        : context_(context),
          processes_(context.platform(), context.layout()),
          programs_(context),
          own_(realPath(context.platform().ownPath())),
          ownEntry_(programs_.byProgram(own_)) {
        for (const ProcessMemorySample& sample : samples) {
            commands_.emplace(sample.pid, sample.command);
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

    MemoryApp describe(const std::string& key, const ProcessMemorySample& sample) override {
        const Owner& owner = ownerByKey_.at(key);
        MemoryApp app;
        app.isActive = owner.entry != nullptr;
        if (owner.entry != nullptr) {
            app.path = owner.entry->path.native();
            app.bundleIdentifier = owner.entry->id;
            app.name = owner.entry->name;
        } else if (!owner.id.empty()) {
            app.bundleIdentifier = owner.id;
            app.name = friendlyName(owner.id, owner.id);
            app.path = sample.command.empty() ? std::nullopt : std::optional(sample.command);
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
        const GroupApplication inGroup = groupApplication(group, context_.platform().userId());
        if (inGroup.id) {
            return {.entry = programs_.byId(*inGroup.id), .id = *inGroup.id, .appImage = {}};
        }
        if (!inGroup.isTerminalChild) {
            if (Owner owner = launchedOwner(pid); owner.isKnown()) {
                return owner;
            }
        }
        if (const InstalledEntry* entry = command.empty() ? nullptr : programs_.byProgram(realPath(command))) {
            return {.entry = entry, .id = entry->id, .appImage = {}};
        }
        return parentsOwner(pid, command);
    }

    /// What the variables say that launchers and AppImages set.
    Owner launchedOwner(std::int32_t pid) {
        const std::string environment = processes_.environment(pid);
        const auto file = environmentValue(environment, "GIO_LAUNCHED_DESKTOP_FILE");
        const auto launched = environmentValue(environment, "GIO_LAUNCHED_DESKTOP_FILE_PID");
        if (file && launched && *launched == std::to_string(pid)) { // else it was inherited from the launched one
            if (const InstalledEntry* entry = entryOfFile(placedPath(*file))) {
                return {.entry = entry, .id = entry->id, .appImage = {}};
            }
        }
        const auto image = environmentValue(environment, "APPIMAGE");
        if (!image || !image->starts_with('/')) {
            return {};
        }
        const Path path = realPath(placedPath(*image));
        const InstalledEntry* entry = programs_.byProgram(path);
        return {.entry = entry, .id = entry == nullptr ? std::string() : entry->id, .appImage = path};
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

    /// The parent's application, for a helper program that lies beside the parent's.
    Owner parentsOwner(std::int32_t pid, const std::string& command) {
        const std::optional<std::int32_t> parent = processes_.parent(pid);
        if (!parent || command.empty()) {
            return {};
        }
        const auto parentCommand = commands_.find(*parent);
        const bool isBeside = parentCommand != commands_.end() &&
                              Path(parentCommand->second).parent_path() == Path(command).parent_path();
        return isBeside ? ownerOf(*parent) : Owner();
    }

    [[nodiscard]] Path placedPath(std::string_view path) const {
        return placed(lexicallyStandardized(path), context_.layout().home, context_.layout().root);
    }

    EngineContext& context_;
    LinuxProcesses processes_;
    EntryPrograms programs_;
    Path own_;
    const InstalledEntry* ownEntry_;
    std::map<std::int32_t, std::string> commands_;
    std::map<std::int32_t, Owner> owners_;
    std::map<std::string, Owner> ownerByKey_;
    std::deque<InstalledEntry> looseEntries_; // stable addresses
};

} // namespace

std::unique_ptr<ProcessApplications> entryApplications(EngineContext& context,
                                                       const std::vector<ProcessMemorySample>& samples) {
    return std::make_unique<EntryApplications>(context, samples);
}

} // namespace vellmoor
