#include "MacHost.h"

#include "MacPlatform.h"
#include "values/FoundationValues.h"

namespace vellmoor::mac {

Path homeFolder() {
    @autoreleasepool {
        return pathOf(NSFileManager.defaultManager.homeDirectoryForCurrentUser);
    }
}

std::optional<std::string> setting(const std::string& key) {
    @autoreleasepool {
        NSString* name = objectOf(key);
        return name == nil ? std::nullopt : stringIn([NSUserDefaults.standardUserDefaults stringForKey:name]);
    }
}

void setSetting(const std::string& key, const std::string& value) {
    @autoreleasepool {
        NSString* name = objectOf(key);
        if (name != nil) {
            [NSUserDefaults.standardUserDefaults setObject:objectOf(value) forKey:name];
        }
    }
}

} // namespace vellmoor::mac

namespace vellmoor {

// The devices of identities are made from the volumes' UUIDs.
std::string MacPlatform::systemRun() const {
    return "always";
}

std::int64_t MacPlatform::physicalMemory() const {
    @autoreleasepool {
        return static_cast<std::int64_t>(NSProcessInfo.processInfo.physicalMemory);
    }
}

std::optional<std::string> MacPlatform::preferredLanguage() const {
    @autoreleasepool {
        return mac::stringIn(NSLocale.preferredLanguages.firstObject);
    }
}

} // namespace vellmoor
