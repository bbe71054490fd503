#pragma once

#include "Arguments.h"
#include "Platform.h"
#include "layouts/SystemLayout.h"

#include <expected>
#include <memory>
#include <string>

namespace vellmoor::probe {

/// The system that the engine sees: the real one, or the macOS stand-in.
struct Session {
    std::unique_ptr<Platform> platform;
    SystemLayout layout;
};

/// Sets the process up for the call: its home and variables, the text set and the language. To be called before
/// anything reads the environment. Fails with one line about what is wrong with the call.
std::expected<Session, std::string> openSession(const Arguments& arguments);

} // namespace vellmoor::probe
