// Moves and removals, by Foundation, whose sentences the user reads: members of MacPlatform.
#include "FoundationValues.h"
#include "MacPaths.h"
#include "MacPlatform.h"

#include <cerrno>

namespace vellmoor {

using mac::addressOf;
using mac::failureOf;

// Into the Trash of the item's own volume. Fails where the volume has none, which many network shares do.
Outcome MacPlatform::moveToTrash(const Path& path) const {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager trashItemAtURL:addressOf(path) resultingItemURL:nullptr error:&error]) {
            return {};
        }
        return failureOf(error, mac::LogCategory::Files, "Moving to the Trash");
    }
}

// Links inside are removed, never followed; the first thing that cannot be removed ends it.
Outcome MacPlatform::removeFromTrash(const Path& path, const TrashFolder& trash) const {
    if (!mac::reallyLiesIn(path, trash.contents)) {
        return files::failure(EPERM);
    }
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager removeItemAtURL:addressOf(path) error:&error]) {
            return {};
        }
        return failureOf(error, mac::LogCategory::Files, "Removing from the Trash");
    }
}

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
