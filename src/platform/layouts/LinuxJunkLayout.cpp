#include "layouts/LinuxJunkLayout.h"

#include "Paths.h"
#include "layouts/LinuxBrowsers.h"

#include <algorithm>
#include <initializer_list>
#include <string>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

/// Names in the cache folder that are no caches or are in use: uploads that wait, sessions, sockets, indexes that
/// take hours to rebuild, histories, keys.
const std::vector<std::string>& neverCaches() {
    static const std::vector<std::string> names{
        "rclone",   "sessions",  "keyring-*",   "ssh",       "gnupg",    "ibus", "fcitx*", "at-spi",
        "dconf",    "tracker*",  "localsearch", "evolution", "mu",       "borg", "restic", "duplicity",
        "deja-dup", "bash",      "zsh",         "fish",      "vim",      "nvim", "emacs",  "less",
        "mc",       "keepassxc", "cliphist",    "wal",       "vellmoor*"};
    return names;
}

/// Folders in STATE that hold chats, not logs.
const std::vector<std::string>& chatFolders() {
    static const std::vector<std::string> names{"weechat", "irssi", "halloy",  "senpai", "profanity",
                                                "gajim",   "dino",  "hexchat", "purple"};
    return names;
}

class Patterns {
public:
    Patterns& path(const fs::path& path, RootKind kind = RootKind::Any) {
        list_.push_back({.base = path, .components = {}, .kind = kind});
        return *this;
    }
    Patterns& below(const fs::path& base, std::initializer_list<const char*> names) {
        for (const char* name : names) {
            path(base / name);
        }
        return *this;
    }
    Patterns& below(const std::vector<fs::path>& bases, std::initializer_list<const char*> names) {
        for (const fs::path& base : bases) {
            below(base, names);
        }
        return *this;
    }
    Patterns& add(RootPattern pattern) {
        list_.push_back(std::move(pattern));
        return *this;
    }
    [[nodiscard]] const std::vector<RootPattern>& list() const { return list_; }

private:
    std::vector<RootPattern> list_;
};

std::vector<RootPattern> developerCaches(const LinuxEnvironment& env) {
    const fs::path& home = env.home;
    const fs::path& cache = env.cache;
    Patterns roots;
    roots.below(env.toolFolder("npm_config_cache", home / ".npm"), {"_cacache", "_npx"});
    roots.path(cache / "yarn").path(home / ".yarn/berry/cache");
    roots.below(env.toolFolder("PNPM_HOME", env.data / "pnpm"), {"store"}).path(cache / "pnpm");
    roots.path(home / ".bun/install/cache").path(cache / "deno");
    for (const fs::path& folder : env.toolFolder("PIP_CACHE_DIR", cache / "pip")) {
        roots.path(folder);
    }
    for (const fs::path& folder : env.toolFolder("UV_CACHE_DIR", cache / "uv")) {
        roots.path(folder);
    }
    roots.below(cache, {"pypoetry/cache", "pypoetry/artifacts", "pipenv", "pre-commit"});
    roots.below(env.toolFolder("CARGO_HOME", home / ".cargo"),
                {"registry/index", "registry/cache", "registry/src", "git/db", "git/checkouts"});
    for (const fs::path& folder : env.toolFolder("GOCACHE", cache / "go-build")) {
        roots.path(folder);
    }
    if (env.toolFolders.contains("GOMODCACHE")) {
        roots.path(env.toolFolders.at("GOMODCACHE"));
    }
    roots.below(env.toolFolder("GOPATH", home / "go"), {"pkg/mod"});
    roots.below(env.toolFolder("GRADLE_USER_HOME", home / ".gradle"), {"caches", "wrapper/dists", "daemon"});
    roots.path(home / ".m2/wrapper/dists");
    for (const fs::path& folder : env.toolFolder("CCACHE_DIR", cache / "ccache")) {
        roots.path(folder);
    }
    roots.add(
        {.base = home / ".ccache", .components = {"0|1|2|3|4|5|6|7|8|9|a|b|c|d|e|f|tmp"}, .kind = RootKind::Folder});
    for (const fs::path& folder : env.toolFolder("SCCACHE_DIR", cache / "sccache")) {
        roots.path(folder);
    }
    roots.below(cache, {"bazel", "bazelisk", "vcpkg"});
    for (const fs::path& folder : env.toolFolder("NUGET_PACKAGES", home / ".nuget/packages")) {
        roots.path(folder);
    }
    roots.below(env.data / "NuGet", {"v3-cache", "http-cache", "plugins-cache"});
    for (const fs::path& folder : env.toolFolder("COMPOSER_CACHE_DIR", cache / "composer")) {
        roots.path(folder);
    }
    roots.path(home / ".composer/cache").below(home, {".bundle/cache", ".gem/specs"}).path(cache / "gem");
    roots.add({.base = cache / "JetBrains", .components = {"*", "caches|index|tmp"}, .kind = RootKind::Folder});
    roots.add(
        {.base = cache / "Google", .components = {"AndroidStudio*", "caches|index|tmp"}, .kind = RootKind::Folder});
    for (const char* editor : {"Code", "Code - Insiders", "Code - OSS", "VSCodium", "Cursor"}) {
        roots.below(env.config / editor, {"Cache", "CachedData", "CachedExtensionVSIXs", "Code Cache", "GPUCache",
                                          "DawnGraphiteCache", "DawnWebGPUCache"});
    }
    roots.below(home / ".android", {"cache", "build-cache"});
    roots.below(cache, {"node-gyp", "electron", "electron-builder", "typescript", "Cypress", "ms-playwright",
                        "puppeteer", "prisma", "zig", "rebar3", "cabal", "org.swift.swiftpm", "coursier", "helm", "R"});
    roots.below(home, {".ivy2/cache", ".pub-cache/hosted"});
    roots.below(env.toolFolder("HF_HOME", cache / "huggingface"), {"hub", "datasets", "xet", "assets"});
    roots.below(cache, {"torch", "whisper", "gpt4all", "lm-studio", "modelscope", "kagglehub"});
    return roots.list();
}

