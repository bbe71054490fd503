#include "Stage.h"

#import <AppKit/AppKit.h>
#include <cstring>
#include <utility>

#pragma clang diagnostic ignored "-Wincomplete-implementation"
#pragma clang diagnostic ignored "-Wprotocol"
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
#pragma clang diagnostic ignored "-Wobjc-designated-initializers"
#pragma clang diagnostic ignored "-Wobjc-property-implementation"

using vellmoor::test::stage;
using vellmoor::test::StagedApplication;
using vellmoor::test::StagedMenuItem;

namespace {

/// What the objects below remember. It stands beside them, as Apple's declarations have no room in the objects.
struct Remembered {
    id target = nil;
    SEL action = nullptr;
    id represented = nil;
    id submenu = nil;
    std::string title;
    std::string key;
    double width = 0;
    double height = 0;
    std::vector<id> items;
};

Remembered& of(id object) {
    static std::map<const void*, Remembered> all;
    return all[object];
}

std::string textOf(NSString* text) {
    return text == nil ? std::string() : std::string(text.UTF8String);
}

std::vector<StagedMenuItem> shown(NSMenu* menu) {
    std::vector<StagedMenuItem> items;
    for (id item : of(menu).items) {
        const SEL action = of(item).action;
        items.push_back({.title = of(item).title,
                         .action = action == nullptr ? std::string() : textOf(NSStringFromSelector(action)),
                         .key = of(item).key});
    }
    return items;
}

NSStatusBarButton* statusButton() {
    static NSStatusBarButton* only = [[NSStatusBarButton alloc] init];
    return only;
}

NSMenu* mainMenu() {
    static NSMenu* only = [[NSMenu alloc] init];
    return only;
}

NSMenu* lastPopUp = nil;

void send(id target, SEL action, id sender) {
    if (target != nil && action != nullptr) {
        [target performSelector:action withObject:sender];
    }
}

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

struct CGContext {
    std::size_t bytesPerRow;
    unsigned info;
};
struct CGColorSpace {};

NSNotificationName NSApplicationDidFinishLaunchingNotification = @"NSApplicationDidFinishLaunchingNotification";
const CGFloat NSSquareStatusItemLength = -2;
const NSFontWeight NSFontWeightRegular = 0;
const CFStringRef kCGColorSpaceSRGB = nullptr;

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef) {
    return new CGColorSpace;
}
void CGColorSpaceRelease(CGColorSpaceRef space) {
    delete space;
}
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bits, size_t bytesPerRow,
                                   CGColorSpaceRef, CGBitmapInfo info) {
    const bool isPossible = bits == 8 && bytesPerRow >= width * 4;
    if (isPossible) {
        std::memset(data, 0xff, bytesPerRow * height); // all of it must be there
    }
    return isPossible ? new CGContext{.bytesPerRow = bytesPerRow, .info = static_cast<unsigned>(info)} : nullptr;
}
void CGContextRelease(CGContextRef context) {
    delete context;
}

/// What the workspace answers: one of the stage's applications.
@interface StandInApplication : NSRunningApplication {
@public
    StagedApplication* staged;
}
@end

@implementation NSRunningApplication
+ (NSRunningApplication*)currentApplication {
    static NSRunningApplication* only = [[NSRunningApplication alloc] init];
    return only;
}
- (BOOL)isFinishedLaunching {
    return stage().hasLaunched;
}
@end

@implementation StandInApplication
- (BOOL)isTerminated {
    return staged->isTerminated;
}
- (BOOL)isActive {
    return staged->isActive;
}
- (NSString*)localizedName {
    return [NSString stringWithUTF8String:staged->name.c_str()];
}
- (NSString*)bundleIdentifier {
    return staged->identifier ? [NSString stringWithUTF8String:staged->identifier->c_str()] : nil;
}
- (NSURL*)bundleURL {
    return staged->bundle.empty()
               ? nil
               : [NSURL fileURLWithPath:[NSString stringWithUTF8String:staged->bundle.c_str()] isDirectory:YES];
}
- (pid_t)processIdentifier {
    return staged->pid;
}
- (BOOL)terminate {
    ++staged->requests;
    return staged->takesRequests;
}
@end

@implementation NSWorkspace
+ (NSWorkspace*)sharedWorkspace {
    static NSWorkspace* only = [[NSWorkspace alloc] init];
    return only;
}
- (NSArray*)runningApplications {
    NSMutableArray* running = [NSMutableArray array];
    for (StagedApplication& application : vellmoor::test::stage().applications) {
        StandInApplication* shown = [[[StandInApplication alloc] init] autorelease];
        shown->staged = &application;
        [running addObject:shown];
    }
    return running;
}
- (BOOL)openURL:(NSURL*)url {
    stage().calls.push_back("open " + textOf(url.absoluteString));
    return YES;
}
- (void)activateFileViewerSelectingURLs:(NSArray*)addresses {
    for (NSURL* address in addresses) {
        stage().calls.push_back("reveal " + textOf(address.path));
    }
}
- (NSImage*)iconForFile:(NSString*)path {
    stage().calls.push_back("icon " + textOf(path));
    NSImage* image = [[NSImage alloc] init];
    of(image).width = of(image).height = 32; // Finder's small size, until another is set
    return image;
}
- (BOOL)accessibilityDisplayShouldReduceMotion {
    return stage().reducesMotion;
}
- (BOOL)accessibilityDisplayShouldIncreaseContrast {
    return stage().increasesContrast;
}
@end

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)points weight:(NSFontWeight)weight {
    NSImageSymbolConfiguration* made = [[NSImageSymbolConfiguration alloc] init];
    of(made).width = points;
    of(made).height = weight;
    return made;
}
@end

