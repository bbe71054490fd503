#include "layouts/linux/LinuxEnvironment.h"

#include "disk/Glob.h"
#include "disk/Paths.h"

#include <array>

namespace vellmoor {
namespace {

namespace fs = std::filesystem;

constexpr std::array toolVariables{"npm_config_cache", "PNPM_HOME",       "PIP_CACHE_DIR",  "UV_CACHE_DIR",
                                   "CARGO_HOME",       "GOCACHE",         "GOMODCACHE",     "GRADLE_USER_HOME",
                                   "CCACHE_DIR",       "SCCACHE_DIR",     "NUGET_PACKAGES", "COMPOSER_CACHE_DIR",
                                   "HF_HOME",          "FLATPAK_USER_DIR"};

/// The value when it is an absolute path, as the Base Directory rules demand.
std::optional<fs::path> absolute(const VariableLookup& lookup, std::string_view name) {
    const std::optional<std::string> value = lookup(name);
    if (!value || !value->starts_with('/')) {
        return std::nullopt;
    }
    return lexicallyStandardized(*value);
}

std::vector<fs::path> folders(const VariableLookup& lookup, std::string_view name,
                              const std::vector<fs::path>& fallback) {
    std::vector<fs::path> out;
    for (const std::string& part : separated(lookup(name).value_or(""), ':')) {
        if (part.starts_with('/')) {
            out.push_back(lexicallyStandardized(part));
        }
    }
    return out.empty() ? fallback : out;
}

/// A program that an AppImage or a snap starts, a terminal for one, inherits its variables without being a part of it.
bool isPartOf(const VariableLookup& lookup, std::string_view folder, const fs::path& ownProgram) {
    const std::optional<fs::path> mounted = absolute(lookup, folder);
    return mounted && isStrictlyBelow(lexicallyStandardized(ownProgram), *mounted);
}

} // namespace

std::vector<fs::path> LinuxEnvironment::toolFolder(std::string_view variable, const fs::path& fallback) const {
    const auto found = toolFolders.find(std::string(variable));
    if (found == toolFolders.end() || found->second == fallback) {
        return {fallback};
    }
    return {found->second, fallback};
}

LinuxEnvironment linuxEnvironment(const VariableLookup& lookup, const fs::path& accountHome,
                                  const fs::path& ownProgram) {
    LinuxEnvironment environment;
    environment.home = absolute(lookup, "HOME").value_or(lexicallyStandardized(accountHome));
    const auto base = [&](std::string_view name, const char* fallback) {
        return absolute(lookup, name).value_or(environment.home / fallback);
    };
    environment.config = base("XDG_CONFIG_HOME", ".config");
    environment.cache = base("XDG_CACHE_HOME", ".cache");
    environment.data = base("XDG_DATA_HOME", ".local/share");
    environment.state = base("XDG_STATE_HOME", ".local/state");
    environment.configDirs = folders(lookup, "XDG_CONFIG_DIRS", {"/etc/xdg"});
    environment.dataDirs = folders(lookup, "XDG_DATA_DIRS", {"/usr/local/share", "/usr/share"});
    environment.programPath = folders(lookup, "PATH", {});
    environment.runtime = absolute(lookup, "XDG_RUNTIME_DIR").value_or("");
    environment.desktops = separated(lookup("XDG_CURRENT_DESKTOP").value_or(""), ':');
    for (const char* name : toolVariables) {
        if (const auto folder = absolute(lookup, name)) {
            environment.toolFolders.emplace(name, *folder);
        }
    }
    if (const std::vector<fs::path> goFolders = folders(lookup, "GOPATH", {}); !goFolders.empty()) {
        environment.toolFolders.emplace("GOPATH", goFolders.front()); // Go downloads into the first one
    }
    if (isPartOf(lookup, "APPDIR", ownProgram)) {
        environment.ownAppImage = absolute(lookup, "APPIMAGE").value_or("").string();
    }
    environment.insideSnap = isPartOf(lookup, "SNAP", ownProgram);
    return environment;
}

LinuxEnvironment linuxEnvironmentOf(const fs::path& home) {
    return linuxEnvironment([](std::string_view) -> std::optional<std::string> { return std::nullopt; }, home);
}

} // namespace vellmoor