/// The first components below the cache folder that the developer row names: they never stand in the first row.
std::vector<std::string> namesBelow(const fs::path& cache, const std::vector<RootPattern>& patterns) {
    std::vector<std::string> names;
    for (const RootPattern& pattern : patterns) {
        if (!isStrictlyBelow(pattern.base, cache)) {
            continue;
        }
        const std::string name = pattern.base.lexically_relative(cache).begin()->string();
        if (std::ranges::find(names, name) == names.end()) {
            names.push_back(name);
        }
    }
    return names;
}

std::vector<RootPattern> userCaches(const LinuxEnvironment& env, const std::vector<RootPattern>& developer) {
    Patterns roots;
    std::vector<std::string> except = neverCaches();
    std::ranges::copy(namesBelow(env.cache, developer), std::back_inserter(except));
    roots.add({.base = env.cache,
               .components = {"*"},
               .kind = RootKind::AnyButLinks,
               .except = std::move(except),
               .busy = browserCacheNames()});
    roots.add({.base = env.home / ".var/app",
               .components = {"*", "cache"},
               .kind = RootKind::Folder,
               .except = {"com.jetbrains.*", "com.google.AndroidStudio*"},
               .ownerPrefix = "flatpak:"});
    for (const fs::path& snap : snapDataFolders(env)) {
        roots.add(
            {.base = snap, .components = {"*", "common", ".cache"}, .kind = RootKind::Folder, .ownerPrefix = "snap:"});
        roots.add({.base = snap,
                   .components = {"*", "@current", ".cache"},
                   .kind = RootKind::Folder,
                   .ownerPrefix = "snap:"});
    }
    return roots.list();
}

std::vector<RootPattern> logs(const LinuxEnvironment& env, const fs::path& root) {
    Patterns roots;
    roots.path(env.home / ".xsession-errors", RootKind::PlainFile);
    roots.path(env.home / ".xsession-errors.old", RootKind::PlainFile);
    roots.add({.base = env.data / "xorg", .components = {"*.log|*.log.old"}, .kind = RootKind::PlainFile});
    roots.add({.base = env.data / "sddm", .components = {"*.log"}, .kind = RootKind::PlainFile});
    const std::string logNames = "*.log|*.log.#|*.log.old|*.log.gz";
    std::vector<std::string> levels;
    for (int depth = 1; depth <= 3; ++depth) {
        levels.push_back(logNames);
        roots.add({.base = env.state, .components = levels, .kind = RootKind::PlainFile, .except = chatFolders()});
        levels.back() = "*";
    }
    roots.add({.base = env.config,
               .components = {"*", "logs"},
               .kind = RootKind::Folder,
               .besides = {"Code Cache", "GPUCache"}});
    roots.path(env.home / ".npm/_logs", RootKind::Folder);
    roots.add({.base = env.cache / "JetBrains", .components = {"*", "log"}, .kind = RootKind::Folder});
    roots.add({.base = env.cache / "Google", .components = {"AndroidStudio*", "log"}, .kind = RootKind::Folder});
    roots.path(env.data / "JetBrains/Toolbox/logs", RootKind::Folder);
    roots.path(env.data / "Steam/logs", RootKind::Folder);

    roots.add({.base = underRoot(root, "/var/crash"),
               .components = {"*.crash|*.upload|*.uploaded"},
               .kind = RootKind::PlainFile,
               .ownedByUser = true,
               .onHomeDevice = true});
    roots.add({.base = env.home,
               .components = {"hs_err_pid*.log|replay_pid*.log|java_error_in_*"},
               .kind = RootKind::PlainFile});
    for (RootPattern& reports : browserCrashReports(env)) {
        roots.add(std::move(reports));
    }
    return roots.list();
}

} // namespace

std::vector<JunkCategory> linuxJunkCategories(const LinuxEnvironment& env, const fs::path& root) {
    const std::vector<RootPattern> developer = developerCaches(env);
    return {
        {.title = "用户缓存",
         .description = "%@ 中的可再生缓存",
         .argument = env.cache,
         .symbol = "externaldrive.badge.timemachine",
         .tint = Tint::teal,
         .risk = CleanupRisk::safe,
         .selected = true,
         .changesByItself = true,
         .roots = userCaches(env, developer)},
        {.title = "系统日志",
         .description = "诊断报告、崩溃日志和旧日志文件",
         .argument = {},
         .symbol = "doc.text.magnifyingglass",
         .tint = Tint::orange,
         .risk = CleanupRisk::safe,
         .selected = true,
         .changesByItself = true,
         .roots = logs(env, root)},
        {.title = "开发缓存",
         .description = "Xcode DerivedData、模拟器缓存和旧归档",
         .argument = {},
         .symbol = "hammer",
         .tint = Tint::indigo,
         .risk = CleanupRisk::cautious,
         .selected = false,
         .roots = developer},
    };
}

} // namespace vellmoor
