// Running applications, by AppKit. The list follows the system only while the main run loop runs; without one it
// stays as it was at the first call.
#pragma once

#include "Platform.h"

#include <vector>

namespace vellmoor::mac {

std::vector<RunningApplication> runningApplications();

/// Asks every process of the bundle at that path; each may still ask its user.
QuitOutcome requestQuit(const Path& bundle);

} // namespace vellmoor::mac
