// Moves outside the Trash, by Foundation, whose sentences the user reads: members of MacPlatform.
#include "MacPlatform.h"
#include "values/FoundationValues.h"

namespace vellmoor {

using mac::addressOf;
using mac::failureOf;

Outcome MacPlatform::moveItem(const Path& from, const Path& to) const {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager moveItemAtURL:addressOf(from) toURL:addressOf(to) error:&error]) {
            return {};
        }
        return failureOf(error, mac::LogCategory::Files, "Moving");
    }
}

Outcome MacPlatform::createFolder(const Path& folder) const {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager createDirectoryAtURL:addressOf(folder)
                                   withIntermediateDirectories:YES
                                                    attributes:nil
                                                         error:&error]) {
            return {};
        }
        return failureOf(error, mac::LogCategory::Files, "Making a folder");
    }
}

} // namespace vellmoor
