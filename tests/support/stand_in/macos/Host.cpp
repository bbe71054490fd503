#include "Host.h"

#include "MacPlatform.h"

namespace vellmoor::test {

const Platform& hostPlatform() {
    static const MacPlatform platform;
    return platform;
}

SystemLayout hostLayout(const Path& home) {
    return macosLayout(home, hostPlatform().userId());
}

std::vector<System> hostedSystems() {
    return {System::Mac};
}

} // namespace vellmoor::test
