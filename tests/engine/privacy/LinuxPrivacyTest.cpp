// Every browser in every packaging: where its rows come from and when it counts as running.
#include "ScopedUnprivileged.h"
#include "privacy/PrivacyFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum class Family : std::uint8_t { Chromium, Firefox, GnomeWeb };

/// One user-data folder of a browser in one packaging.
struct BrowserPlace {
    std::string name;
    Tint tint;
    Family family;
    std::string userData;
    std::string cache;
    std::string exe;  ///< of its process
    std::string unit; ///< systemd unit of its process
};

void PrintTo(const BrowserPlace& place, std::ostream* out) {
    *out << place.name << " in " << place.userData;
}

const std::string noUnit = "session-2.scope";

std::string flatpakUnit(const std::string& id) {
    return "app-flatpak-" + id + "-4242.scope";
}
std::string snapUnit(const std::string& name) {
    return "snap." + name + "." + name + "-1b2c3d4e-0000-4000-8000-123456789abc.scope";
}

std::vector<BrowserPlace> chromiumPlaces() {
    std::vector<BrowserPlace> places;
    const auto native = [&](const char* name, Tint tint, const std::string& folder, const char* exe) {
        places.push_back({name, tint, Family::Chromium, ".config/" + folder, ".cache/" + folder, exe, noUnit});
    };
    const auto flatpak = [&](const char* name, Tint tint, const std::string& id, const std::string& folder) {
        places.push_back({std::string(name) + " (Flatpak)", tint, Family::Chromium,
                          ".var/app/" + id + "/config/" + folder, ".var/app/" + id + "/cache/" + folder,
                          "/app/bin/browser", flatpakUnit(id)});
    };
    const auto snap = [&](const char* name, Tint tint, const std::string& id, const std::string& userData,
                          const std::string& cache) {
        for (const std::string snaps : {"snap/", ".snap/data/"}) {
            places.push_back({std::string(name) + " (Snap)", tint, Family::Chromium, snaps + id + "/" + userData,
                              snaps + id + "/" + cache, "/snap/" + id + "/7/browser", snapUnit(id)});
        }
    };
    for (const char* folder : {"google-chrome", "google-chrome-beta", "google-chrome-unstable"}) {
        native("Chrome", Tint::orange, folder, "/opt/google/chrome/chrome");
    }
    flatpak("Chrome", Tint::orange, "com.google.Chrome", "google-chrome");
    native("Chromium", Tint::blue, "chromium", "/usr/lib/chromium/chromium");
    native("Chromium", Tint::blue, "chromium", "/usr/lib/chromium-browser/chromium-browser");
    flatpak("Chromium", Tint::blue, "org.chromium.Chromium", "chromium");
    flatpak("Chromium", Tint::blue, "io.github.ungoogled_software.ungoogled_chromium", "chromium");
    snap("Chromium", Tint::blue, "chromium", "common/chromium", "common/.cache/chromium");
    native("Edge", Tint::indigo, "microsoft-edge", "/opt/microsoft/msedge/msedge");
    native("Edge", Tint::indigo, "microsoft-edge-beta", "/opt/microsoft/msedge-beta/msedge-beta");
    native("Edge", Tint::indigo, "microsoft-edge-dev", "/opt/microsoft/msedge-dev/msedge-dev");
    flatpak("Edge", Tint::indigo, "com.microsoft.Edge", "microsoft-edge");
    for (const std::string folder : {"Brave-Browser", "Brave-Browser-Beta", "Brave-Browser-Nightly"}) {
        native("Brave", Tint::red, "BraveSoftware/" + folder, "/opt/brave.com/brave/brave");
    }
    flatpak("Brave", Tint::red, "com.brave.Browser", "BraveSoftware/Brave-Browser");
    snap("Brave", Tint::red, "brave", "current/.config/BraveSoftware/Brave-Browser",
         "current/.cache/BraveSoftware/Brave-Browser");
    native("Vivaldi", Tint::teal, "vivaldi", "/opt/vivaldi/vivaldi-bin");
    native("Vivaldi", Tint::teal, "vivaldi-snapshot", "/opt/vivaldi-snapshot/vivaldi-bin");
    flatpak("Vivaldi", Tint::teal, "com.vivaldi.Vivaldi", "vivaldi");
    snap("Vivaldi", Tint::teal, "vivaldi", "current/.config/vivaldi", "current/.cache/vivaldi");
    for (const std::string folder : {"opera", "opera-beta", "opera-developer"}) {
        native("Opera", Tint::red, folder, ("/usr/lib/opera/" + folder).c_str());
    }
    flatpak("Opera", Tint::red, "com.opera.Opera", "opera");
    snap("Opera", Tint::red, "opera", "current/.config/opera", "current/.cache/opera");
    return places;
}

