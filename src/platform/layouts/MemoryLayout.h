#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

struct LinuxEnvironment;

/// A tool with its fixed arguments; an empty path: the system has no such tool.
struct ToolCall {
    std::filesystem::path tool;
    std::vector<std::string> arguments;
};

/// The labels in the memory statistics whose counts are summed for each figure. "A|B" stands for the first of the
/// two that the statistics have.
struct MemoryLabels {
    std::vector<std::string> free;   ///< what programs can still get
    std::vector<std::string> unused; ///< what holds nothing at all
    std::vector<std::string> active;
    std::vector<std::string> inactive;
    std::vector<std::string> wired;
    std::vector<std::string> compressed;
    std::vector<std::string> purgeable;
    std::vector<std::string> fileBacked;
};

/// Where the running processes and the memory that they hold are read.
struct ProcessSource {
    ToolCall memory;              ///< prints pid, resident kilobytes and path in each line
    ToolCall names;               ///< prints one path in each line
    std::filesystem::path folder; ///< /proc; empty: the tools are asked
    std::int64_t pageBytes = 0;   ///< the unit of the resident sizes below `folder`
};

/// Which processes make up an application where no bundles tell (Linux).
struct ProcessGrouping {
    /// Programs without an application of their own, by file name: globMatches patterns, never listed.
    std::vector<std::string> systemPrograms;
    /// Control groups of the desktop itself; nothing in them is listed.
    std::vector<std::string> systemSlices;
    /// Programs that only run other programs, by file name (patterns): no application is known by them.
    std::vector<std::string> launchers;
    /// Programs that hold terminals of their own, by file name (patterns): no part of the application whose control
    /// group they were started in.
    std::vector<std::string> terminalServers;
    /// Folders in which programs of many applications lie side by side.
    std::vector<std::filesystem::path> sharedFolders;
};

/// A way to make the system drop its file caches.
struct PurgeTool {
    std::filesystem::path tool;
    std::vector<std::string> arguments;
    bool needsSync = false; ///< written data must be on the disk before, which the tool does not do itself
};

/// How a refused purge tool is run again with administrator rights.
struct PurgeElevation {
    std::filesystem::path tool;
    std::vector<std::string> arguments;       ///< "%@" stands for the purge tool; its own arguments follow
    bool mustExist = false;                   ///< without it memory management counts as not installed
    std::vector<std::string> refusals;        ///< phrases of the purge tool that ask for it, in any case
    std::vector<std::string> cancelPhrases;   ///< what it prints when the user closes its dialog, in any case
    std::optional<std::int32_t> cancelStatus; ///< its status in that case
};

/// Where the memory figures come from and what frees memory.
struct MemoryLayout {
    ToolCall total;                       ///< prints the installed bytes
    std::string totalLabel;               ///< or the label of the installed memory in the statistics
    ToolCall statistics;                  ///< prints the memory statistics
    std::filesystem::path statisticsFile; ///< or the file that holds them
    std::int64_t unit = 0;                ///< bytes per count; 0: the first line of the statistics names it
    MemoryLabels labels;
    /// A folder of block devices; those named zram* hold compressed memory, see zram's "mm_stat". Empty: none.
    std::filesystem::path blockDevices;

    ProcessSource processes;
    ProcessGrouping grouping;

    std::vector<PurgeTool> purgeTools; ///< the first executable one is used
    PurgeElevation elevation;
};

MemoryLayout macMemoryLayout(const std::filesystem::path& home, std::uint32_t userId,
                             const std::filesystem::path& root);
MemoryLayout linuxMemoryLayout(const LinuxEnvironment& environment, std::uint32_t userId,
                               const std::filesystem::path& root);

} // namespace vellmoor
