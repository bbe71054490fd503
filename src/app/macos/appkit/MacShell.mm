#include "appkit/MacShell.h"

#include "MacLog.h"
#include "desktop/MenuTables.h"
#include "values/FoundationValues.h"

#import <AppKit/AppKit.h>
#include <span>
#include <utility>

namespace {

/// Whom the object below hands on to; empty when no shell lives.
vellmoor::ShellHandlers handlers;

} // namespace

// The object that AppKit calls.
@interface VellmoorShell : NSObject {
    NSStatusItem* _statusItem;
}
- (void)finishedLaunching:(NSNotification*)notification;
- (void)reopen:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
- (void)quitEvent:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply;
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

@implementation VellmoorShell

- (void)finishedLaunching:(NSNotification*)notification {
    (void)notification;
    [self installStatusItem];
    [self installMenus];
    // AppKit has its own handlers by now; these take the place of what it does about a click on the Dock icon, and
    // about a log-out or the Dock's "Quit": Qt would answer that it does not quit, which ends the log-out.
    NSAppleEventManager* events = NSAppleEventManager.sharedAppleEventManager;
    [events setEventHandler:self
                andSelector:@selector(reopen:withReplyEvent:)
              forEventClass:kCoreEventClass
                 andEventID:kAEReopenApplication];
    [events setEventHandler:self
                andSelector:@selector(quitEvent:withReplyEvent:)
              forEventClass:kCoreEventClass
                 andEventID:kAEQuitApplication];
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
    if (vellmoor::opensStatusMenu(NSApp.currentEvent.type)) {
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

// The answer is that of any event that was understood; the system then waits for the program to end.
- (void)quitEvent:(NSAppleEventDescriptor*)event withReplyEvent:(NSAppleEventDescriptor*)reply {
    (void)event;
    (void)reply;
    [self quit:nil];
}

- (void)showMainWindow:(id)sender {
    (void)sender;
    if (handlers.showMainWindow) {
        handlers.showMainWindow();
    }
}

- (void)quit:(id)sender {
    (void)sender;
    if (handlers.quit) {
        handlers.quit();
    }
}

- (void)edit:(NSMenuItem*)sender {
    const std::string action = vellmoor::mac::stringIn(sender.representedObject).value_or("");
    vellmoor::performEdit(action, handlers.edit,
                          [&action] { [NSApp sendAction:selectorNamed(action.c_str()) to:nil from:nil]; });
}

- (void)retire {
    [NSNotificationCenter.defaultCenter removeObserver:self];
    NSAppleEventManager* events = NSAppleEventManager.sharedAppleEventManager;
    [events removeEventHandlerForEventClass:kCoreEventClass andEventID:kAEReopenApplication];
    [events removeEventHandlerForEventClass:kCoreEventClass andEventID:kAEQuitApplication];
    if (_statusItem != nil) {
        [NSStatusBar.systemStatusBar removeStatusItem:_statusItem];
        _statusItem = nil;
    }
}
@end

namespace vellmoor {
namespace {

static_assert(rightMouseUp == NSEventTypeRightMouseUp);

/// Neither the notification centre nor the event manager keeps its observer alive.
VellmoorShell* shell = nil;

/// What keeps the system from slowing the program down; nil when nothing goes on.
id activity = nil;

} // namespace

void MacShell::install(ShellHandlers taken) {
    @autoreleasepool {
        handlers = std::move(taken);
        notes_.install([] {
            if (handlers.showMainWindow) {
                handlers.showMainWindow();
            }
        });
        shell = [[VellmoorShell alloc] init];
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
        setBusy(false);
        handlers = {};
        [shell retire];
        shell = nil;
    }
}

void MacShell::activate() {
    @autoreleasepool {
        [NSApp setActivationPolicy:NSApplicationActivationPolicyRegular];
        [NSApp unhide:nil];
        // Newer SDKs tell it off; what they offer instead leaves the window behind when another program says so.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
        [NSApp activateIgnoringOtherApps:YES];
#pragma clang diagnostic pop
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

void MacShell::setBusy(bool isBusy) {
    @autoreleasepool {
        if (isBusy == (activity != nil)) {
            return;
        }
        NSProcessInfo* process = NSProcessInfo.processInfo;
        if (isBusy) {
            activity = [process beginActivityWithOptions:NSActivityUserInitiated reason:@"Scanning or cleaning"];
        } else {
            [process endActivity:activity];
            activity = nil;
        }
    }
}

void MacShell::showNote(const std::string& title, const std::string& text) {
    notes_.show(title, text);
}

void MacShell::alert(const std::string& title, const std::string& text) {
    mac::logFailure(mac::LogCategory::Window, "Showing the window", 0, text);
    @autoreleasepool {
        NSAlert* alert = [[NSAlert alloc] init];
        alert.messageText = mac::objectOf(title);
        alert.informativeText = mac::objectOf(text);
        [alert runModal];
    }
}

} // namespace vellmoor
