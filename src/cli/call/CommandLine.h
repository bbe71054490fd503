#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace vellmoor::cli {

/// One call of the program; answers its exit status. `root` stands for "/" in every path outside the home.
int runCommandLine(const std::vector<std::string>& words, const std::filesystem::path& root = "/");

} // namespace vellmoor::cli
