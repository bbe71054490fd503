#pragma once

namespace vellmoor {

/// Starts Vellmoor on Linux, or brings the running one to the front; the process's exit status.
int runApplication(int argc, char* argv[]);

} // namespace vellmoor
