#include "PropertyLists.h"

#include "Host.h"

namespace vellmoor::test {

std::optional<BundleInfo> readBundleInfo(const Path& bundle) {
    return hostPlatform().bundleInfo(bundle);
}

std::optional<LaunchAgent> readLaunchAgent(const Path& propertyList) {
    return hostPlatform().launchAgent(propertyList);
}

} // namespace vellmoor::test
