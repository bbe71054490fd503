#include "OwnSystem.h"

#include "LinuxPlatform.h"
#include "disk/FolderVariables.h"
#include "layouts/linux/LinuxEnvironment.h"

namespace vellmoor::terminal {

std::filesystem::path userHome() {
    return processEnvironment().home;
}

OwnSystem openOwnSystem(const std::optional<std::filesystem::path>& home, const std::filesystem::path& root) {
    unsetUnusableFolders();
    OwnSystem own;
    own.platform = std::make_unique<LinuxPlatform>();
    own.layout = linuxLayout(home ? linuxEnvironmentOf(*home) : processEnvironment(), own.platform->userId(), root);
    return own;
}

} // namespace vellmoor::terminal
