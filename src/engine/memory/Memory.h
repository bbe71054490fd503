#pragma once

#include "scan/EngineContext.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor {

/// Installed memory in bytes; 0 when nothing tells.
std::int64_t systemMemorySize(const EngineContext& context);

/// What dropping caches may free of `rawReclaimable` bytes: a share of the memory stays with the system, and less
/// than 512 MiB counts as nothing.
std::int64_t estimatedReleasableMemory(std::int64_t rawReclaimable, std::int64_t totalMemory);

/// Without statistics all but the total is 0. Figures that overflow end the program.
MemorySnapshot memorySnapshot(const EngineContext& context);

/// At most 8, largest first.
std::vector<MemoryApp> memoryApps(EngineContext& context);

/// `app` with those of its processes that still are the application's, none when it has ended or was started anew: a
/// process number of an earlier scan may belong to something else by the time the user acts on it.
MemoryApp withLivingProcesses(EngineContext& context, const MemoryApp& app);

/// Always exactly one row.
std::vector<CleanupItem> memoryItems(const MemorySnapshot& snapshot);

/// The tool that drops the file caches; nothing when none is installed.
std::optional<Path> purgeExecutablePath(const EngineContext& context);

struct MemoryOptimization {
    bool succeeded = false;
    std::string message; ///< localised
};
/// Asks the system to drop its file caches; may block on the user's password prompt. `writeDisks` brings written data
/// to the disks, for a tool that does not do so itself; by default sync(2).
MemoryOptimization optimizeMemory(const EngineContext& context);
MemoryOptimization optimizeMemory(const EngineContext& context, const std::function<void()>& writeDisks);

} // namespace vellmoor
