#include "MacHost.h"

#include "FoundationValues.h"

#include <pthread/qos.h>

namespace vellmoor::mac {

Path homeFolder() {
    @autoreleasepool {
        return pathOf(NSFileManager.defaultManager.homeDirectoryForCurrentUser);
    }
}

std::int64_t physicalMemory() {
    @autoreleasepool {
        return static_cast<std::int64_t>(NSProcessInfo.processInfo.physicalMemory);
    }
}

std::optional<std::string> preferredLanguage() {
    @autoreleasepool {
        return stringIn(NSLocale.preferredLanguages.firstObject);
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

void hurryThisThread() {
    // It fails only on a thread whose priority was set by hand; that one keeps its own.
    (void)::pthread_set_qos_class_self_np(QOS_CLASS_USER_INITIATED, 0);
}

} // namespace vellmoor::mac
