// The notification centre. It answers on threads of its own, as Apple's may.
#include "Blocks.h"
#include "Played.h"

#import <UserNotifications/UserNotifications.h>
#include <algorithm>
#include <thread>
#include <utility>
#include <vector>

using namespace vellmoor::test;
using namespace vellmoor::test::played;

namespace {

using Answer = void (^)(BOOL, NSError*);

std::vector<Answer> questions;
id<UNUserNotificationCenterDelegate> listener = nil;

bool isKnown() {
    return !stage().ownBundle.empty() && stage().findsCentre;
}

void aside(const std::function<void()>& what) {
    std::thread([&] {
        @autoreleasepool {
            what();
        }
    }).join();
}

} // namespace

NSString* const UNNotificationDefaultActionIdentifier = @"com.apple.UNNotificationDefaultActionIdentifier";

@implementation NSBundle (StandIn)
- (NSString*)bundleIdentifier {
    return self != NSBundle.mainBundle || stage().ownBundle.empty() ? nil : objectOf(stage().ownBundle);
}
@end

@implementation UNNotificationContent
@end
@implementation UNMutableNotificationContent
- (void)setTitle:(NSString*)title {
    of(self).title = textOf(title);
}
- (void)setBody:(NSString*)body {
    of(self).key = textOf(body);
}
@end

@implementation UNNotificationTrigger
@end
@implementation UNNotification
@end
@implementation UNNotificationRequest
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(UNNotificationTrigger*)trigger {
    UNNotificationRequest* made = [[[UNNotificationRequest alloc] init] autorelease];
    of(made) = {.represented = trigger,
                .title = textOf(identifier),
                .items = {content}}; // a copy there: what is changed later is not seen
    return made;
}
@end

@implementation UNNotificationResponse
- (NSString*)actionIdentifier {
    return objectOf(of(self).title);
}
@end

@implementation UNUserNotificationCenter
+ (UNUserNotificationCenter*)currentNotificationCenter {
    if (!isKnown()) {
        [NSException raise:NSInternalInconsistencyException format:@"bundleProxyForCurrentProcess is nil"];
    }
    static UNUserNotificationCenter* only = [[UNUserNotificationCenter alloc] init];
    return only;
}
- (void)setDelegate:(id<UNUserNotificationCenterDelegate>)delegate {
    listener = delegate;
}
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options completionHandler:(Answer)handler {
    stage().permissionsAsked.push_back(options);
    questions.push_back(copied(handler));
}
- (void)addNotificationRequest:(UNNotificationRequest*)request withCompletionHandler:(void (^)(NSError*))handler {
    const bool isShown = stage().noteFailure.empty();
    if (isShown) {
        const StagedNote note{.name = of(request).title,
                              .title = of(of(request).items.at(0)).title,
                              .text = of(of(request).items.at(0)).key,
                              .isAtOnce = of(request).represented == nil};
        std::erase_if(stage().notes, [&](const StagedNote& other) { return other.name == note.name; });
        stage().notes.push_back(note);
    }
    handler(isShown ? nil : errorOf(1, stage().noteFailure));
}
@end

namespace vellmoor::test {

void answerPermission(bool isGranted, const std::string& refusal) {
    for (Answer answer : std::exchange(questions, {})) {
        aside([&] { answer(isGranted, refusal.empty() ? nil : errorOf(1, refusal)); });
        _Block_release((const void*)answer);
    }
}

bool clickNote(const std::string& action) {
    bool isAnswered = false;
    bool* const answered = &isAnswered;
    if (listener != nil) {
        UNNotificationResponse* response = [[UNNotificationResponse alloc] init];
        of(response).title = action;
        aside([&] {
            [listener userNotificationCenter:UNUserNotificationCenter.currentNotificationCenter
                didReceiveNotificationResponse:response
                         withCompletionHandler:^{
                           *answered = true;
                         }];
        });
    }
    return isAnswered;
}

unsigned long presentNote() {
    unsigned long chosen = 0;
    unsigned long* const answer = &chosen;
    UNNotification* note = [[UNNotification alloc] init];
    aside([&] {
        [listener userNotificationCenter:UNUserNotificationCenter.currentNotificationCenter
                 willPresentNotification:note
                   withCompletionHandler:^(UNNotificationPresentationOptions options) {
                     *answer = options;
                   }];
    });
    return chosen;
}

} // namespace vellmoor::test
