#include "MacShell.h"

#include "FoundationValues.h"
#include "MenuTables.h"

#import <AppKit/AppKit.h>
#include <span>
#include <utility>

// The object that AppKit calls. It hands on to the program as long as the program's shell lives.
@interface VellmoorShell : NSObject
- (instancetype)initWithHandlers:(vellmoor::ShellHandlers)handlers;
- (void)finishedLaunching:(NSNotification*)notification;
- (void)reopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
- (void)statusItemClicked:(id)sender;
- (void)showMainWindow:(id)sender;
- (void)quit:(id)sender;
- (void)edit:(NSMenuItem*)sender;
- (void)retire;
@end

namespace {

/// Beyond the height of the button, so that the menu does not touch it.
constexpr CGFloat menuDistance = 4;

SEL selectorNamed(const char* name) {
    return NSSelectorFromString(vellmoor::mac::objectOf(name));
}

NSMenu* menuIn(NSMenu* bar, NSString* title) {
    NSMenuItem* holder = [bar addItemWithTitle:title action:nullptr keyEquivalent:@""];
    NSMenu* menu = [[NSMenu alloc] initWithTitle:title];
    holder.submenu = menu;
    return menu;
}

} // namespace

@implementation VellmoorShell {
    vellmoor::ShellHandlers _handlers;
    NSStatusItem* _statusItem;
}

- (instancetype)initWithHandlers:(vellmoor::ShellHandlers)handlers {
    self = [super init];
    if (self != nil) {
        _handlers = std::move(handlers);
    }
    return self;
}

- (void)finishedLaunching:(NSNotification*)notification {
    (void)notification;
    [self installStatusItem];
    [self installMenus];
    // AppKit has its own handlers by now; this one takes the place of what it does about a click on the Dock icon.
    [NSAppleEventManager.sharedAppleEventManager setEventHandler:self
                                                     andSelector:@selector(reopen:withReplyEvent:)
                                                   forEventClass:kCoreEventClass
                                                      andEventID:kAEReopenApplication];
}

- (void)installStatusItem {
    if (_statusItem != nil) {
        return;
    }
    _statusItem = [NSStatusBar.systemStatusBar statusItemWithLength:NSSquareStatusItemLength];
    NSImage* image = [NSImage imageWithSystemSymbolName:@"sparkles" accessibilityDescription:@"Vellmoor"];
    [image setTemplate:YES]; // drawn in the menu bar's own colour
    NSStatusBarButton* button = _statusItem.button;
    button.image = image;
    button.toolTip = @"Vellmoor";
    button.target = self;
    button.action = @selector(statusItemClicked:);
    [button sendActionOn:NSEventMaskLeftMouseUp | NSEventMaskRightMouseUp];
}

// Qt makes a menu bar that has the application menu only.
- (void)installMenus {
    NSMenu* bar = NSApp.mainMenu;
    if (bar == nil) {
        return;
    }
    NSMenu* edit = menuIn(bar, @"Edit");
    for (const vellmoor::BarEntry& entry : vellmoor::editMenu()) {
        NSMenuItem* item = [edit addItemWithTitle:vellmoor::mac::objectOf(entry.title)
                                           action:@selector(edit:)
                                    keyEquivalent:vellmoor::mac::objectOf(entry.key)];
        item.target = self;
        item.representedObject = vellmoor::mac::objectOf(entry.action);
    }
    NSMenu* window = menuIn(bar, @"Window");
    for (const vellmoor::BarEntry& entry : vellmoor::windowMenu()) {
        [window addItemWithTitle:vellmoor::mac::objectOf(entry.title)
                          action:selectorNamed(entry.action)
                   keyEquivalent:vellmoor::mac::objectOf(entry.key)];
    }
}

- (void)statusItemClicked:(id)sender {
    if (NSApp.currentEvent.type == NSEventTypeRightMouseUp) {
        [self popUpStatusMenu];
    } else {
        [self showMainWindow:sender];
    }
}

// Made anew each time, in the language of that moment.
- (void)popUpStatusMenu {
    NSMenu* menu = [[NSMenu alloc] initWithTitle:@""];
    for (const vellmoor::StatusEntry& entry : vellmoor::statusMenu()) {
        if (entry.action == vellmoor::StatusAction::Separator) {
            [menu addItem:[NSMenuItem separatorItem]];
            continue;
        }
        const bool opens = entry.action == vellmoor::StatusAction::Open;
        NSMenuItem* item = [menu addItemWithTitle:vellmoor::mac::objectOf(entry.title)
                                           action:opens ? @selector(showMainWindow:) : @selector(quit:)
                                    keyEquivalent:@""];
        item.target = self;
    }
    NSStatusBarButton* button = _statusItem.button;
    [menu popUpMenuPositioningItem:nil atLocation:NSMakePoint(0, NSHeight(button.bounds) + menuDistance) inView:button];
}

- (void)reopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply {
    (void)event;
    (void)reply;
    [self showMainWindow:nil];
}

- (void)showMainWindow:(id)sender {
    (void)sender;
    if (_handlers.showMainWindow) {
        _handlers.showMainWindow();
    }
}

- (void)quit:(id)sender {
    (void)sender;
    if (_handlers.quit) {
        _handlers.quit();
    }
}

// Text fields of the system's own panels take the action as it is; Qt's view does not know it.
- (void)edit:(NSMenuItem*)sender {
    const std::string action = vellmoor::mac::stringIn(sender.representedObject).value_or("");
    const BOOL isTaken = [NSApp sendAction:selectorNamed(action.c_str()) to:nil from:nil];
    if (!isTaken && _handlers.edit) {
        _handlers.edit(action);
    }
}

- (void)retire {
    _handlers = {};
    [NSNotificationCenter.defaultCenter removeObserver:self];
    if (_statusItem != nil) {
        [NSStatusBar.systemStatusBar removeStatusItem:_statusItem];
        _statusItem = nil;
    }
}
@end

namespace vellmoor {
namespace {

/// Neither the notification centre nor the event manager keeps its observer alive.
VellmoorShell* shell = nil;

} // namespace

MacShell::MacShell(ShellHandlers handlers) {
    @autoreleasepool {
        shell = [[VellmoorShell alloc] initWithHandlers:std::move(handlers)];
        if (NSRunningApplication.currentApplication.finishedLaunching) {
            [shell finishedLaunching:nil];
            return;
        }
        [NSNotificationCenter.defaultCenter addObserver:shell
                                               selector:@selector(finishedLaunching:)
                                                   name:NSApplicationDidFinishLaunchingNotification
                                                 object:nil];
    }
}

MacShell::~MacShell() {
    @autoreleasepool {
        [shell retire]; // the object stays: the event manager may still know it
    }
}

void MacShell::activate() {
    @autoreleasepool {
        [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
        [NSApp unhide:nil];
        [NSApp activateIgnoringOtherApps:YES];
    }
}

void MacShell::bringToFront(std::uintptr_t view) {
    @autoreleasepool {
        NSWindow* window = ((__bridge NSView*)reinterpret_cast<void*>(view)).window;
        if (window.miniaturized) {
            [window deminiaturize:nil];
        }
        [window makeKeyAndOrderFront:nil];
    }
}

void MacShell::terminate() {
    @autoreleasepool {
        [NSApp terminate:nil];
    }
}

} // namespace vellmoor
