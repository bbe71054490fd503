// What failed in the field, for the system's log (Console, `log show --predicate 'subsystem ==
// "org.vellmoor.Vellmoor"'`).
#pragma once

#include <cstdint>
#include <string>

namespace vellmoor::mac {

enum class LogCategory : std::uint8_t { Files, Tools, Window };

/// Writes one line. `what` and `code` are public; `details` may name the user's files, so the log hides it from others.
void logFailure(LogCategory category, const char* what, long code, const std::string& details);

} // namespace vellmoor::mac
