// Views, the status item, menus.
#include "Played.h"

#include <map>

namespace vellmoor::test {
namespace {

NSStatusBarButton* statusButton() {
    static NSStatusBarButton* only = [[NSStatusBarButton alloc] init];
    return only;
}

NSMenu* lastPopUp = nil;

void send(id target, SEL action, id sender) {
    if (target != nil && action != nullptr) {
        [target performSelector:action withObject:sender];
    }
}

} // namespace

namespace played {

Remembered& of(id object) {
    static std::map<const void*, Remembered> all;
    return all[object];
}

NSMenu* mainMenu() {
    static NSMenu* only = [[NSMenu alloc] init];
    return only;
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

} // namespace played

using namespace played;

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

} // namespace vellmoor::test

using namespace vellmoor::test;
using namespace vellmoor::test::played;

const CGFloat NSSquareStatusItemLength = -2;

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
