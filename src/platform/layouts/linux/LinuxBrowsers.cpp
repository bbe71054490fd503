#include "layouts/linux/LinuxBrowsers.h"

#include "layouts/linux/LinuxEnvironment.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

/// One browser. Its folders are below the base folders of each packaging.
struct BrowserRow {
    std::string_view name;
    std::string_view symbol;
    Tint tint;
    BrowserFamily family;
    std::vector<std::string_view> folders; ///< below CONFIG; "~/": below the home; GNOME Web: below DATA
    std::string_view cache;                ///< below CACHE, of all folders; empty: each has its own, named like it
    std::vector<std::string> exeNames;
    std::string cacheNames;                 ///< directly in CACHE, as globMatches alternatives
    std::vector<std::string_view> flatpaks; ///< application IDs
    std::string_view snap = "";             ///< empty: not offered
    std::string_view snapConfig = "";       ///< below the snap's own folder
    std::string_view snapCache = "";
};

// Sources: vendor documentation, and fresh profiles of Chromium 156, Firefox ESR 153 and GNOME Web 43.
const std::vector<BrowserRow>& browserRows() {
    using enum BrowserFamily;
    // clang-format off
    static const std::vector<BrowserRow> rows{
        {"Firefox", "globe", Tint::pink, Firefox, {"mozilla/firefox", "~/.mozilla/firefox"}, "mozilla/firefox",
         {"firefox", "firefox-esr", "firefox-bin"}, "mozilla", {"org.mozilla.firefox"},
         "firefox", "common/.config", "common/.cache"},
        {"Chrome", "circle.hexagongrid", Tint::orange, Chromium,
         {"google-chrome", "google-chrome-beta", "google-chrome-unstable"}, "", {"chrome"},
         "google-chrome*", {"com.google.Chrome"}},
        {"Chromium", "circle.hexagongrid", Tint::blue, Chromium, {"chromium"}, "", {"chromium", "chromium-browser"},
         "chromium", {"org.chromium.Chromium", "io.github.ungoogled_software.ungoogled_chromium"},
         "chromium", "common", "common/.cache"},
        {"Edge", "globe", Tint::indigo, Chromium,
         {"microsoft-edge", "microsoft-edge-beta", "microsoft-edge-dev"}, "", {"msedge", "msedge-beta", "msedge-dev"},
         "microsoft-edge*", {"com.microsoft.Edge"}},
        {"Brave", "globe", Tint::red, Chromium,
         {"BraveSoftware/Brave-Browser", "BraveSoftware/Brave-Browser-Beta", "BraveSoftware/Brave-Browser-Nightly"}, "",
         {"brave"}, "BraveSoftware", {"com.brave.Browser"}, "brave", "current/.config", "current/.cache"},
        {"Vivaldi", "globe", Tint::teal, Chromium, {"vivaldi", "vivaldi-snapshot"}, "", {"vivaldi-bin"},
         "vivaldi*", {"com.vivaldi.Vivaldi"}, "vivaldi", "current/.config", "current/.cache"},
        {"Opera", "globe", Tint::red, Opera, {"opera", "opera-beta", "opera-developer"}, "",
         {"opera", "opera-beta", "opera-developer"}, "opera*", {"com.opera.Opera"},
         "opera", "current/.config", "current/.cache"},
        {"LibreWolf", "globe", Tint::teal, Firefox, {"~/.librewolf", "librewolf/librewolf"}, "librewolf",
         {"librewolf", "librewolf-bin"}, "librewolf", {"io.gitlab.librewolf-community"}},
        {"Waterfox", "globe", Tint::blue, Firefox, {"~/.waterfox"}, "waterfox",
         {"waterfox", "waterfox-bin"}, "waterfox", {"net.waterfox.waterfox"}},
        {"Zen", "globe", Tint::indigo, Firefox, {"~/.zen", "zen"}, "zen",
         {"zen", "zen-bin"}, "zen", {"app.zen_browser.zen"}},
        {"Floorp", "globe", Tint::pink, Firefox, {"~/.floorp"}, "floorp",
         {"floorp", "floorp-bin"}, "floorp", {"one.ablaze.floorp"}},
        {"GNOME Web", "globe", Tint::cyan, GnomeWeb, {"epiphany"}, "", {"epiphany", "epiphany-browser"},
         "epiphany", {"org.gnome.Epiphany"}},
    };
    // clang-format on
    return rows;
}

