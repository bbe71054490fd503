#include "disk/MacTrashSession.h"

#include "MacPlatform.h"
#include "disk/MacPaths.h"
#include "trash/ReturnByPath.h"
#include "values/FoundationValues.h"

#include <cerrno>
#include <functional>

// A removal is asked about here before each of its entries, a folder before what it holds; one that is refused stays
// with all that it holds. The removal itself is Foundation's: it knows folders with several names, whose contents are
// others' too, and folders that lie in a cloud, which it does not fetch first.
@interface VellmoorRemoval : NSObject <NSFileManagerDelegate> {
@public
    const vellmoor::CancelToken* stop;
    BOOL hasRefused;
}
@end

@implementation VellmoorRemoval

- (BOOL)fileManager:(NSFileManager*)manager shouldRemoveItemAtPath:(NSString*)path {
    (void)manager;
    (void)path;
    hasRefused = hasRefused || stop->isCancelled();
    return !hasRefused;
}

@end

namespace vellmoor {
namespace {

Removal plain(RemovalResult result) {
    return {.result = result, .reason = "", .place = {}};
}

Removal failure(NSError* error, const char* what) {
    RemovalResult result = RemovalResult::Failed;
    if (mac::textOf(error.domain) == mac::textOf(NSCocoaErrorDomain)) {
        if (error.code == NSFileWriteOutOfSpaceError) {
            result = RemovalResult::DiskFull;
        } else if (error.code == NSFileWriteVolumeReadOnlyError) {
            result = RemovalResult::ReadOnly;
        }
    }
    return {.result = result, .reason = mac::failureOf(error, mac::LogCategory::Files, what).error(), .place = {}};
}

bool isChanged(const RemovalRequest& request, const FileIdentity& found) {
    return request.identity && !isSame(*request.identity, found, request.sameness);
}

} // namespace

// Back to where it was; where that is impossible it stays in the Trash, and the answer tells the place.
Removal MacTrashSession::returned(const Path& place, const Path& path) const {
    if (const Outcome back = platform_.moveItem(place, path); !back) {
        return {.result = RemovalResult::Failed, .reason = back.error(), .place = place};
    }
    return plain(RemovalResult::Changed);
}

bool MacTrashSession::isGone(const Path& path) const {
    return !platform_.facts(path) && (errno == ENOENT || errno == ENOTDIR);
}

// What speaks against acting on the path.
std::optional<RemovalResult> MacTrashSession::objection(const RemovalRequest& request) const {
    const std::optional<FileIdentity> found = platform_.identity(request.path);
    if (!found) { // what cannot be seen is there: the deed itself tells why it fails
        return isGone(request.path) ? std::optional(RemovalResult::Vanished) : std::nullopt;
    }
    return isChanged(request, *found) ? std::optional(RemovalResult::Changed) : std::nullopt;
}

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
            return failure(error, "Moving to the Trash");
        }
        const Path place = mac::pathOf(address);
        const std::optional<FileIdentity> moved = platform_.identity(place);
        if (moved && isChanged(request, *moved)) { // privacy protection may hide it: then nothing speaks against it
            return returned(place, request.path);
        }
        return {.result = RemovalResult::Done, .reason = "", .place = place, .moved = moved};
    }
}

Removal MacTrashSession::removeFromTrash(const RemovalRequest& request, const TrashFolder& trash) {
    if (!mac::reallyLiesIn(request.path, trash.contents)) {
        return {.result = RemovalResult::Failed, .reason = files::reason(EPERM), .place = {}};
    }
    if (const auto result = objection(request)) {
        return plain(*result);
    }
    @autoreleasepool {
        VellmoorRemoval* removal = [[VellmoorRemoval alloc] init];
        removal->stop = stop_;
        NSFileManager* manager = [[NSFileManager alloc] init]; // the shared one has no delegate of ours
        if (stop_ != nullptr) {
            manager.delegate = removal;
        }
        NSError* error = nil;
        const bool isDone = [manager removeItemAtURL:mac::addressOf(request.path) error:&error];
        if (removal->hasRefused) { // then it answers success for a file, and for a folder that rights are missing
            return plain(isGone(request.path) ? RemovalResult::Done : RemovalResult::Stopped);
        }
        return isDone ? Removal() : failure(error, "Removing from the Trash");
    }
}

Return MacTrashSession::putBack(const ReturnRequest& request, const TrashFolder& trash) {
    if (!mac::reallyLiesIn(request.place, trash.contents)) {
        return {.result = ReturnResult::Failed, .reason = files::reason(EPERM)};
    }
    return putBackByPath(platform_, request);
}

std::unique_ptr<TrashSession> MacPlatform::trashSession(TrashPlaces places) const {
    return std::make_unique<MacTrashSession>(*this, places.stop);
}

// Facts by which a file is known again. The disk's number is made from the volume's UUID: the system gives a device
// number to the next volume when one is ejected.
std::optional<FileIdentity> MacPlatform::identity(const Path& path) const {
    const std::optional<FileFacts> known = facts(path);
    if (!known) {
        return std::nullopt;
    }
    FileIdentity found = identityOf(*known);
    @autoreleasepool {
        NSString* number = nil;
        [mac::addressOf(path) getResourceValue:&number forKey:NSURLVolumeUUIDStringKey error:nullptr]; // some have none
        if (number != nil) {
            found.device = std::hash<std::string>()(mac::textOf(number));
        }
    }
    return found;
}

} // namespace vellmoor
