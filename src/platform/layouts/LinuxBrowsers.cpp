#include "layouts/LinuxBrowsers.h"

#include "layouts/LinuxEnvironment.h"

#include <string>
#include <string_view>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

/// One browser. `folders` are below the configuration folder (GNOME Web: below the data folder), and below the cache
/// folder for the caches; the snap bases are below the snap's own folder.
struct BrowserRow {
    std::string_view name;
    std::string_view symbol;
    Tint tint;
    BrowserFamily family;
    std::vector<std::string_view> folders;
    std::vector<std::string> exeNames;
    std::vector<std::string> cacheNames; ///< directly in the cache folder
    std::string_view flatpak;            ///< application ID
    std::string_view snap;               ///< empty: not offered
    std::string_view snapConfig;
    std::string_view snapCache;
};

// Sources: vendor documentation, and fresh profiles of Chromium 156, Firefox ESR 153 and GNOME Web 43.
const std::vector<BrowserRow>& browserRows() {
    using enum BrowserFamily;
    // clang-format off
    static const std::vector<BrowserRow> rows{
        {"Firefox", "globe", Tint::pink, Firefox, {"mozilla/firefox"}, {"firefox", "firefox-esr", "firefox-bin"},
         {"mozilla"}, "org.mozilla.firefox", "firefox", "common/.config", "common/.cache"},
        {"Chrome", "circle.hexagongrid", Tint::orange, Chromium,
         {"google-chrome", "google-chrome-beta", "google-chrome-unstable"}, {"chrome"},
         {"google-chrome*"}, "com.google.Chrome", "", "", ""},
        {"Chromium", "circle.hexagongrid", Tint::blue, Chromium, {"chromium"}, {"chromium", "chromium-browser"},
         {"chromium"}, "org.chromium.Chromium", "chromium", "common", "common/.cache"},
        {"Edge", "globe", Tint::indigo, Chromium,
         {"microsoft-edge", "microsoft-edge-beta", "microsoft-edge-dev"}, {"msedge", "msedge-beta", "msedge-dev"},
         {"microsoft-edge*"}, "com.microsoft.Edge", "", "", ""},
        {"Brave", "globe", Tint::red, Chromium,
         {"BraveSoftware/Brave-Browser", "BraveSoftware/Brave-Browser-Beta", "BraveSoftware/Brave-Browser-Nightly"},
         {"brave"}, {"BraveSoftware"}, "com.brave.Browser", "brave", "current/.config", "current/.cache"},
        {"Vivaldi", "globe", Tint::teal, Chromium, {"vivaldi", "vivaldi-snapshot"}, {"vivaldi-bin"},
         {"vivaldi*"}, "com.vivaldi.Vivaldi", "vivaldi", "current/.config", "current/.cache"},
        {"Opera", "globe", Tint::red, Chromium,
         {"opera", "opera-beta", "opera-developer"}, {"opera", "opera-beta", "opera-developer"},
         {"opera*"}, "com.opera.Opera", "opera", "current/.config", "current/.cache"},
        {"GNOME Web", "globe", Tint::cyan, GnomeWeb, {"epiphany"}, {"epiphany", "epiphany-browser"},
         {"epiphany"}, "org.gnome.Epiphany", "", "", ""},
    };
    // clang-format on
    return rows;
}

/// The base folders of one packaging.
struct Bases {
    fs::path home; ///< what stands for the home folder: Firefox's older place is below it
    fs::path config;
    fs::path cache;
    fs::path data;
    bool configIsStandard = true;
};

std::vector<BrowserFolder> foldersBelow(const BrowserRow& row, const Bases& bases) {
    std::vector<BrowserFolder> folders;
    const fs::path& base = row.family == BrowserFamily::GnomeWeb ? bases.data : bases.config;
    for (const std::string_view folder : row.folders) {
        folders.push_back({base / folder, bases.cache / folder, bases.configIsStandard});
        if (row.family == BrowserFamily::Firefox) { // before release 147; old installations stay there
            folders.push_back({bases.home / ".mozilla/firefox", bases.cache / folder});
        }
    }
    return folders;
}

LinuxBrowser browser(const BrowserRow& row, std::string_view suffix, std::vector<std::string> tokens) {
    return {std::string(row.name) + std::string(suffix),
            std::string(row.symbol),
            row.tint,
            row.family,
            {},
            std::move(tokens)};
}

LinuxBrowser nativeBrowser(const BrowserRow& row, const LinuxEnvironment& environment) {
    LinuxBrowser native = browser(row, "", row.exeNames);
    native.folders = foldersBelow(row, {environment.home, environment.config, environment.cache, environment.data});
    return native;
}

LinuxBrowser flatpakBrowser(const BrowserRow& row, const LinuxEnvironment& environment) {
    LinuxBrowser flatpak = browser(row, " (Flatpak)", {"flatpak:" + std::string(row.flatpak)});
    const fs::path base = environment.home / ".var/app" / row.flatpak;
    flatpak.folders = foldersBelow(row, {base, base / "config", base / "cache", base / "data"});
    return flatpak;
}

LinuxBrowser snapBrowser(const BrowserRow& row, const LinuxEnvironment& environment) {
    LinuxBrowser snap = browser(row, " (Snap)", {"snap:" + std::string(row.snap)});
    for (const fs::path& snaps : snapDataFolders(environment)) {
        const fs::path base = snaps / row.snap;
        const bool standard = row.snapConfig.ends_with("/.config");
        const Bases bases{base / "common", base / row.snapConfig, base / row.snapCache, base, standard};
        for (BrowserFolder& folder : foldersBelow(row, bases)) {
            snap.folders.push_back(std::move(folder));
        }
    }
    return snap;
}

RootPattern crashReports(const LinuxBrowser& browser, const fs::path& userData) {
    RootPattern pattern;
    pattern.base = userData / "Crash Reports";
    pattern.components = {
        browser.family == BrowserFamily::Firefox ? "pending|submitted" : "completed|pending|new|attachments", "*"};
    pattern.owners = browser.tokens;
    return pattern;
}

} // namespace

std::vector<fs::path> snapDataFolders(const LinuxEnvironment& environment) {
    return {environment.home / "snap", environment.home / ".snap/data"};
}

std::vector<LinuxBrowser> linuxBrowsers(const LinuxEnvironment& environment) {
    std::vector<LinuxBrowser> browsers;
    for (const BrowserRow& row : browserRows()) {
        browsers.push_back(nativeBrowser(row, environment));
        browsers.push_back(flatpakBrowser(row, environment));
        if (!row.snap.empty()) {
            browsers.push_back(snapBrowser(row, environment));
        }
    }
    return browsers;
}

std::vector<BusyNames> browserCacheNames() {
    std::vector<BusyNames> names;
    for (const BrowserRow& row : browserRows()) {
        names.push_back({row.cacheNames, row.exeNames});
    }
    return names;
}

std::vector<RootPattern> browserCrashReports(const LinuxEnvironment& environment) {
    std::vector<RootPattern> patterns;
    for (const LinuxBrowser& browser : linuxBrowsers(environment)) {
        if (browser.family == BrowserFamily::GnomeWeb) {
            continue; // its crashes go to the system's own collector
        }
        for (const BrowserFolder& folder : browser.folders) {
            patterns.push_back(crashReports(browser, folder.userData));
        }
    }
    return patterns;
}

} // namespace vellmoor