/// The base folders of one packaging.
struct Bases {
    fs::path home; ///< what stands for the home folder
    fs::path config;
    fs::path cache;
    fs::path data;
    bool configIsStandard = true;
};

std::vector<BrowserFolder> foldersBelow(const BrowserRow& row, const Bases& bases) {
    constexpr std::string_view inHome = "~/";
    std::vector<BrowserFolder> folders;
    const fs::path& base = row.family == BrowserFamily::GnomeWeb ? bases.data : bases.config;
    for (const std::string_view folder : row.folders) {
        const bool atHome = folder.starts_with(inHome);
        const std::string_view cache = row.cache.empty() ? folder : row.cache;
        folders.push_back({atHome ? bases.home / folder.substr(inHome.size()) : base / folder, bases.cache / cache,
                           atHome || bases.configIsStandard});
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
    LinuxBrowser flatpak = browser(row, " (Flatpak)", {});
    for (const std::string_view id : row.flatpaks) {
        const fs::path base = environment.home / ".var/app" / id;
        flatpak.tokens.push_back("flatpak:" + std::string(id));
        std::ranges::move(foldersBelow(row, {base, base / "config", base / "cache", base / "data"}),
                          std::back_inserter(flatpak.folders));
    }
    return flatpak;
}

LinuxBrowser snapBrowser(const BrowserRow& row, const LinuxEnvironment& environment) {
    LinuxBrowser snap = browser(row, " (Snap)", {"snap:" + std::string(row.snap)});
    for (const fs::path& snaps : snapDataFolders(environment)) {
        const fs::path base = snaps / row.snap;
        const bool standard = row.snapConfig.ends_with("/.config");
        const Bases bases{base / "common", base / row.snapConfig, base / row.snapCache, base, standard};
        std::ranges::move(foldersBelow(row, bases), std::back_inserter(snap.folders));
    }
    return snap;
}

RootPattern crashReports(const LinuxBrowser& browser, const fs::path& userData) {
    const bool isFirefox = browser.family == BrowserFamily::Firefox;
    return {.base = userData,
            .below = std::string("Crash Reports/") +
                     (isFirefox ? "pending|submitted/*" : "completed|pending|new|attachments/*"),
            .except = {}};
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

std::vector<OwnedFolders> linuxOwnedFolders(const LinuxEnvironment& environment,
                                            const std::vector<LinuxBrowser>& browsers) {
    std::vector<OwnedFolders> owned;
    for (const LinuxBrowser& browser : browsers) {
        for (const BrowserFolder& folder : browser.folders) {
            owned.push_back({folder.userData, "", browser.name, browser.tokens});
            owned.push_back({folder.cache, "", browser.name, browser.tokens});
        }
    }
    for (const BrowserRow& row : browserRows()) {
        owned.push_back({environment.cache, row.cacheNames, std::string(row.name), row.exeNames});
    }
    owned.push_back({environment.cache,
                     "thunderbird",
                     "Thunderbird",
                     {"thunderbird", "thunderbird-bin", "flatpak:org.mozilla.Thunderbird", "snap:thunderbird"}});
    owned.push_back({environment.home / ".var/app", "*", "", {"flatpak:"}});
    for (const fs::path& snaps : snapDataFolders(environment)) {
        owned.push_back({snaps, "*", "", {"snap:"}});
    }
    return owned;
}

std::vector<RootPattern> browserCrashReports(const std::vector<LinuxBrowser>& browsers) {
    std::vector<RootPattern> patterns;
    for (const LinuxBrowser& browser : browsers) {
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
