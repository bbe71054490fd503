#pragma once

#include "found/CleanerModule.h"
#include "texts/L.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor::cli {

enum class Command : std::uint8_t { Help, Version, Scan, Clean, History, PutBack, Keep, Kept, Offer };

/// What the user asks for.
struct Call {
    Command command = Command::Help;
    std::optional<AppLanguage> language;
    CleanerModule module = CleanerModule::smartScan;
    std::vector<std::string> ticks; ///< keys or titles of rows to be cleaned besides the preselected ones
    bool onlyTicked = false;        ///< nothing is preselected
    bool isConfirmed = false;       ///< --yes
    bool mayRemoveForGood = false;  ///< --for-good
    bool mayFreeMemory = false;     ///< --memory
    bool isDryRun = false;
    bool wantsJson = false;
    bool isQuiet = false;                     ///< no progress
    std::vector<std::filesystem::path> paths; ///< absolute, without ".."
    std::string clean;                        ///< of the history; empty: the last one

    /// Whether files may be changed, be it the list of kept ones.
    [[nodiscard]] bool changesFiles() const;
};

/// The language that the words ask for, whatever else is wrong with them.
std::optional<AppLanguage> askedLanguage(const std::vector<std::string>& words);

/// The call, or one localised line that says what is wrong with it.
std::expected<Call, std::string> parseCall(const std::vector<std::string>& words);

} // namespace vellmoor::cli