std::vector<BrowserPlace> firefoxPlaces() {
    const std::string flatpak = ".var/app/org.mozilla.firefox/";
    std::vector<BrowserPlace> places;
    for (const char* exe :
         {"/usr/lib/firefox/firefox", "/usr/lib/firefox-esr/firefox-esr", "/opt/firefox/firefox-bin"}) {
        places.push_back(
            {"Firefox", Tint::pink, Family::Firefox, ".config/mozilla/firefox", ".cache/mozilla/firefox", exe, noUnit});
    }
    places.push_back({"Firefox", Tint::pink, Family::Firefox, ".mozilla/firefox", ".cache/mozilla/firefox",
                      "/usr/lib/firefox/firefox", noUnit});
    for (const std::string folder : {".mozilla/firefox", "config/mozilla/firefox"}) {
        places.push_back({"Firefox (Flatpak)", Tint::pink, Family::Firefox, flatpak + folder,
                          flatpak + "cache/mozilla/firefox", "/app/lib/firefox/firefox",
                          flatpakUnit("org.mozilla.firefox")});
    }
    for (const std::string snaps : {"snap/", ".snap/data/"}) {
        for (const std::string folder : {".mozilla/firefox", ".config/mozilla/firefox"}) {
            places.push_back({"Firefox (Snap)", Tint::pink, Family::Firefox, snaps + "firefox/common/" + folder,
                              snaps + "firefox/common/.cache/mozilla/firefox",
                              "/snap/firefox/4/usr/lib/firefox/firefox", snapUnit("firefox")});
        }
    }
    return places;
}

/// The other browsers of Firefox's family.
std::vector<BrowserPlace> firefoxKin() {
    std::vector<BrowserPlace> places;
    const auto add = [&](const char* name, Tint tint, const std::string& id, const std::string& flatpak,
                         const std::vector<std::string>& folders) {
        for (const std::string& folder : folders) {
            for (const std::string& exe : {id, id + "-bin"}) {
                places.push_back(
                    {name, tint, Family::Firefox, folder, ".cache/" + id, "/opt/" + id + "/" + exe, noUnit});
            }
        }
        const std::string base = ".var/app/" + flatpak + "/";
        places.push_back({std::string(name) + " (Flatpak)", tint, Family::Firefox, base + "." + id,
                          base + "cache/" + id, "/app/lib/" + id, flatpakUnit(flatpak)});
    };
    add("LibreWolf", Tint::teal, "librewolf", "io.gitlab.librewolf-community",
        {".librewolf", ".config/librewolf/librewolf"});
    add("Waterfox", Tint::blue, "waterfox", "net.waterfox.waterfox", {".waterfox"});
    add("Zen", Tint::indigo, "zen", "app.zen_browser.zen", {".zen", ".config/zen"});
    add("Floorp", Tint::pink, "floorp", "one.ablaze.floorp", {".floorp"});
    return places;
}

std::vector<BrowserPlace> allPlaces() {
    std::vector<BrowserPlace> places = firefoxPlaces();
    for (BrowserPlace& place : chromiumPlaces()) {
        places.push_back(std::move(place));
    }
    for (BrowserPlace& place : firefoxKin()) {
        places.push_back(std::move(place));
    }
    const std::string flatpak = ".var/app/org.gnome.Epiphany/";
    for (const char* exe : {"/usr/bin/epiphany", "/usr/bin/epiphany-browser"}) {
        places.push_back(
            {"GNOME Web", Tint::cyan, Family::GnomeWeb, ".local/share/epiphany", ".cache/epiphany", exe, noUnit});
    }
    places.push_back({"GNOME Web (Flatpak)", Tint::cyan, Family::GnomeWeb, flatpak + "data/epiphany",
                      flatpak + "cache/epiphany", "/app/bin/epiphany", flatpakUnit("org.gnome.Epiphany")});
    return places;
}

std::string profileName(Family family) {
    return family == Family::Chromium ? "Default" : "k3x9.default-release";
}

/// The folder of a profile below the user-data or cache folder.
std::string profileIn(const std::string& folder, Family family) {
    return family == Family::GnomeWeb ? folder : folder + "/" + profileName(family);
}

/// A profile with one file of cookies and one of cache.
void makeProfile(const EngineHome& home, const BrowserPlace& place) {
    const std::string profile = profileIn(place.userData, place.family);
    const std::string cache = profileIn(place.cache, place.family);
    switch (place.family) {
    case Family::Chromium:
        makeFiles(home, {profile + "/Preferences", profile + "/Cookies", cache + "/Code Cache/js/index"});
        break;
    case Family::Firefox:
        makeFiles(home, {profile + "/prefs.js", profile + "/cookies.sqlite", cache + "/cache2/entries/A1"});
        break;
    case Family::GnomeWeb:
        makeFiles(home, {profile + "/cookies.sqlite", cache + "/WebKitCache/Version 17/salt"});
        break;
    }
}

