#pragma once

#include <chrono>
#include <string>

namespace vellmoor::quit {

/// The moment when a whole attempt is over.
using Deadline = std::chrono::steady_clock::time_point;

/// Activates the "quit" action of the application that owns `busName` on the session bus (Desktop Entry
/// Specification, "D-Bus Activation"). Whether it was delivered: the application took the call, or has not answered
/// until `deadline`, as one that asks its user first may do. Nothing is started for it.
bool activateQuitAction(const std::string& busName, Deadline deadline);

} // namespace vellmoor::quit
