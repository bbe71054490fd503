#pragma once

#include "Arguments.h"
#include "OwnSystem.h"

#include <expected>
#include <string>

namespace vellmoor::probe {

/// The system that the engine sees: the real one, or the macOS stand-in.
using Session = terminal::OwnSystem;

/// Sets the process up for the call: its home and variables, the text set and the language. To be called before
/// anything reads the environment. Fails with one line about what is wrong with the call.
std::expected<Session, std::string> openSession(const Arguments& arguments);

} // namespace vellmoor::probe
