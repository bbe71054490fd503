#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// The user's base folders after the XDG Base Directory rules: an empty or relative value counts as unset.
struct LinuxEnvironment {
    std::filesystem::path home;
    std::filesystem::path config;
    std::filesystem::path cache;
    std::filesystem::path data;
    std::filesystem::path state;
    std::vector<std::filesystem::path> configDirs;
    std::vector<std::filesystem::path> dataDirs;
    std::vector<std::filesystem::path> programPath; ///< $PATH without its relative parts; empty: unset
    std::filesystem::path runtime;                  ///< empty: none
    std::vector<std::string> desktops;              ///< the names in XDG_CURRENT_DESKTOP
    /// Variables of single tools (CARGO_HOME ...) that are set to an absolute path; of GOPATH the first one.
    std::map<std::string, std::filesystem::path> toolFolders;
    std::string ownAppImage; ///< the AppImage that Vellmoor itself runs from; empty: none
    bool insideSnap = false; ///< Vellmoor itself is a part of the snap at $SNAP

    /// The folder of a tool's variable, else `fallback`.
    [[nodiscard]] std::vector<std::filesystem::path> toolFolder(std::string_view variable,
                                                                const std::filesystem::path& fallback) const;
};

using VariableLookup = std::function<std::optional<std::string>(std::string_view name)>;

/// Reads the variables through `lookup`. Home is $HOME when absolute, else `accountHome`. `ownProgram` is the running
/// executable: $APPIMAGE and $SNAP are those of another program when it does not lie in $APPDIR or $SNAP.
LinuxEnvironment linuxEnvironment(const VariableLookup& lookup, const std::filesystem::path& accountHome,
                                  const std::filesystem::path& ownProgram = {});

/// A home folder without any variable: the defaults below it.
LinuxEnvironment linuxEnvironmentOf(const std::filesystem::path& home);

} // namespace vellmoor
