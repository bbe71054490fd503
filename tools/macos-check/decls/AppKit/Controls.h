// Events, views, the status item and its menu.
#pragma once
#import <AppKit/Images.h>

NS_ASSUME_NONNULL_BEGIN

@class NSWindow;

typedef NS_ENUM(NSUInteger, NSEventType) {
    NSEventTypeLeftMouseDown = 1,
    NSEventTypeLeftMouseUp = 2,
    NSEventTypeRightMouseDown = 3,
    NSEventTypeRightMouseUp = 4
};
typedef NS_OPTIONS(unsigned long long, NSEventMask) {
    NSEventMaskLeftMouseUp = 1ULL << NSEventTypeLeftMouseUp,
    NSEventMaskRightMouseUp = 1ULL << NSEventTypeRightMouseUp
};
@interface NSEvent : NSObject <NSCopying>
@property(readonly) NSEventType type;
@end

@interface NSResponder : NSObject
@end
@interface NSView : NSResponder
@property NSRect bounds;
@property(nullable, readonly, assign) NSWindow* window;
@property(nullable, copy) NSString* toolTip;
@end
@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
- (NSInteger)sendActionOn:(NSEventMask)mask;
@end
@interface NSButton : NSControl
@property(nullable, strong) NSImage* image;
@end

@interface NSStatusBarButton : NSButton
@end
FOUNDATION_EXPORT const CGFloat NSSquareStatusItemLength;
@interface NSStatusItem : NSObject
@property(nullable, readonly, strong) NSStatusBarButton* button;
@end
@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@class NSMenu;
@interface NSMenuItem : NSObject <NSCopying>
@property(nullable, strong) NSMenu* submenu;
@property(nullable, strong) id representedObject;
@property(nullable, weak) id target;
+ (NSMenuItem*)separatorItem;
@end
@interface NSMenu : NSObject <NSCopying>
- (instancetype)initWithTitle:(NSString*)title;
- (NSMenuItem*)addItemWithTitle:(NSString*)string action:(nullable SEL)selector keyEquivalent:(NSString*)charCode;
- (void)addItem:(NSMenuItem*)newItem;
- (BOOL)popUpMenuPositioningItem:(nullable NSMenuItem*)item atLocation:(NSPoint)location inView:(nullable NSView*)view;
@end

NS_ASSUME_NONNULL_END
