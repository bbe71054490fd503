#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// Whether `name` matches `pattern`, in which "*" stands for any run of characters, "#" for one or more decimal
/// digits, and everything else for itself. Patterns come from the project's own tables.
bool globMatches(std::string_view pattern, std::string_view name);

/// The same for several patterns separated by "|".
bool globMatchesAny(std::string_view alternatives, std::string_view name);

/// Whether one of the pieces stands anywhere in `text`.
bool containsAny(std::string_view text, const std::vector<std::string>& pieces);

/// The parts of `text` between separators; empty ones are left out.
std::vector<std::string> separated(std::string_view text, char separator);

} // namespace vellmoor
