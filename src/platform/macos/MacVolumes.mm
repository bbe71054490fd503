#include "MacVolumes.h"

#include "FoundationValues.h"

namespace vellmoor::mac {

std::vector<Volume> mountedVolumes() {
    @autoreleasepool {
        NSArray<NSURL*>* addresses = [NSFileManager.defaultManager
            mountedVolumeURLsIncludingResourceValuesForKeys:@[ NSURLVolumeNameKey, NSURLVolumeIsBrowsableKey ]
                                                    options:NSVolumeEnumerationSkipHiddenVolumes];
        std::vector<Volume> volumes;
        for (NSURL* address in addresses) {
            NSString* name = nil;
            [address getResourceValue:&name forKey:NSURLVolumeNameKey error:nullptr]; // without one: the folder's name
            volumes.push_back(
                {.path = pathOf(address), .name = textOf(name.length > 0 ? name : address.lastPathComponent)});
        }
        return volumes;
    }
}

std::optional<Capacity> capacity(const Path& path) {
    @autoreleasepool {
        NSDictionary<NSURLResourceKey, id>* values = [addressOf(path)
            resourceValuesForKeys:@[ NSURLVolumeTotalCapacityKey, NSURLVolumeAvailableCapacityForImportantUsageKey ]
                            error:nullptr];
        NSNumber* total = [values objectForKey:NSURLVolumeTotalCapacityKey];
        NSNumber* available = [values objectForKey:NSURLVolumeAvailableCapacityForImportantUsageKey];
        if (total == nil || available == nil) {
            return std::nullopt;
        }
        return Capacity{.totalBytes = total.longLongValue, .availableBytes = available.longLongValue};
    }
}

} // namespace vellmoor::mac
