#include "layouts/linux/LinuxJunkLayout.h"

#include "disk/Paths.h"
#include "layouts/linux/LinuxBrowsers.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

/// Names in the cache folder that are no caches or are in use: uploads that wait, received files, sessions, sockets,
/// indexes that take hours to rebuild, histories, keys.
const std::vector<std::string>& neverCaches() {
    static const std::vector<std::string> names{
        "rclone",   "sessions",  "keyring-*",   "ssh",       "gnupg", "ibus",     "fcitx*", "at-spi",
        "dconf",    "tracker*",  "localsearch", "evolution", "mu",    "borg",     "restic", "duplicity",
        "deja-dup", "bash",      "zsh",         "fish",      "vim",   "nvim",     "emacs",  "less",
        "mc",       "keepassxc", "cliphist",    "wal",       "obexd", "vellmoor*"};
    return names;
}

/// Folders in STATE that hold chats, not logs.
const std::vector<std::string>& chatFolders() {
    static const std::vector<std::string> names{"weechat", "irssi", "halloy",  "senpai", "profanity",
                                                "gajim",   "dino",  "hexchat", "purple"};
    return names;
}

/// A folder as the beginning of patterns.
struct Place {
    fs::path base;
    std::string below;
    BaseOrigin origin = BaseOrigin::Fixed;
};

std::string joined(const std::string& below, std::string_view name) {
    return below.empty() || name.empty() ? below + std::string(name) : below + "/" + std::string(name);
}

/// Collects patterns, most of which name whole folders.
class Patterns {
public:
    explicit Patterns(const LinuxEnvironment& environment) : environment_(environment) {}

    [[nodiscard]] Place home(std::string below = "") const { return {environment_.home, std::move(below)}; }
    [[nodiscard]] Place config(std::string below = "") const { return {environment_.config, std::move(below)}; }
    [[nodiscard]] Place data(std::string below = "") const { return {environment_.data, std::move(below)}; }
    [[nodiscard]] Place cache(std::string below = "") const {
        return {environment_.cache, std::move(below), BaseOrigin::BaseFolder};
    }
    [[nodiscard]] Place state() const { return {environment_.state, "", BaseOrigin::BaseFolder}; }
    /// The folder of a tool, which users move as a whole.
    [[nodiscard]] Place tool(const char* name) const { return {environment_.home / name, ""}; }

    Patterns& add(const Place& place, std::string_view below, RootKind kind, std::vector<std::string> except = {}) {
        list_.push_back({.base = place.base,
                         .below = joined(place.below, below),
                         .kind = kind,
                         .except = std::move(except),
                         .origin = place.origin});
        return *this;
    }
    Patterns& add(RootPattern pattern) {
        list_.push_back(std::move(pattern));
        return *this;
    }
    Patterns& folders(const Place& place, const std::vector<std::string_view>& names) {
        for (const std::string_view name : names) {
            add(place, name, RootKind::Folder);
        }
        return *this;
    }
    /// What the variable names, when it is set, and the default: a desktop application rarely sees the variables of a
    /// shell.
    Patterns& folders(std::string_view variable, const Place& fallback, const std::vector<std::string_view>& names) {
        if (const auto set = environment_.toolFolders.find(std::string(variable));
            set != environment_.toolFolders.end()) {
            folders({set->second, "", BaseOrigin::Tool}, names);
        }
        return folders(fallback, names);
    }
    Patterns& folder(std::string_view variable, const Place& place) { return folders(variable, place, {""}); }
    Patterns& folder(const Place& place) { return folders(place, {""}); }

    [[nodiscard]] std::vector<RootPattern> list() { return std::move(list_); }

private:
    const LinuxEnvironment& environment_;
    std::vector<RootPattern> list_;
};

void addGoModules(const LinuxEnvironment& env, Patterns& roots) {
    if (const auto set = env.toolFolders.find("GOMODCACHE"); set != env.toolFolders.end()) {
        roots.folder({set->second, "", BaseOrigin::Tool}).folders(roots.tool("go"), {"pkg/mod"});
    } else {
        roots.folders("GOPATH", roots.tool("go"), {"pkg/mod"});
    }
}

