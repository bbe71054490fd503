#pragma once

namespace vellmoor {

/// Starts Vellmoor on macOS; the process's exit status.
int runMacApplication(int argc, char* argv[]);

} // namespace vellmoor
