// The texts inside desktop entries: command lines and lists.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// The words of an Exec value, quoting undone (Desktop Entry Specification, "The Exec key"); nothing when a quote
/// is not closed.
std::optional<std::vector<std::string>> execWords(std::string_view exec);
/// The first word that is neither `env` with its options nor NAME=value; empty when there is none.
std::string execProgram(const std::vector<std::string>& words);
/// The application of a `flatpak run … ID` line; empty for any other line.
std::string flatpakApplication(const std::vector<std::string>& words);

/// "a;b;" as its parts; empty parts are dropped.
std::vector<std::string> listValue(std::string_view text);

} // namespace vellmoor
