// How the configuration files of the single kinds of login items are read.
#pragma once

#include "found/ScanSnapshot.h"
#include "scan/EngineContext.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// What a configuration file says.
struct StartupFacts {
    std::string label;
    std::string ownName; ///< the name that the file gives itself; empty: none
    std::optional<std::string> program;
    std::optional<Path> application;
    bool startsAtLogin = false;
};

/// The login item of a configuration file of that kind, a launch agent or what stands in for one on Linux; nothing
/// when it cannot be read or is none.
std::optional<StartupItem> launchAgentItem(EngineContext& context, const Path& file, StartupKind kind, bool isEnabled);

// Each answers nothing for a file that cannot be read, parsed, or is not listed.
std::optional<StartupFacts> launchAgentFacts(EngineContext& context, const Path& file);
std::optional<StartupFacts> autostartFacts(EngineContext& context, const Path& file);
std::optional<StartupFacts> userServiceFacts(EngineContext& context, const Path& file);

/// The bundle that the program or an argument lies in, else the application whose identifier is the label.
std::optional<Path> appURLForStartupItem(EngineContext& context, std::string_view label,
                                         const std::optional<std::string>& program,
                                         const std::vector<std::string>& arguments);

/// The desktop entry of the application that a command line starts: of that ID, of the Flatpak that it runs, or
/// with the same program.
std::optional<Path> entryForStartupItem(EngineContext& context, std::string_view label,
                                        const std::vector<std::string>& words);

/// The extension of the files of a kind, without dot.
std::string_view fileExtension(StartupKind kind);

/// `label` as systemd writes it into a unit's name (systemd.unit(5), "String Escaping for Inclusion in Unit Names").
std::string unitNameEscape(std::string_view label);

} // namespace vellmoor
