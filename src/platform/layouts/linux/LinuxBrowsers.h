// The one table of Linux browsers: where each keeps its profiles, caches and crash reports, natively, as a Flatpak
// and as a snap. The privacy, permission and junk tables are made from it.
#pragma once

#include "found/Tint.h"
#include "layouts/BrowserFolder.h"
#include "layouts/OwnedFolders.h"
#include "layouts/RootPattern.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

/// Which files a profile holds.
enum class BrowserFamily : std::uint8_t {
    Chromium,
    Opera, ///< Chromium's, but the user-data folder itself may be a profile
    Firefox,
    GnomeWeb,
};

/// A browser in one packaging.
struct LinuxBrowser {
    std::string name; ///< as shown, with " (Flatpak)" or " (Snap)"
    std::string symbol;
    Tint tint = Tint::gray;
    BrowserFamily family = BrowserFamily::Chromium;
    std::vector<BrowserFolder> folders;
    std::vector<std::string> tokens; ///< one of these among the running names means that it runs
};

/// In table order; native, Flatpak, snap within a browser. A packaging that the vendor does not offer is left out.
std::vector<LinuxBrowser> linuxBrowsers(const LinuxEnvironment& environment);

/// What browsers, Thunderbird, Flatpaks and snaps write to while they run.
std::vector<OwnedFolders> linuxOwnedFolders(const LinuxEnvironment& environment,
                                            const std::vector<LinuxBrowser>& browsers);

/// The finished crash reports of every browser; what else lies beside them are its crash-report settings.
std::vector<RootPattern> browserCrashReports(const std::vector<LinuxBrowser>& browsers);

/// The folders that may hold the data of snaps: the second one where snapd hides the first.
std::vector<std::filesystem::path> snapDataFolders(const LinuxEnvironment& environment);

} // namespace vellmoor
