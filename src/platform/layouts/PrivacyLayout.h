#pragma once

#include "found/CleanupItem.h"
#include "found/Tint.h"
#include "layouts/BrowserFolder.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxBrowser;

/// A path below a profile, or below the folder that holds that profile's caches.
struct TracePath {
    enum class Folder : std::uint8_t { Profile, Cache };

    Folder folder = Folder::Profile;
    std::string path;         ///< relative; its last component may be a globMatches pattern
    bool onlyOutside = false; ///< only for a profile outside the place where the browser keeps them by itself
    std::string except = "";  ///< globMatches pattern; names that the pattern in `path` does not match
};

/// One kind of trace that a browser leaves.
struct TraceCategory {
    std::string key;         ///< of its row, behind the browser's
    std::string title;       ///< text key
    std::string description; ///< text key
    std::string note;        ///< text key, %@ stands for the description; empty: none
    CleanupRisk risk = CleanupRisk::high;
    std::vector<TracePath> paths;
    std::string previewReason; ///< text key, %@ stands for the browser; not empty: shown, never cleaned
};

/// How the profiles are found below `BrowserFolder::userData`.
enum class ProfileSearch : std::uint8_t {
    FolderItself, ///< it is the one profile, and `cache` its cache folder
    Chromium,     ///< folders that hold a file "Preferences"
    Opera,        ///< likewise, and the folder itself
    Firefox,      ///< named by profiles.ini, or holding prefs.js
};

/// A browser and the exact files that its categories consist of. Never a bookmark, password, extension or setting.
struct BrowserTraces {
    std::string name; ///< shown to the user
    std::vector<std::string> processNames;
    std::string symbol;
    Tint tint = Tint::gray;
    ProfileSearch search = ProfileSearch::FolderItself;
    std::vector<BrowserFolder> folders;
    std::vector<TraceCategory> categories;
};

struct PrivacyLayout {
    std::vector<BrowserTraces> browsers;
    /// A browser without a profile and a category of which nothing exists are left out; else they are listed as empty.
    bool dropsMissing = false;
};

/// A Chromium-based browser with one profile and the cache folder of that profile.
BrowserTraces chromiumPrivacyDefinition(std::string name, std::vector<std::string> processNames, std::string symbol,
                                        Tint tint, std::filesystem::path profile, std::filesystem::path cache);

PrivacyLayout macPrivacyLayout(const std::filesystem::path& home, std::uint32_t userId,
                               const std::filesystem::path& root);
PrivacyLayout linuxPrivacyLayout(const std::vector<LinuxBrowser>& browsers);

} // namespace vellmoor
