#include "MacChanges.h"

#include "FoundationValues.h"

#include <cerrno>

namespace vellmoor::mac {

Outcome moveItem(const Path& from, const Path& to) {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager moveItemAtURL:addressOf(from) toURL:addressOf(to) error:&error]) {
            return {};
        }
        return failureOf(error);
    }
}

Outcome createFolder(const Path& folder) {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager createDirectoryAtURL:addressOf(folder)
                                   withIntermediateDirectories:YES
                                                    attributes:nil
                                                         error:&error]) {
            return {};
        }
        return failureOf(error);
    }
}

} // namespace vellmoor::mac
