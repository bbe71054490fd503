#pragma once

#include "found/CleanerModule.h"
#include "texts/L.h"

#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor::probe {

enum class Command : std::uint8_t {
    Help,
    Scan,
    Report,
    Measure,
    Clean,
    PutBack,
    StartupList,
    StartupDisable,
    StartupEnable
};
enum class Layout : std::uint8_t { Linux, Mac };
/// What a clean starts from: the scan's own ticks, every cleanable row, or none.
enum class Selection : std::uint8_t { Default, All, None };

struct Arguments {
    std::optional<Layout> layout;              ///< nothing: that of the running system
    std::optional<std::filesystem::path> home; ///< absolute, links resolved
    std::filesystem::path root = "/";          ///< absolute, links resolved
    std::optional<std::filesystem::path> running;
    std::optional<AppLanguage> language;

    Command command = Command::Help;
    CleanerModule module = CleanerModule::smartScan;
    bool showsProgress = false;
    std::vector<std::filesystem::path> paths; ///< absolute
    Selection selection = Selection::Default;
    std::vector<std::string> ticks; ///< titles of rows to be selected besides
    std::string startupId;

    /// Whether the command changes files.
    [[nodiscard]] bool changesFiles() const;
};

/// The parsed call, or one line that says what is wrong with it.
std::expected<Arguments, std::string> parse(const std::vector<std::string>& words);

/// The whole help text.
std::string help();

} // namespace vellmoor::probe
