// Mounted volumes and their room, by Foundation: members of MacPlatform.
#include "MacPlatform.h"
#include "values/FoundationValues.h"

namespace vellmoor {

using mac::addressOf;
using mac::pathOf;
using mac::textOf;

// Without the system's hidden ones; "/" comes first.
std::vector<Volume> MacPlatform::mountedVolumes() const {
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

// Of the volume that holds `path`. Available is what macOS would free for something important; it asks another process,
// so never on the main thread. 0 available on a volume that is not APFS is what the system says.
std::optional<Capacity> MacPlatform::capacity(const Path& path) const {
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

std::optional<Disk> MacPlatform::disk(const Path& path) const {
    @autoreleasepool {
        NSDictionary<NSURLResourceKey, id>* values =
            [addressOf(path) resourceValuesForKeys:@[ NSURLVolumeURLKey, NSURLVolumeUUIDStringKey ] error:nullptr];
        NSURL* mount = [values objectForKey:NSURLVolumeURLKey];
        if (mount == nil) {
            return std::nullopt;
        }
        NSString* name = [values objectForKey:NSURLVolumeUUIDStringKey]; // some have none
        // APFS shares blocks and keeps snapshots: what was removed may be free only later.
        return Disk{.name = name == nil ? std::string() : textOf(name), .mount = pathOf(mount), .isCopyOnWrite = true};
    }
}

} // namespace vellmoor
