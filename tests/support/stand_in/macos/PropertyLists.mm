#include "PropertyLists.h"

#include "Host.h"
#include "values/FoundationValues.h"

namespace vellmoor::test {

std::optional<BundleInfo> readBundleInfo(const Path& bundle) {
    return hostPlatform().bundleInfo(bundle);
}

std::optional<LaunchAgent> readLaunchAgent(const Path& propertyList) {
    return hostPlatform().launchAgent(propertyList);
}

std::string binaryPropertyList(const std::string& xml) {
    @autoreleasepool {
        id list = [NSPropertyListSerialization propertyListWithData:[NSData dataWithBytes:xml.data() length:xml.size()]
                                                            options:NSPropertyListImmutable
                                                             format:nullptr
                                                              error:nullptr];
        if (list == nil) {
            return {};
        }
        NSData* binary = [NSPropertyListSerialization dataWithPropertyList:list
                                                                    format:NSPropertyListBinaryFormat_v1_0
                                                                   options:0
                                                                     error:nullptr];
        return binary.length == 0 ? std::string() : std::string(static_cast<const char*>(binary.bytes), binary.length);
    }
}

} // namespace vellmoor::test