class LinuxBrowserPlace : public testing::TestWithParam<BrowserPlace> {
protected:
    LinuxBrowserPlace() { makeProfile(home_, GetParam()); }

    EngineHome home_{System::Linux};
};

TEST_P(LinuxBrowserPlace, ItsProfileAndCacheMakeTheRowsOfThisBrowserAlone) {
    const auto& [name, tint, family, userData, cache, exe, unit] = GetParam();
    const std::string cookies = family == Family::Chromium ? "Cookies" : "cookies.sqlite";
    const std::string caches = family == Family::Chromium  ? "Code Cache"
                               : family == Family::Firefox ? "cache2"
                                                           : "WebKitCache";
    const auto rows = privacyRows(home_);
    ASSERT_THAT(titles(rows), ElementsAre(name + " Cookies", name + " Cache"));
    EXPECT_THAT(targetPaths(home_, rows[0]), ElementsAre(profileIn(userData, family) + "/" + cookies));
    EXPECT_THAT(targetPaths(home_, rows[1]), ElementsAre(profileIn(cache, family) + "/" + caches));
    EXPECT_EQ(rows[0].tint, tint);
}

TEST_P(LinuxBrowserPlace, WhileItRunsItsRowsSaySoAndAreNotCleanable) {
    runProcess(home_, 4242, GetParam().exe, GetParam().unit);
    const auto row = rowOf(privacyRows(home_), GetParam().name + " Cookies");
    EXPECT_EQ(row.description, GetParam().name + " is running. Quit the browser to clean Cookies");
    EXPECT_FALSE(row.isCleanable);
    EXPECT_EQ(row.risk, CleanupRisk::previewOnly);
}

TEST_P(LinuxBrowserPlace, WhileAnotherProgramRunsItsRowsAreCleanable) {
    runProcess(home_, 4242, "/usr/bin/gedit");
    const auto row = rowOf(privacyRows(home_), GetParam().name + " Cookies");
    EXPECT_EQ(row.description, "Login sessions and site cookies (of all sites), unchecked by default");
    EXPECT_TRUE(row.isCleanable);
    EXPECT_FALSE(row.isSelected);
}

INSTANTIATE_TEST_SUITE_P(Places, LinuxBrowserPlace, testing::ValuesIn(allPlaces()));

// Rows of several browsers

TEST(LinuxPrivacy, BrowsersComeInTableOrderAndEachNativeFlatpakSnap) {
    const EngineHome home(System::Linux);
    const std::vector<BrowserPlace> places = allPlaces();
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        makeProfile(home, *place);
    }
    std::vector<std::string> browsers;
    for (const std::string& title : titles(privacyRows(home))) {
        if (title.ends_with(" Cookies")) {
            browsers.push_back(title.substr(0, title.size() - 8));
        }
    }
    EXPECT_THAT(browsers, ElementsAre("Firefox", "Firefox (Flatpak)", "Firefox (Snap)", "Chrome", "Chrome (Flatpak)",
                                      "Chromium", "Chromium (Flatpak)", "Chromium (Snap)", "Edge", "Edge (Flatpak)",
                                      "Brave", "Brave (Flatpak)", "Brave (Snap)", "Vivaldi", "Vivaldi (Flatpak)",
                                      "Vivaldi (Snap)", "Opera", "Opera (Flatpak)", "Opera (Snap)", "LibreWolf",
                                      "LibreWolf (Flatpak)", "Waterfox", "Waterfox (Flatpak)", "Zen", "Zen (Flatpak)",
                                      "Floorp", "Floorp (Flatpak)", "GNOME Web", "GNOME Web (Flatpak)"));
}

TEST(LinuxPrivacy, AHomeWithoutBrowsersHasNoRows) {
    const EngineHome home(System::Linux);
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(LinuxPrivacy, ACategoryOfWhichNothingExistsIsDropped) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".config/chromium/Default", {"Preferences", "History"}));
    EXPECT_THAT(titles(privacyRows(home)), ElementsAre("Chromium History"));
}

TEST(LinuxPrivacy, ADanglingLinkExists) {
    const EngineHome home(System::Linux);
    home.file(".config/chromium/Default/Preferences");
    home.link("nowhere", ".config/chromium/Default/History");
    EXPECT_THAT(targetsOf(home, "Chromium History"), ElementsAre(".config/chromium/Default/History"));
}