@implementation NSImage
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    (void)description;
    if (!stage().symbols.contains(textOf(name))) {
        return nil;
    }
    NSImage* image = [[NSImage alloc] init];
    of(image).width = stage().imageWidth;
    of(image).height = stage().imageHeight;
    return image;
}
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    stage().calls.push_back("symbol of " + std::to_string(static_cast<int>(of(configuration).width)) + " points");
    return self;
}
- (void)setTemplate:(BOOL)isTemplate {
    stage().isTemplate = isTemplate;
}
- (NSSize)size {
    return NSMakeSize(of(self).width, of(self).height);
}
- (void)setSize:(NSSize)size {
    of(self).width = size.width;
    of(self).height = size.height;
}
- (void)drawInRect:(NSRect)rect fromRect:(NSRect)from operation:(NSCompositingOperation)op fraction:(CGFloat)fraction {
    const bool isPlain = from.size.width == 0 && op == NSCompositingOperationSourceOver && fraction == 1;
    auto* context = reinterpret_cast<CGContext*>(of(NSGraphicsContext.currentContext).target);
    if (isPlain && context != nullptr) {
        stage().drawings.push_back(
            {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height, context->bytesPerRow, context->info});
    }
}
@end

@implementation NSGraphicsContext
static NSGraphicsContext* currentGraphics = nil;
+ (NSGraphicsContext*)currentContext {
    return currentGraphics;
}
+ (void)setCurrentContext:(NSGraphicsContext*)context {
    currentGraphics = context;
}
+ (NSGraphicsContext*)graphicsContextWithCGContext:(CGContextRef)context flipped:(BOOL)isFlipped {
    (void)isFlipped;
    NSGraphicsContext* made = [[NSGraphicsContext alloc] init];
    of(made).target = reinterpret_cast<id>(context);
    return made;
}
@end

@implementation NSEvent
- (NSEventType)type {
    return static_cast<NSEventType>(stage().eventType);
}
@end

@implementation NSResponder
@end
@implementation NSView
- (NSRect)bounds {
    return NSMakeRect(0, 0, 22, 24);
}
- (NSWindow*)window {
    static NSWindow* only = [[NSWindow alloc] init];
    return only;
}
- (void)setToolTip:(NSString*)text {
    of(self).title = textOf(text);
}
@end
@implementation NSControl
- (void)setTarget:(id)target {
    of(self).target = target;
}
- (void)setAction:(SEL)action {
    of(self).action = action;
}
- (NSInteger)sendActionOn:(NSEventMask)mask {
    stage().statusEvents = mask;
    return 0;
}
@end
@implementation NSButton
- (void)setImage:(NSImage*)image {
    of(self).represented = image;
}
@end
@implementation NSStatusBarButton
@end
@implementation NSStatusItem
- (NSStatusBarButton*)button {
    return statusButton();
}
@end
@implementation NSStatusBar
+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* only = [[NSStatusBar alloc] init];
    return only;
}
- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    stage().statusItems += length == NSSquareStatusItemLength ? 1 : 0;
    return [[NSStatusItem alloc] init];
}
- (void)removeStatusItem:(NSStatusItem*)item {
    stage().statusItems -= item != nil ? 1 : 0;
}
@end

@implementation NSMenuItem
+ (NSMenuItem*)separatorItem {
    return [[NSMenuItem alloc] init];
}
- (void)setSubmenu:(NSMenu*)menu {
    of(self).submenu = menu;
}
- (void)setTarget:(id)target {
    of(self).target = target;
}
- (void)setRepresentedObject:(id)object {
    of(self).represented = object;
}
- (id)representedObject {
    return of(self).represented;
}
@end
@implementation NSMenu
- (instancetype)initWithTitle:(NSString*)title {
    of(self).title = textOf(title);
    of(self).items.clear();
    return self;
}
- (NSMenuItem*)addItemWithTitle:(NSString*)title action:(SEL)action keyEquivalent:(NSString*)key {
    NSMenuItem* item = [[NSMenuItem alloc] init];
    of(item).action = action;
    of(item).title = textOf(title);
    of(item).key = textOf(key);
    of(self).items.push_back(item);
    return item;
}
- (void)addItem:(NSMenuItem*)item {
    of(self).items.push_back(item);
}
- (BOOL)popUpMenuPositioningItem:(NSMenuItem*)item atLocation:(NSPoint)location inView:(NSView*)view {
    stage().popUps.push_back(shown(self));
    stage().popUpHeight = item == nil && view == statusButton() ? location.y : -1;
    lastPopUp = self;
    return YES;
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
// Made when the program has started: before that the run-time may not know the class yet.
__kindof NSApplication* _Null_unspecified NSApp = nil;

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

void clickStatusItem(unsigned long eventType) {
    stage().eventType = eventType;
    if ((stage().statusEvents & (1ULL << eventType)) != 0) {
        send(of(statusButton()).target, of(statusButton()).action, statusButton());
    }
}

bool chooseMenuItem(const std::string& menu, const std::string& title) {
    NSMenu* from = menu.empty() ? lastPopUp : nil;
    for (id holder : of(mainMenu()).items) {
        from = of(holder).title == menu ? of(holder).submenu : from;
    }
    for (id item : of(from).items) {
        if (of(item).title == title) {
            send(of(item).target, of(item).action, item);
            return true;
        }
    }
    return false;
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
