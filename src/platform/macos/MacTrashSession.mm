#include "MacTrashSession.h"

#include "FoundationValues.h"
#include "MacChanges.h"
#include "Paths.h"

#include <cerrno>
#include <functional>

namespace vellmoor {
namespace {

Removal plain(RemovalResult result) {
    return {.result = result, .reason = "", .place = {}};
}

Removal failure(NSError* error) {
    RemovalResult result = RemovalResult::Failed;
    if (mac::textOf(error.domain) == mac::textOf(NSCocoaErrorDomain)) {
        if (error.code == NSFileWriteOutOfSpaceError) {
            result = RemovalResult::DiskFull;
        } else if (error.code == NSFileWriteVolumeReadOnlyError) {
            result = RemovalResult::ReadOnly;
        }
    }
    return {.result = result, .reason = mac::failureOf(error).error(), .place = {}};
}

bool isChanged(const RemovalRequest& request, const FileIdentity& found) {
    return request.identity && !isSame(*request.identity, found, request.sameness);
}

bool reallyLiesIn(const Path& path, const Path& folder) {
    const std::optional<Path> parent = mac::realPath(path.parent_path());
    const std::optional<Path> contents = mac::realPath(folder);
    return parent && contents && isStrictlyBelow(*parent / path.filename(), *contents);
}

// Back to where it was; where that is impossible it stays in the Trash, and the answer tells the place.
Removal returned(const Path& place, const Path& path) {
    if (const Outcome back = mac::moveItem(place, path); !back) {
        return {.result = RemovalResult::Failed, .reason = back.error(), .place = place};
    }
    return plain(RemovalResult::Changed);
}

// What speaks against acting on the path.
std::optional<RemovalResult> objection(const RemovalRequest& request) {
    const std::optional<FileIdentity> found = mac::identity(request.path);
    if (!found) { // what cannot be seen is there: the deed itself tells why it fails
        return errno == ENOENT || errno == ENOTDIR ? std::optional(RemovalResult::Vanished) : std::nullopt;
    }
    return isChanged(request, *found) ? std::optional(RemovalResult::Changed) : std::nullopt;
}

} // namespace

Removal MacTrashSession::moveToTrash(const RemovalRequest& request) {
    if (const auto result = objection(request)) {
        return plain(*result);
    }
    @autoreleasepool {
        NSURL* address = nil;
        NSError* error = nil;
        if (![NSFileManager.defaultManager trashItemAtURL:mac::addressOf(request.path)
                                         resultingItemURL:&address
                                                    error:&error]) {
            return failure(error);
        }
        const Path place = mac::pathOf(address);
        const std::optional<FileIdentity> moved = mac::identity(place);
        if (moved && isChanged(request, *moved)) { // privacy protection may hide it: then nothing speaks against it
            return returned(place, request.path);
        }
        return {.result = RemovalResult::Done, .reason = "", .place = place};
    }
}

Removal MacTrashSession::removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) {
    if (!reallyLiesIn(request.path, trash.contents)) {
        return {.result = RemovalResult::Failed, .reason = mac::reason(EPERM), .place = {}};
    }
    if (const auto result = objection(request)) {
        return plain(*result);
    }
    @autoreleasepool {
        NSError* error = nil;
        if ([NSFileManager.defaultManager removeItemAtURL:mac::addressOf(request.path) error:&error]) {
            return {};
        }
        return failure(error);
    }
}

std::optional<FileIdentity> mac::identity(const Path& path) {
    const std::optional<FileFacts> known = facts(path);
    if (!known) {
        return std::nullopt;
    }
    FileIdentity found = identityOf(*known);
    @autoreleasepool {
        NSString* number = nil;
        [addressOf(path) getResourceValue:&number forKey:NSURLVolumeUUIDStringKey error:nullptr]; // some have none
        if (number != nil) {
            found.device = std::hash<std::string>()(textOf(number));
        }
    }
    return found;
}

} // namespace vellmoor
