#pragma once

#include "call/ExitStatus.h"

#include <cstddef>
#include <filesystem>
#include <string>

namespace vellmoor::cli {

/// So much of a clean's id is shown, and enough to name it.
inline constexpr std::size_t shortId = 8;

/// One line on standard error.
void complain(const std::string& line);
/// The same, as the answer of a command.
ExitStatus fail(const std::string& line, ExitStatus status = ExitStatus::Failed);

/// A path for a reader's eye: no byte of it moves the cursor.
std::string shown(const std::filesystem::path& path);

} // namespace vellmoor::cli
