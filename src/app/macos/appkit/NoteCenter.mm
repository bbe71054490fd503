#include "appkit/NoteCenter.h"

#include "values/FoundationValues.h"

#import <UserNotifications/UserNotifications.h>
#include <dispatch/dispatch.h>
#include <utility>

namespace {

/// Whom the object below hands on to; empty when no centre lives.
std::function<void()> opened;

} // namespace

// The object that the notification centre calls, on a thread of its choice.
@interface VellmoorNotes : NSObject <UNUserNotificationCenterDelegate>
@end

@implementation VellmoorNotes

// Asked while this program is in front, be it with its window in the Dock.
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler {
    (void)center;
    (void)notification;
    completionHandler(UNNotificationPresentationOptionList | UNNotificationPresentationOptionBanner);
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
    (void)center;
    if ([response.actionIdentifier isEqualToString:UNNotificationDefaultActionIdentifier]) {
        dispatch_async(dispatch_get_main_queue(), ^{
          if (opened) {
              opened();
          }
        });
    }
    completionHandler();
}

@end

namespace vellmoor {
namespace {

/// The notification centre does not keep its delegate alive.
VellmoorNotes* notes = nil;

// nil for a program that the system does not know: it raises where there is no bundle, or none that it can find.
UNUserNotificationCenter* centre() {
    if (NSBundle.mainBundle.bundleIdentifier == nil) {
        return nil;
    }
    @try {
        return UNUserNotificationCenter.currentNotificationCenter;
    } @catch (NSException* exception) {
        mac::logFailure(mac::LogCategory::Window, "Finding the notification centre", 0, mac::textOf(exception.reason));
        return nil;
    }
}

void logIfAny(NSError* error, const char* what) {
    if (error != nil) {
        (void)mac::failureOf(error, mac::LogCategory::Window, what); // a note that is missing is worth no message
    }
}

} // namespace

void NoteCenter::install(std::function<void()> taken) {
    @autoreleasepool {
        opened = std::move(taken);
        notes = [[VellmoorNotes alloc] init];
        centre().delegate = notes;
    }
}

NoteCenter::~NoteCenter() {
    @autoreleasepool {
        opened = {};
        if (notes != nil) {
            centre().delegate = nil;
            notes = nil;
        }
    }
}

void NoteCenter::show(const std::string& title, const std::string& text) {
    @autoreleasepool {
        UNUserNotificationCenter* center = centre();
        if (center == nil) {
            return;
        }
        UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
        content.title = mac::objectOf(title);
        content.body = mac::objectOf(text);
        // A note takes the place of the one with its name; without a trigger it is shown at once.
        UNNotificationRequest* request = [UNNotificationRequest requestWithIdentifier:@"finished"
                                                                              content:content
                                                                              trigger:nil];
        // Only the first time the user is asked; from then on the answer is what the user chose.
        [center requestAuthorizationWithOptions:UNAuthorizationOptionAlert
                              completionHandler:^(BOOL isGranted, NSError* refusal) {
                                if (!isGranted) {
                                    logIfAny(refusal, "Asking for notes");
                                    return;
                                }
                                [center addNotificationRequest:request
                                         withCompletionHandler:^(NSError* error) {
                                           logIfAny(error, "Showing a note");
                                         }];
                              }];
    }
}

} // namespace vellmoor
