// The application, its window, its messages, the Apple events that it hears.
#include "Played.h"

#include <map>
#include <utility>

using namespace vellmoor::test;
using namespace vellmoor::test::played;

namespace {

std::map<std::pair<std::uint32_t, std::uint32_t>, std::pair<id, SEL>>& eventHandlers() {
    static std::map<std::pair<std::uint32_t, std::uint32_t>, std::pair<id, SEL>> all;
    return all;
}

std::uint32_t codeOf(const char* text) {
    std::uint32_t code = 0;
    for (int at = 0; at < 4; ++at) {
        code = (code << 8U) | static_cast<unsigned char>(text[at]);
    }
    return code;
}

} // namespace

NSNotificationName NSApplicationDidFinishLaunchingNotification = @"NSApplicationDidFinishLaunchingNotification";
// Made when the program has started: before that the run-time may not know the class yet.
__kindof NSApplication* _Null_unspecified NSApp = nil;

@implementation NSEvent
- (NSEventType)type {
    return static_cast<NSEventType>(stage().eventType);
}
@end
@implementation NSWindow
- (BOOL)isMiniaturized {
    return stage().isMiniaturized;
}
- (void)deminiaturize:(id)sender {
    (void)sender;
    stage().calls.push_back("deminiaturize");
}
- (void)makeKeyAndOrderFront:(id)sender {
    (void)sender;
    stage().calls.push_back("front");
}
@end

@implementation NSApplication
- (NSEvent*)currentEvent {
    static NSEvent* only = [[NSEvent alloc] init];
    return only;
}
- (NSMenu*)mainMenu {
    return mainMenu();
}
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)policy {
    stage().calls.push_back("policy " + std::to_string(policy));
    return YES;
}
- (void)unhide:(id)sender {
    (void)sender;
    stage().calls.push_back("unhide");
}
- (void)activateIgnoringOtherApps:(BOOL)ignores {
    stage().calls.push_back(ignores ? "activate" : "activate when others allow it");
}
- (BOOL)sendAction:(SEL)action to:(id)target from:(id)sender {
    (void)target;
    (void)sender;
    stage().calls.push_back("responders " + textOf(NSStringFromSelector(action)));
    return stage().respondersTakeActions;
}
@end
@implementation NSAlert
- (void)setMessageText:(NSString*)text {
    of(self).title = textOf(text);
}
- (void)setInformativeText:(NSString*)text {
    of(self).key = textOf(text);
}
- (NSModalResponse)runModal {
    stage().alerts.push_back(of(self).title + ": " + of(self).key);
    return 0;
}
@end

@implementation NSAppleEventManager
+ (NSAppleEventManager*)sharedAppleEventManager {
    static NSAppleEventManager* only = [[NSAppleEventManager alloc] init];
    return only;
}
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID {
    eventHandlers()[{eventClass, eventID}] = {handler, selector};
    stage().appleEvents.insert({eventClass, eventID});
}
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID {
    eventHandlers().erase({eventClass, eventID});
    stage().appleEvents.erase({eventClass, eventID});
}
@end

@interface NSProcessInfo (StandIn)
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id)activity;
@end
@implementation NSProcessInfo (StandIn)
- (id)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason {
    stage().activity = reason.length > 0 ? options : 0;
    return [[NSObject alloc] init];
}
- (void)endActivity:(id)activity {
    stage().activity = activity != nil ? 0 : stage().activity;
}
@end

namespace vellmoor::test {

void startApplication() {
    if (NSApp == nil) {
        NSApp = [[NSApplication alloc] init];
    }
}

void finishLaunching() {
    startApplication();
    stage().hasLaunched = true;
    [NSNotificationCenter.defaultCenter postNotificationName:NSApplicationDidFinishLaunchingNotification object:NSApp];
    for (id holder : of(mainMenu()).items) {
        stage().menuBar[of(holder).title] = shown(of(holder).submenu);
    }
}

bool sendAppleEvent(const char* eventClass, const char* eventId) {
    const auto found = eventHandlers().find({codeOf(eventClass), codeOf(eventId)});
    if (found == eventHandlers().end()) {
        return false;
    }
    const auto [handler, selector] = found->second;
    [handler performSelector:selector withObject:nil withObject:nil];
    return true;
}

std::uintptr_t nativeView() {
    static NSView* only = [[NSView alloc] init];
    return reinterpret_cast<std::uintptr_t>(only);
}

} // namespace vellmoor::test
