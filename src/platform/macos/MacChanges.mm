#include "MacChanges.h"

#include "FoundationValues.h"
#include "Paths.h"

#include <cerrno>

namespace vellmoor::mac {
namespace {

bool reallyLiesIn(const Path& path, const Path& folder) {
    const std::optional<Path> parent = realPath(path.parent_path());
    const std::optional<Path> contents = realPath(folder);
    return parent && contents && isStrictlyBelow(*parent / path.filename(), *contents);
}

} // namespace

Outcome moveToTrash(const Path& path) {
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager trashItemAtURL:addressOf(path) resultingItemURL:nullptr error:&error]) {
            return {};
        }
        return failureOf(error);
    }
}

Outcome removeFromTrash(const Path& path, const TrashFolder& trash) {
    if (!reallyLiesIn(path, trash.contents)) {
        return std::unexpected(reason(EPERM));
    }
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager removeItemAtURL:addressOf(path) error:&error]) {
            return {};
        }
        return failureOf(error);
    }
}

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
