// Bookmarks, passwords, extensions and settings are never a target and never lie inside one. Each fixture has the
// shape that the browser itself leaves after some use.
#include "ProtectedPaths.h"
#include "disk/Paths.h"
#include "privacy/PrivacyFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vellmoor::test {
namespace {

using testing::IsEmpty;
using testing::Not;

/// What a user would miss, and what may go.
struct Shape {
    std::vector<std::string> stays;
    std::vector<std::string> goes;
};

Shape operator+(Shape a, const Shape& b) {
    a.stays.insert(a.stays.end(), b.stays.begin(), b.stays.end());
    a.goes.insert(a.goes.end(), b.goes.begin(), b.goes.end());
    return a;
}

const std::string extension = "cjpalhdlnbpafiamejdnhcphjbkeiagm";

/// What Chromium keeps in a profile, on either system.
Shape chromiumProfile(const std::string& profile) {
    return {
        below(profile, {"Preferences",
                        "Secure Preferences",
                        "Bookmarks",
                        "Bookmarks.bak",
                        "AccountBookmarks",
                        "Login Data",
                        "Login Data-journal",
                        "Login Data For Account",
                        "Web Data",
                        "Web Data-journal",
                        "Account Web Data",
                        "Affiliation Database",
                        "Favicons",
                        "Favicons-journal",
                        "Top Sites",
                        "Shortcuts",
                        "Visited Links",
                        "Extensions/" + extension + "/1.62.0_0/manifest.json",
                        "Extension State/000003.log",
                        "Extension Rules/000003.log",
                        "Extension Scripts/000003.log",
                        "Local Extension Settings/" + extension + "/000003.log",
                        "Sync Extension Settings/" + extension + "/000003.log",
                        "Managed Extension Settings/x/LOG",
                        "Sync Data/LevelDB/000003.log",
                        "Sessions/Session_13370000000000000",
                        "Sessions/Tabs_13370000000000001",
                        "Trust Tokens",
                        "TransportSecurity",
                        "Network Persistent State",
                        "Reporting and NEL",
                        "LOCK",
                        "LOG",
                        "Google Profile Picture.png",
                        "README",
                        "Web Applications/Manifest Resources/x/Icons/32.png",
                        "WebStorage/QuotaManager",
                        "GCM Store/000003.log",
                        "Platform Notifications/000003.log",
                        "Accounts/Avatar Images/1",
                        "Storage/ext/x/def/GPUCache/index",
                        "Service Worker/Database/000003.log",
                        "File System/000/p/00/00000000",
                        "databases/Databases.db",
                        "shared_proto_db/000003.log"}),
        below(profile, {"History", "History-journal", "Local Storage/leveldb/000003.log", "Session Storage/000003.log",
                        "IndexedDB/https_example.org_0.indexeddb.leveldb/000003.log"})};
}

Shape linuxChromium(const std::string& userData, const std::string& cache) {
    const Shape shared{
        below(userData, {"Local State", "First Run", "Last Version", "Variations",
                         "NativeMessagingHosts/org.keepassxc.keepassxc_browser.json", "Crash Reports/settings.dat",
                         "Safe Browsing/UrlBilling.store", "component_crx_cache/x", "GrShaderCache/data_0",
                         "System Profile/Preferences", "System Profile/History", "Guest Profile/Preferences",
                         "Guest Profile/History"}),
        {}};
    const std::string profile = userData + "/Profile 1";
    const Shape caches{
        {}, below(cache + "/Profile 1", {"Cache/Cache_Data/data_0", "Code Cache/js/index-dir/the-real-index"})};
    const Shape inside{{},
                       below(profile, {"Cookies", "Cookies-journal", "GPUCache/data_0", "DawnGraphiteCache/data_0",
                                       "DawnWebGPUCache/data_0"})};
    return chromiumProfile(profile) + inside + caches + shared;
}

/// The profile in the user-data folder itself, beside another one.
Shape linuxOpera() {
    return chromiumProfile(".config/opera") + chromiumProfile(".config/opera/Default") +
           Shape{{".config/opera/Local State"}, {".config/opera/Cookies", ".cache/opera/Cache/Cache_Data/data_0"}};
}

Shape linuxFirefox(const std::string& root, const std::string& cache) {
    const std::string profile = root + "/k3x9wq2a.default-release";
    const Shape shared{below(root, {"profiles.ini", "installs.ini", "Crash Reports/InstallTime20250101",
                                    "Pending Pings/b", "Profile Groups/c.sqlite"}),
                       {}};
    const Shape caches{{},
                       below(cache + "/k3x9wq2a.default-release",
                             {"cache2/entries/0A1B", "startupCache/scriptCache.bin", "thumbnails/a.png"})};
    const Shape storage{
        below(profile + "/storage",
              {"default/moz-extension+++a1b2c3d4-0000-4000-8000-123456789abc^userContextId=4294967295/idb/1.sqlite",
               "default/moz-extension+++e5f6/.metadata-v2", "default/file+++home+u+page.html/ls/data.sqlite",
               "default/about+newtab/.metadata-v2", "permanent/chrome/idb/3870112724rsegmnoittet-es.sqlite",
               "permanent/indexeddb+++fx-devtools/idb/1.sqlite"}),
        below(profile + "/storage",
              {"default/https+++example.org/ls/data.sqlite", "default/http+++localhost+8080/idb/1.sqlite",
               "temporary/https+++example.org/cache/caches.sqlite", "ls-archive.sqlite"})};
    const Shape files{
        below(profile, {"prefs.js",
                        "user.js",
                        "key4.db",
                        "logins.json",
                        "logins-backup.json",
                        "logins.db",
                        "cert9.db",
                        "pkcs11.txt",
                        "favicons.sqlite",
                        "favicons.sqlite-wal",
                        "formhistory.sqlite",
                        "bookmarkbackups/bookmarks-2025-01-01_12_x==.jsonlz4",
                        "permissions.sqlite",
                        "content-prefs.sqlite",
                        "protections.sqlite",
                        "extensions.json",
                        "extension-preferences.json",
                        "extension-settings.json",
                        "addons.json",
                        "addonStartup.json.lz4",
                        "extensions/uBlock0@raymondhill.net.xpi",
                        "browser-extension-data/uBlock0@raymondhill.net/storage.js",
                        "storage-sync-v2.sqlite",
                        "storage.sqlite",
                        "containers.json",
                        "handlers.json",
                        "search.json.mozlz4",
                        "sessionstore.jsonlz4",
                        "sessionstore-backups/previous.jsonlz4",
                        "xulstore.json",
                        "times.json",
                        "chrome/userChrome.css",
                        "SiteSecurityServiceState.bin"}),
        below(profile, {"downloads.json", "cookies.sqlite", "cookies.sqlite-wal", "webappsstore.sqlite"})};
    return files + storage + caches + shared;
}

Shape linuxGnomeWeb(const std::string& data, const std::string& cache) {
    const Shape caches{
        {cache + "/adblock/filters/x"},
        below(cache, {"WebKitCache/Version 17/salt", "CacheStorage/x/salt", "icondatabase/favicons.db"})};
    const Shape files{
        below(data, {"bookmarks.gvdb", "session_state.xml", "permissions.ini", "hsts-storage.sqlite",
                     "web_extensions/ublock.xpi", "search-engines.gvdb", "gsb-threats.db", "mediakeys/v1/salt",
                     "user-stylesheet.css"}),
        below(data, {"ephy-history.db", "ephy-history.db-wal", "cookies.sqlite", "databases/v1/salt",
                     "localstorage/https_example.org_0.localstorage", "storage/x/origin", "serviceworkers/x"})};
    return files + caches;
}

Shape macSafari() {
    const std::string container = "Library/Containers/com.apple.Safari/Data/Library";
    const Shape files{below("Library/Safari",
                            {"Bookmarks.plist", "CloudTabs.db", "Extensions/Extensions.plist", "AutoFillCorrections.db",
                             "Form Values", "LastSession.plist", "PerSitePreferences.db", "TopSites.plist",
                             "Favicon Cache/favicons.db", "Template Icons/x.png", "UserNotificationPermissions.plist"}),
                      below("Library/Safari", {"History.db", "History.db-wal", "Downloads.plist",
                                               "LocalStorage/https_example.org_0.localstorage"})};
    const Shape contained{
        below(container, {"Preferences/com.apple.Safari.plist", "SafariTabs.db", "WebKit/WebExtensions/x/State.plist"}),
        below(container, {"Caches/com.apple.Safari/WebKitCache/x", "Cookies/Cookies.binarycookies"})};
    const Shape others{{"Library/Preferences/com.apple.Safari.plist", "Library/Keychains/login.keychain-db",
                        "Library/Cookies/HSTS.plist", "Library/WebKit/com.apple.mail/x"},
                       {"Library/WebKit/com.apple.Safari/WebsiteData/x", "Library/Cookies/Cookies.binarycookies"}};
    return files + contained + others;
}

Shape macChromium(const std::string& userData, const std::string& cache) {
    const std::string profile = userData + "/Default";
    return chromiumProfile(profile) +
           Shape{below(userData, {"Local State", "First Run", "Profile 1/History", "Profile 1/Bookmarks"}),
                 below(profile, {"Network/Cookies", "Network/Cookies-journal", "DownloadMetadata"})} +
           Shape{{cache + "/PnaclTranslationCache/x"},
                 below(cache + "/Default", {"Cache/Cache_Data/data_0", "Code Cache/js/index", "GPUCache/data_0"})};
}

struct BrowserShape {
    std::string name;
    System system;
    Shape shape;
};

void PrintTo(const BrowserShape& browser, std::ostream* out) {
    *out << browser.name;
}

std::vector<BrowserShape> allShapes() {
    const auto linux = [](const char* name, Shape shape) {
        return BrowserShape{name, System::Linux, std::move(shape)};
    };
    const std::string epiphany = ".var/app/org.gnome.Epiphany/";
    return {
        linux("Chrome", linuxChromium(".config/google-chrome", ".cache/google-chrome")),
        linux("ChromiumSnap", linuxChromium("snap/chromium/common/chromium", "snap/chromium/common/.cache/chromium")),
        linux("BraveFlatpak", linuxChromium(".var/app/com.brave.Browser/config/BraveSoftware/Brave-Browser",
                                            ".var/app/com.brave.Browser/cache/BraveSoftware/Brave-Browser")),
        linux("Opera", linuxOpera()),
        linux("FirefoxOldPlace", linuxFirefox(".mozilla/firefox", ".cache/mozilla/firefox")),
        linux("FirefoxNewPlace", linuxFirefox(".config/mozilla/firefox", ".cache/mozilla/firefox")),
        linux("FirefoxSnap",
              linuxFirefox("snap/firefox/common/.mozilla/firefox", "snap/firefox/common/.cache/mozilla/firefox")),
        linux("GnomeWeb", linuxGnomeWeb(".local/share/epiphany", ".cache/epiphany")),
        linux("GnomeWebFlatpak", linuxGnomeWeb(epiphany + "data/epiphany", epiphany + "cache/epiphany")),
        {"Safari", System::Mac, macSafari()},
        {"MacChrome", System::Mac,
         macChromium("Library/Application Support/Google/Chrome", "Library/Caches/Google/Chrome")},
        {"MacEdge", System::Mac,
         macChromium("Library/Application Support/Microsoft Edge", "Library/Caches/Microsoft Edge")},
    };
}

/// The real shape on the disk, and every path that a clean of all rows would be given.
class BrowserHome : public testing::TestWithParam<BrowserShape> {
protected:
    BrowserHome() {
        makeFiles(home_, GetParam().shape.stays);
        makeFiles(home_, GetParam().shape.goes);
        for (const CleanupItem& row : privacyRows(home_)) {
            for (const CleanupTarget& target : row.targets) {
                if (row.isCleanable) {
                    cleanable_.push_back(target.url);
                }
                all_.push_back(target.url);
            }
        }
    }

