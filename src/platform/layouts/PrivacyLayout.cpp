#include "layouts/PrivacyLayout.h"

#include "layouts/linux/LinuxBrowsers.h"

#include <initializer_list>
#include <string_view>
#include <utility>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

using Paths = std::vector<TracePath>;

Paths inProfile(std::initializer_list<std::string_view> names) {
    Paths paths;
    for (const std::string_view name : names) {
        paths.push_back({TracePath::Folder::Profile, std::string(name)});
    }
    return paths;
}

Paths inCache(std::initializer_list<std::string_view> names) {
    Paths paths;
    for (const std::string_view name : names) {
        paths.push_back({TracePath::Folder::Cache, std::string(name)});
    }
    return paths;
}

/// For a profile that lies elsewhere: the browser then keeps the caches in it.
Paths inProfileOutside(std::initializer_list<std::string_view> names) {
    Paths paths = inProfile(names);
    for (TracePath& path : paths) {
        path.onlyOutside = true;
    }
    return paths;
}

Paths joined(std::initializer_list<Paths> parts) {
    Paths all;
    for (const Paths& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

// The categories, whose titles and risks every browser shares.

TraceCategory history(std::string_view description, Paths paths) {
    return {"history", "历史记录", std::string(description), {}, CleanupRisk::high, std::move(paths), {}};
}

TraceCategory downloads(std::string_view description, Paths paths) {
    return {"downloads", "下载记录", std::string(description), {}, CleanupRisk::cautious, std::move(paths), {}};
}

TraceCategory cookies(Paths paths) {
    return {"cookies", "Cookie", "登录会话和站点 Cookie", {}, CleanupRisk::high, std::move(paths), {}};
}

TraceCategory cache(Paths paths) {
    return {"cache", "缓存", "网页缓存和可再生资源", {}, CleanupRisk::cautious, std::move(paths), {}};
}

TraceCategory localStorage(std::string_view description, Paths paths) {
    return {"localStorage", "本地存储", std::string(description), {}, CleanupRisk::high, std::move(paths), {}};
}

constexpr std::string_view historyDatabase = "浏览历史数据库";
constexpr std::string_view downloadList = "下载列表记录";
constexpr std::string_view downloadMetadata = "下载元数据和记录";
constexpr std::string_view siteDatabases = "网站本地数据库和离线数据";
constexpr std::string_view siteStorage = "站点本地存储、会话和 IndexedDB";

std::vector<TraceCategory> chromiumCategories(Paths cookiePaths, Paths cachePaths, TraceCategory storage) {
    return {
        history(historyDatabase, inProfile({"History", "History-journal"})),
        downloads(downloadMetadata, inProfile({"DownloadMetadata"})),
        cookies(std::move(cookiePaths)),
        cache(std::move(cachePaths)),
        std::move(storage),
    };
}

std::vector<TraceCategory> macChromiumCategories() {
    return chromiumCategories(inProfile({"Network/Cookies", "Network/Cookies-journal"}),
                              inCache({"Cache", "Cache/Cache_Data", "Code Cache", "GPUCache"}),
                              localStorage(siteStorage, inProfile({"Local Storage", "Session Storage", "IndexedDB"})));
}

/// On Linux the cookies lie in the profile itself; "Network" is where other systems have them. Databases of extensions
/// stand beside those of sites and stay; the two storages are one database each for both, which the row says.
std::vector<TraceCategory> linuxChromiumCategories() {
    Paths storage = inProfile({"Local Storage", "Session Storage", "IndexedDB/*"});
    storage.back().except = "chrome-extension_*";
    TraceCategory row = localStorage(siteStorage, std::move(storage));
    row.note = "%@（网站与扩展的数据在同一数据库中）";
    return chromiumCategories(inProfile({"Cookies", "Cookies-journal", "Network/Cookies", "Network/Cookies-journal"}),
                              joined({inCache({"Cache", "Code Cache", "GPUCache"}),
                                      inProfile({"GPUCache", "DawnGraphiteCache", "DawnWebGPUCache"}),
                                      inProfileOutside({"Cache", "Code Cache"})}),
                              std::move(row));
}

/// places.sqlite holds the bookmarks, too, so the history is only shown. Of the site storage, what belongs to
/// extensions and to the browser itself is left out by name.
std::vector<TraceCategory> firefoxCategories() {
    TraceCategory shownHistory =
        history(historyDatabase, inProfile({"places.sqlite", "places.sqlite-wal", "places.sqlite-shm"}));
    shownHistory.previewReason = "%@ 将历史记录与书签存放在同一数据库中，请在浏览器内清除历史记录";
    return {
        std::move(shownHistory),
        downloads(downloadList, inProfile({"downloads.json"})),
        cookies(inProfile({"cookies.sqlite", "cookies.sqlite-wal", "cookies.sqlite-shm"})),
        cache(
            joined({inCache({"cache2", "startupCache", "thumbnails", "OfflineCache"}), inProfileOutside({"cache2"})})),
        localStorage(siteDatabases,
                     inProfile({"storage/default/http*", "storage/temporary", "storage/ls-archive.sqlite",
                                "webappsstore.sqlite", "webappsstore.sqlite-wal", "webappsstore.sqlite-shm"})),
    };
}

std::vector<TraceCategory> gnomeWebCategories() {
    return {
        history(historyDatabase, inProfile({"ephy-history.db", "ephy-history.db-wal", "ephy-history.db-shm"})),
        cookies(inProfile({"cookies.sqlite", "cookies.sqlite-wal", "cookies.sqlite-shm"})),
        cache(inCache({"WebKitCache", "CacheStorage", "icondatabase"})),
        localStorage(siteDatabases, inProfile({"databases", "localstorage", "storage", "serviceworkers"})),
    };
}

BrowserTraces safari(const fs::path& library) {
    constexpr std::string_view container = "Containers/com.apple.Safari/Data/Library/";
    const std::string containerCookies = std::string(container) + "Cookies/Cookies.binarycookies";
    const std::string containerCaches = std::string(container) + "Caches";
    return {
        "Safari",
        {"Safari"},
        "safari",
        Tint::pink,
        ProfileSearch::FolderItself,
        {{library, library}},
        {
            history("历史数据库和临时日志",
                    inProfile({"Safari/History.db", "Safari/History.db-shm", "Safari/History.db-wal"})),
            downloads(downloadList, inProfile({"Safari/Downloads.plist"})),
            cookies(inProfile({"Cookies/Cookies.binarycookies", containerCookies})),
            cache(inProfile({containerCaches})),
            localStorage(siteDatabases, inProfile({"Safari/LocalStorage", "WebKit/com.apple.Safari"})),
        },
    };
}

std::pair<ProfileSearch, std::vector<TraceCategory>> tracesOf(BrowserFamily family) {
    switch (family) {
    case BrowserFamily::Firefox:
        return {ProfileSearch::Firefox, firefoxCategories()};
    case BrowserFamily::GnomeWeb:
        return {ProfileSearch::FolderItself, gnomeWebCategories()};
    case BrowserFamily::Opera:
        return {ProfileSearch::Opera, linuxChromiumCategories()};
    case BrowserFamily::Chromium:
        break;
    }
    return {ProfileSearch::Chromium, linuxChromiumCategories()};
}

} // namespace

BrowserTraces chromiumPrivacyDefinition(std::string name, std::vector<std::string> processNames, std::string symbol,
                                        Tint tint, fs::path profile, fs::path cache) {
    return {std::move(name),
            std::move(processNames),
            std::move(symbol),
            tint,
            ProfileSearch::FolderItself,
            {{std::move(profile), std::move(cache)}},
            macChromiumCategories()};
}

PrivacyLayout macPrivacyLayout(const fs::path& home, std::uint32_t, const fs::path&) {
    const fs::path library = home / "Library";
    const fs::path support = library / "Application Support";
    const fs::path caches = library / "Caches";
    return {{safari(library),
             chromiumPrivacyDefinition("Chrome", {"Google Chrome"}, "circle.hexagongrid", Tint::orange,
                                       support / "Google/Chrome/Default", caches / "Google/Chrome/Default"),
             chromiumPrivacyDefinition("Edge", {"Microsoft Edge"}, "globe", Tint::indigo,
                                       support / "Microsoft Edge/Default", caches / "Microsoft Edge/Default")},
            false};
}

PrivacyLayout linuxPrivacyLayout(const std::vector<LinuxBrowser>& browsers) {
    PrivacyLayout layout{{}, true};
    for (const LinuxBrowser& browser : browsers) {
        auto [search, categories] = tracesOf(browser.family);
        for (TraceCategory& category : categories) {
            if (category.key == "cookies") {
                category.note = "%@（所有网站）"; // which sites there are, only the browser's database tells
            }
        }
        layout.browsers.push_back({browser.name, browser.tokens, browser.symbol, browser.tint, search, browser.folders,
                                   std::move(categories)});
    }
    return layout;
}

} // namespace vellmoor
