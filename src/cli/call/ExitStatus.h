#pragma once

#include <cstdint>

namespace vellmoor::cli {

/// What a script reads.
enum class ExitStatus : std::uint8_t { Done = 0, Failed = 1, WrongCall = 2, NothingToDo = 3 };

} // namespace vellmoor::cli
