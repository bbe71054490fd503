#pragma once

#include "Platform.h"

#include <optional>
#include <string>
#include <vector>

namespace vellmoor::commands {

/// The language in which a tool speaks.
enum class Messages : std::uint8_t { Inherited, English };

/// Platform::commandOutput and commandResult by posix_spawn. A tool that signal N ends has status 128 + N.
std::optional<std::string> output(const Path& tool, const std::vector<std::string>& arguments);
CommandResult result(const Path& tool, const std::vector<std::string>& arguments,
                     Messages messages = Messages::Inherited);

} // namespace vellmoor::commands
