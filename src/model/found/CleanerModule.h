#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor {

/// The modules of the sidebar; the order is that of the sidebar and of every per-module table.
enum class CleanerModule : std::uint8_t {
    smartScan,
    systemJunk,
    largeFiles,
    privacy,
    appUninstaller,
    performance, ///< shown as "Login Items"
    memoryOptimization,
    trash,
};

inline constexpr std::array allCleanerModules{
    CleanerModule::smartScan,          CleanerModule::systemJunk,
    CleanerModule::largeFiles,         CleanerModule::privacy,
    CleanerModule::appUninstaller,     CleanerModule::performance,
    CleanerModule::memoryOptimization, CleanerModule::trash,
};

/// The case name, e.g. "systemJunk".
std::string_view rawValue(CleanerModule module);
/// Nothing for an unknown name.
std::optional<CleanerModule> cleanerModule(std::string_view rawValue);
/// Localised.
std::string title(CleanerModule module);
/// Localised.
std::string subtitle(CleanerModule module);

/// How much a removal can hurt. `previewOnly` rows are shown for information and never removed.
enum class CleanupRisk : std::uint8_t { safe, cautious, high, previewOnly };

inline constexpr std::array allCleanupRisks{CleanupRisk::safe, CleanupRisk::cautious, CleanupRisk::high,
                                            CleanupRisk::previewOnly};

std::string_view rawValue(CleanupRisk risk);
std::optional<CleanupRisk> cleanupRisk(std::string_view rawValue);
/// The badge's text, localised.
std::string title(CleanupRisk risk);

} // namespace vellmoor
