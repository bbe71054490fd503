#pragma once

#include "layouts/LinuxEnvironment.h"
#include "layouts/SystemLayout.h"

#include <filesystem>
#include <vector>

namespace vellmoor {

/// User caches, logs and developer caches of a Linux home.
std::vector<JunkCategory> linuxJunkCategories(const LinuxEnvironment& environment, const std::filesystem::path& root);

} // namespace vellmoor
