// The lines of the journal as texts.
#pragma once

#include "history/Journal.h"

#include <string>
#include <string_view>

namespace vellmoor {

/// A clean's first line; as many lines of what it wants as it says must follow.
std::string cleanLine(const PastClean& clean);
std::string wantLine(std::size_t index, const std::string& clean, const PastTarget& target);
std::string factLine(std::size_t index, const std::string& clean, const CleanupOutcome& outcome);
/// "back", "end" or "settled".
std::string eventLine(std::string_view event, const std::string& clean, std::optional<std::size_t> index = {});
std::string switchLine(const PastSwitch& change);

/// The lines put together again. What is no line of ours is passed over.
Past pastOf(std::string_view text);
/// The text without the lines of cleans that `isDropped` names and of switches before `oldest`; lines that nobody can
/// read stay.
std::string withoutCleans(std::string_view text, TimePoint oldest,
                          const std::function<bool(const std::string&)>& isDropped);

} // namespace vellmoor