void addPnpmStore(Patterns& roots) {
    roots.folders("PNPM_HOME", roots.data("pnpm"), {"store"});
}

void addEditors(Patterns& roots) {
    for (const char* editor : {"Code", "Code - Insiders", "Code - OSS", "VSCodium", "Cursor"}) {
        roots.folders(roots.config(editor), {"Cache", "CachedData", "CachedExtensionVSIXs", "Code Cache", "GPUCache",
                                             "DawnGraphiteCache", "DawnWebGPUCache"});
    }
}

std::vector<RootPattern> developerCaches(const LinuxEnvironment& env) {
    Patterns roots(env);
    const Place cache = roots.cache();
    roots.folders("npm_config_cache", roots.tool(".npm"), {"_cacache", "_npx"});
    roots.folder(roots.cache("yarn")).folders(roots.tool(".yarn"), {"berry/cache"});
    addPnpmStore(roots);
    roots.folder(roots.cache("pnpm"));
    roots.folders(roots.tool(".bun"), {"install/cache"}).folder(roots.cache("deno"));
    roots.folder("PIP_CACHE_DIR", roots.cache("pip")).folder("UV_CACHE_DIR", roots.cache("uv"));
    roots.folders(cache, {"pypoetry/cache", "pypoetry/artifacts", "pipenv", "pre-commit"});
    roots.folders("CARGO_HOME", roots.tool(".cargo"),
                  {"registry/index", "registry/cache", "registry/src", "git/db", "git/checkouts"});
    roots.folder("GOCACHE", roots.cache("go-build"));
    addGoModules(env, roots);
    roots.folders("GRADLE_USER_HOME", roots.tool(".gradle"), {"caches", "wrapper/dists", "daemon"});
    roots.folders(roots.tool(".m2"), {"wrapper/dists"});
    roots.folder("CCACHE_DIR", roots.cache("ccache"));
    roots.folders(roots.tool(".ccache"), {"0|1|2|3|4|5|6|7|8|9|a|b|c|d|e|f|tmp"});
    roots.folder("SCCACHE_DIR", roots.cache("sccache"));
    roots.folders(cache, {"bazel", "bazelisk", "vcpkg"});
    roots.folder("NUGET_PACKAGES", roots.home(".nuget/packages"));
    roots.folders(roots.data("NuGet"), {"v3-cache", "http-cache", "plugins-cache"});
    roots.folder("COMPOSER_CACHE_DIR", roots.cache("composer")).folders(roots.tool(".composer"), {"cache"});
    roots.folders(roots.home(), {".bundle/cache", ".gem/specs"}).folder(roots.cache("gem"));
    roots.folders(cache, {"JetBrains/*/caches|index|tmp", "Google/AndroidStudio*/caches|index|tmp"});
    addEditors(roots);
    roots.folders(roots.tool(".android"), {"cache", "build-cache"});
    roots.folders(cache,
                  {"node-gyp", "electron", "electron-builder", "typescript", "Cypress", "ms-playwright", "puppeteer",
                   "prisma", "zig", "rebar3", "cabal", "org.swift.swiftpm", "coursier", "helm", "R"});
    roots.folders(roots.home(), {".ivy2/cache", ".pub-cache/hosted"});
    roots.folders("HF_HOME", roots.cache("huggingface"), {"hub", "datasets", "xet", "assets"});
    roots.folders(cache, {"torch", "whisper", "gpt4all", "lm-studio", "modelscope", "kagglehub"});
    return roots.list();
}