    [[nodiscard]] bool isTaken(const std::string& path) const {
        return std::ranges::any_of(cleanable_, [&](const Path& target) {
            return target == home_.home / path || isStrictlyBelow(home_.home / path, target);
        });
    }

    EngineHome home_{GetParam().system};
    std::vector<Path> cleanable_;
    std::vector<Path> all_;
};

TEST_P(BrowserHome, WhatTheUserWouldMissIsNeverATargetNorInsideOne) {
    std::vector<std::string> lost = GetParam().shape.stays;
    std::erase_if(lost, [&](const std::string& path) { return !isTaken(path); });
    EXPECT_THAT(lost, IsEmpty());
}

TEST_P(BrowserHome, EveryTraceIsReached) {
    std::vector<std::string> missed = GetParam().shape.goes;
    std::erase_if(missed, [&](const std::string& path) { return isTaken(path); });
    EXPECT_THAT(missed, IsEmpty());
}

TEST_P(BrowserHome, NoTargetIsRefusedAsProtected) {
    ASSERT_THAT(all_, Not(IsEmpty()));
    for (const Path& target : all_) {
        EXPECT_EQ(PathGuard(home_.platform, home_.layout).refusalReason(target), std::nullopt) << target;
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, BrowserHome, testing::ValuesIn(allShapes()),
                         [](const auto& test) { return test.param.name; });

TEST(PrivacySafety, FirefoxBookmarksAreOnlyShown) {
    const EngineHome home(System::Linux);
    makeFiles(home, below(".mozilla/firefox/a.default", {"prefs.js", "places.sqlite"}));
    const auto row = rowOf(privacyRows(home), "Firefox History");
    EXPECT_EQ(targetPaths(home, row), std::vector<std::string>{".mozilla/firefox/a.default/places.sqlite"});
    EXPECT_FALSE(row.isCleanable);
    EXPECT_EQ(row.selectedBytes(), 0);
}

} // namespace
} // namespace vellmoor::test