TEST(LinuxPrivacy, ARunningFlatpakLeavesTheNativeBrowserCleanable) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".config/chromium/Default", {"Preferences", "Cookies"}));
    makeFiles(home, below(".var/app/org.chromium.Chromium/config/chromium/Default", {"Preferences", "Cookies"}));
    runProcess(home, 4242, "/app/chromium/chromium", flatpakUnit("org.chromium.Chromium"));
    const auto rows = privacyRows(home);
    EXPECT_TRUE(rowOf(rows, "Chromium Cookies").isCleanable);
    EXPECT_FALSE(rowOf(rows, "Chromium (Flatpak) Cookies").isCleanable);
}

TEST(LinuxPrivacy, ARunningSnapLeavesTheNativeBrowserCleanable) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".mozilla/firefox/a.default", {"prefs.js", "cookies.sqlite"}));
    makeFiles(home, below("snap/firefox/common/.mozilla/firefox/b.default", {"prefs.js", "cookies.sqlite"}));
    runProcess(home, 4242, "/snap/firefox/4/usr/lib/firefox/firefox", snapUnit("firefox"));
    const auto rows = privacyRows(home);
    EXPECT_TRUE(rowOf(rows, "Firefox Cookies").isCleanable);
    EXPECT_FALSE(rowOf(rows, "Firefox (Snap) Cookies").isCleanable);
}

// Folders that cannot be read

TEST(LinuxPrivacy, ABrowserWhoseFolderIsClosedIsNamedInsteadOfVanishing) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".mozilla/firefox/a.default", {"prefs.js", "cookies.sqlite"}));
    home.setMode(".mozilla", 0);
    const ScopedUnprivileged unprivileged;
    const auto rows = privacyRows(home);
    ASSERT_THAT(titles(rows), ElementsAre("Firefox access limited"));
    EXPECT_EQ(rows[0].description, "Unable to read Firefox's profile. Check its permissions");
    EXPECT_EQ(rows[0].risk, CleanupRisk::previewOnly);
    EXPECT_FALSE(rows[0].isCleanable);
    EXPECT_THAT(targetPaths(home, rows[0]), ElementsAre(".mozilla"));
}

TEST(LinuxPrivacy, TheClosedFolderItselfIsTheTarget) {
    const EngineHome home(System::Linux);
    home.file(".config/BraveSoftware/Brave-Browser/Default/Preferences");
    home.setMode(".config/BraveSoftware/Brave-Browser", 0);
    const ScopedUnprivileged unprivileged;
    EXPECT_THAT(targetsOf(home, "Brave access limited"), ElementsAre(".config/BraveSoftware/Brave-Browser"));
}

TEST(LinuxPrivacy, OneClosedProfileBesideOpenOnesIsNamedToo) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".mozilla/firefox/a.default", {"prefs.js", "cookies.sqlite"}));
    makeFiles(home, below(".mozilla/firefox/b.work", {"prefs.js", "cookies.sqlite"}));
    home.file(".config/chromium/Profile 1/Preferences");
    home.folder(".config/chromium/Crashpad");
    home.setMode(".mozilla/firefox/b.work", 0);
    home.setMode(".config/chromium/Profile 1", 0);
    home.setMode(".config/chromium/Crashpad", 0);
    const ScopedUnprivileged unprivileged;
    const auto rows = privacyRows(home);
    ASSERT_THAT(titles(rows), ElementsAre("Firefox access limited", "Firefox Cookies", "Chromium access limited"));
    EXPECT_THAT(targetPaths(home, rows[0]), ElementsAre(".mozilla/firefox/b.work"));
    EXPECT_THAT(targetPaths(home, rows[2]), ElementsAre(".config/chromium/Profile 1"));
}

TEST(LinuxPrivacy, AClosedFolderThatBrowsersShareAccusesNone) {
    const EngineHome home(System::Linux);
    home.file(".config/chromium/Default/Preferences");
    home.setMode(".config", 0);
    const ScopedUnprivileged unprivileged;
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(LinuxPrivacy, ADanglingLinkIsNoClosedFolder) {
    const EngineHome home(System::Linux);
    home.folder(".config");
    home.link("nowhere", ".config/chromium");
    EXPECT_THAT(privacyRows(home), IsEmpty());
}

TEST(LinuxPrivacy, TheUsersOwnBaseFoldersCount) {
    EngineHome home(System::Linux);
    home.environment.config = home.home / "etc";
    home.environment.cache = home.home / "scratch";
    home.useEnvironment();
    makeFiles(home, {"etc/vivaldi/Default/Preferences", "etc/vivaldi/Default/Cookies",
                     "scratch/vivaldi/Default/GPUCache/index"});
    EXPECT_THAT(targetsOf(home, "Vivaldi Cookies"), ElementsAre("etc/vivaldi/Default/Cookies"));
    EXPECT_THAT(targetsOf(home, "Vivaldi Cache"), ElementsAre("scratch/vivaldi/Default/GPUCache"));
}

} // namespace
} // namespace vellmoor::test
