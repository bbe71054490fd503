// The applications that the user can remove, as the uninstaller sees them before anything is measured.
#pragma once

#include "ScanContext.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor {

enum class ApplicationKind : std::uint8_t { Bundle, Flatpak, AppImage, ProgramFolder };

struct ApplicationMetadata {
    Path appURL; ///< the bundle, file or folder that is the application
    std::string displayName;
    std::optional<std::string> bundleIdentifier;
    ApplicationKind kind = ApplicationKind::Bundle;
};

/// Every removable application of the layout, folder after folder. Protected ones are left out.
std::vector<ApplicationMetadata> removableApplications(ScanContext& context);
/// Bundles (macOS) only.
std::vector<ApplicationMetadata> installedBundles(ScanContext& context);
/// Flatpaks of the user, AppImages and program folders only.
std::vector<ApplicationMetadata> unpackagedApplications(ScanContext& context);

/// The name in a bundle's property list, else its folder's name without the extension.
std::string bundleName(const ScanContext& context, const Path& bundle);
/// A file name without extension and without the version, machine and system that release files carry at the end.
std::string releaseName(std::string_view fileName);

/// Whether a program of `entry` is `application` or lies in it, written so or by its real path.
bool startsApplication(const ScanContext& context, const InstalledEntry& entry, const Path& application);

/// What runs at the moment, asked once.
class RunningPrograms {
public:
    explicit RunningPrograms(ScanContext& context);

    [[nodiscard]] bool runs(const ApplicationMetadata& application) const;

private:
    void readProcesses();
    [[nodiscard]] bool runsProgramOf(const Path& application) const;

    ScanContext& context_;
    std::set<Path> bundlePaths_;
    std::set<std::string> identifiers_;
    std::set<Path> programs_; ///< of the user's processes, links resolved; AppImages as the files that they are
};

} // namespace vellmoor
