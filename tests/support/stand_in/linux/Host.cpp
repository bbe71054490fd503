#include "Host.h"

#include "LinuxPlatform.h"
#include "layouts/linux/LinuxEnvironment.h"

namespace vellmoor::test {

const Platform& hostPlatform() {
    static const LinuxPlatform platform;
    return platform;
}

SystemLayout hostLayout(const Path& home) {
    return linuxLayout(linuxEnvironmentOf(home), hostPlatform().userId());
}

std::vector<System> hostedSystems() {
    return {System::Mac, System::Linux};
}

} // namespace vellmoor::test
