// The applications that the user can remove, as the uninstaller sees them before anything is measured.
#pragma once

#include "desktop/DesktopEntries.h"
#include "processes/LinuxProcesses.h"
#include "scan/EngineContext.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor {

enum class ApplicationKind : std::uint8_t { Bundle, Flatpak, AppImage, ProgramFolder };

struct ApplicationMetadata {
    Path appURL; ///< the bundle, file or folder that is the application
    std::string displayName;
    std::string unlocalizedName; ///< what its entry calls it in no language; empty: it has no such name
    std::optional<std::string> bundleIdentifier;
    ApplicationKind kind = ApplicationKind::Bundle;
};

/// Every removable application of the layout, folder after folder. Protected ones are left out.
std::vector<ApplicationMetadata> removableApplications(EngineContext& context);
/// Bundles (macOS) only.
std::vector<ApplicationMetadata> installedBundles(EngineContext& context);
/// Flatpaks of the user, AppImages and program folders only.
std::vector<ApplicationMetadata> unpackagedApplications(EngineContext& context);

/// A program that a desktop entry names in Exec or TryExec, executable or not.
struct EntryProgram {
    const InstalledEntry* entry = nullptr;
    Path program; ///< as it is written
    Path real;    ///< links resolved
};

std::vector<EntryProgram> entryPrograms(const EngineContext& context, const InstalledEntry& entry);
/// Whether the program is the application (a file) or lies in it (a folder); `real` is its path without links.
bool isProgramOf(const EntryProgram& program, const Path& application, const Path& real);

/// What runs at the moment, asked once.
class RunningPrograms {
public:
    RunningPrograms(EngineContext& context, const LinuxProcesses& processes);

    [[nodiscard]] bool runs(const ApplicationMetadata& application) const;

private:
    void read(const LinuxProcesses& processes);
    [[nodiscard]] bool runsProgramOf(const Path& application) const;

    EngineContext& context_;
    std::set<Path> bundlePaths_;
    std::set<std::string> identifiers_;
    std::set<std::string> flatpaks_; ///< their IDs
    std::set<Path> programs_;        ///< of the user's processes, links resolved; AppImages as the files that they are
};

} // namespace vellmoor