/// The first components below the cache folder that the developer row names: they never stand in the first row.
std::vector<std::string> namesBelow(const fs::path& cache, const std::vector<RootPattern>& patterns) {
    std::vector<std::string> names;
    for (const RootPattern& pattern : patterns) {
        const fs::path path = lexicallyStandardized(pattern.base / pattern.below);
        if (!isStrictlyBelow(path, cache)) {
            continue;
        }
        const std::string name = path.lexically_relative(cache).begin()->string();
        if (std::ranges::find(names, name) == names.end()) {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<RootPattern> userCaches(const LinuxEnvironment& env, const std::vector<RootPattern>& developer) {
    Patterns roots(env);
    std::vector<std::string> except = neverCaches();
    std::ranges::copy(namesBelow(env.cache, developer), std::back_inserter(except));
    roots.add(roots.cache(), "*", RootKind::AnyButLinks, std::move(except));
    roots.add(roots.home(".var/app"), "*/cache", RootKind::Folder, {"com.jetbrains.*", "com.google.AndroidStudio*"});
    for (const fs::path& snap : snapDataFolders(env)) {
        roots.folders({snap, ""}, {"*/common/.cache", "*/@current/.cache"});
    }
    return roots.list();
}

std::vector<RootPattern> logs(const LinuxEnvironment& env, const std::vector<LinuxBrowser>& browsers,
                              const fs::path& root) {
    Patterns roots(env);
    roots.add(roots.home(), ".xsession-errors", RootKind::PlainFile);
    roots.add(roots.home(), ".xsession-errors.old", RootKind::PlainFile);
    roots.add(roots.data(), "xorg/*.log|*.log.old", RootKind::PlainFile);
    roots.add(roots.data(), "sddm/*.log", RootKind::PlainFile);
    const std::string logNames = "*.log|*.log.#|*.log.old|*.log.gz";
    for (const std::string above : {"", "*/", "*/*/"}) {
        roots.add(roots.state(), above + logNames, RootKind::PlainFile, chatFolders());
    }
    roots.add(roots.config(), "*{Code Cache|GPUCache}/logs", RootKind::Folder); // the mark of Electron
    roots.folders(roots.tool(".npm"), {"_logs"});
    roots.folders(roots.cache(), {"JetBrains/*/log", "Google/AndroidStudio*/log"});
    roots.folders(roots.data(), {"JetBrains/Toolbox/logs", "Steam/logs"});

    roots.add({underRoot(root, "/var/crash"), ""}, "*.crash|*.upload|*.uploaded", RootKind::OwnFile);
    roots.add(roots.home(), "hs_err_pid*.log|replay_pid*.log|java_error_in_*", RootKind::PlainFile);
    for (RootPattern& reports : browserCrashReports(browsers)) {
        roots.add(std::move(reports));
    }
    return roots.list();
}

} // namespace

std::vector<fs::path> linuxWholeFolders(const LinuxEnvironment& env) {
    Patterns roots(env);
    addGoModules(env, roots);                              // read-only folders: nothing can be moved out of them
    addPnpmStore(roots);                                   // files shared by hard links, with an index beside them
    roots.folders(roots.cache(), {"bazel", "pre-commit"}); // read-only trees; clones that a database lists
    std::vector<fs::path> folders;
    for (const RootPattern& pattern : roots.list()) {
        folders.push_back(lexicallyStandardized(pattern.base / pattern.below));
    }
    return folders;
}

std::vector<JunkCategory> linuxJunkCategories(const LinuxEnvironment& env, const std::vector<LinuxBrowser>& browsers,
                                              const fs::path& root) {
    const std::vector<RootPattern> developer = developerCaches(env);
    return {
        {.key = "userCaches",
         .title = "用户缓存",
         .description = "%@ 中的可再生缓存",
         .argument = env.cache,
         .symbol = "externaldrive.badge.timemachine",
         .tint = Tint::teal,
         .risk = CleanupRisk::safe,
         .selected = true,
         .changesByItself = true,
         .listed = {env.cache},
         .roots = userCaches(env, developer)},
        {.key = "systemLogs",
         .title = "系统日志",
         .description = "诊断报告、崩溃日志和旧日志文件",
         .argument = {},
         .symbol = "doc.text.magnifyingglass",
         .tint = Tint::orange,
         .risk = CleanupRisk::safe,
         .selected = true,
         .changesByItself = true,
         .listed = {env.data / "xorg", env.state},
         .roots = logs(env, browsers, root)},
        {.key = "developerCaches",
         .title = "开发缓存",
         .description = "Xcode DerivedData、模拟器缓存和旧归档",
         .argument = {},
         .symbol = "hammer",
         .tint = Tint::indigo,
         .risk = CleanupRisk::cautious,
         .selected = false,
         .countsOnce = true,
         .roots = developer},
    };
}

} // namespace vellmoor
