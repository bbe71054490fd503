#pragma once

#include <filesystem>

namespace vellmoor {

/// Starts Vellmoor on Linux, or brings the running one to the front; the process's exit status. `root` stands for "/"
/// in what it reads of the system, as in the layout.
int runApplication(int argc, char* argv[], const std::filesystem::path& root = "/");

} // namespace vellmoor
