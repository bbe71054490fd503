#include "OwnSystem.h"

#include "MacHost.h"
#include "MacPlatform.h"

namespace vellmoor::terminal {

std::filesystem::path userHome() {
    return mac::homeFolder();
}

OwnSystem openOwnSystem(const std::optional<std::filesystem::path>& home, const std::filesystem::path& root) {
    OwnSystem own;
    own.platform = std::make_unique<MacPlatform>();
    own.layout = macosLayout(home.value_or(userHome()), own.platform->userId(), root);
    return own;
}

} // namespace vellmoor::terminal
