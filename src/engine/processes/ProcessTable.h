#pragma once

#include "Platform.h"
#include "layouts/SystemLayout.h"
#include "processes/LinuxProcesses.h"
#include "processes/MemoryText.h"
#include "scan/EngineContext.h"

#include <set>
#include <string>
#include <vector>

namespace vellmoor {

/// The names of running programs. macOS: the last components that the process listing prints. Linux: for each
/// process of the user its executable's name and its own, or the token "flatpak:ID" or "snap:NAME".
std::set<std::string> runningProcessNames(const Platform& platform, const SystemLayout& layout);

/// The same, read at the first call of this context.
const std::set<std::string>& runningNames(EngineContext& context);

/// The processes with the memory that they hold, in listing order. macOS: all; Linux: those of `processes`, with an
/// empty command where the program is not told. Nothing when the listing fails.
std::vector<ProcessMemorySample> processMemorySamples(const Platform& platform, const SystemLayout& layout,
                                                      const LinuxProcesses& processes);

} // namespace vellmoor
