#pragma once

#include "layouts/SystemLayout.h"
#include "layouts/linux/LinuxBrowsers.h"
#include "layouts/linux/LinuxEnvironment.h"

#include <filesystem>
#include <vector>

namespace vellmoor {

/// User caches, logs and developer caches of a Linux home.
std::vector<JunkCategory> linuxJunkCategories(const LinuxEnvironment& environment,
                                              const std::vector<LinuxBrowser>& browsers,
                                              const std::filesystem::path& root);

/// Of these, the folders that go as a whole or not at all.
std::vector<std::filesystem::path> linuxWholeFolders(const LinuxEnvironment& environment);

} // namespace vellmoor
