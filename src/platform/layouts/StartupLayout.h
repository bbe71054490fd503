#pragma once

#include "layouts/RootPattern.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

enum class StartupKind : std::uint8_t { LaunchAgent, Autostart, UserService };

/// Where one kind of login items lies. Both folders are siblings: a relative link survives the move.
struct StartupFolders {
    StartupKind kind = StartupKind::LaunchAgent;
    std::filesystem::path enabled;
    std::filesystem::path disabled;
    /// Folders whose file of the same name takes over when the user's own is gone.
    std::vector<std::filesystem::path> takeoverFolders;
};

/// State that a desktop saves to restore its windows.
struct SessionState {
    RootPattern paths;
    std::filesystem::path onlyWith; ///< counts only when this exists; empty: always
};

struct StartupLayout {
    std::vector<StartupFolders> folders; ///< in listing order
    bool filesNameItems = false; ///< items are called as their files are, not as the application that they start
    /// launchctl or systemctl; the first executable one.
    std::vector<std::filesystem::path> loaders;
    bool loaderIsOptional = false;       ///< left out when not installed or without `managerSocket`
    std::filesystem::path managerSocket; ///< of the user's service manager; empty: there is none
    std::vector<std::string> desktops;   ///< names of the running desktop, the most specific first

    std::filesystem::path shownFolder; ///< its children are listed in a row for information
    std::string shownDescription;      ///< text key; %@ stands for shownFolder in display form
    std::vector<SessionState> sessionStates;
};

StartupLayout macStartupLayout(const std::filesystem::path& home, std::uint32_t userId,
                               const std::filesystem::path& root);
StartupLayout linuxStartupLayout(const LinuxEnvironment& environment, std::uint32_t userId,
                                 const std::filesystem::path& root);

} // namespace vellmoor
