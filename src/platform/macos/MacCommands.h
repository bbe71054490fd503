// Tools as child processes, by NSTask: no shell, the environment and folder of this process, nothing else of it.
// Both block until the tool has ended.
#pragma once

#include "Platform.h"

#include <optional>
#include <string>
#include <vector>

namespace vellmoor::mac {

/// Standard output; nothing when the tool could not start, failed, or printed no UTF-8.
std::optional<std::string> commandOutput(const Path& tool, const std::vector<std::string>& arguments);

/// Output and errors as written. A tool that a signal ended answers the signal's number as status.
CommandResult commandResult(const Path& tool, const std::vector<std::string>& arguments);

} // namespace vellmoor::mac
