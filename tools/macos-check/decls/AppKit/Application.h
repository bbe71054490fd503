// The application and its windows.
#pragma once
#import <AppKit/Controls.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSWindow : NSResponder
@property(readonly, getter=isMiniaturized) BOOL miniaturized;
- (void)deminiaturize:(nullable id)sender;
- (void)makeKeyAndOrderFront:(nullable id)sender;
@end

typedef NS_ENUM(NSInteger, NSApplicationActivationPolicy) { NSApplicationActivationPolicyRegular = 0 };
@interface NSApplication : NSResponder
@property(nullable, readonly, strong) NSEvent* currentEvent;
@property(nullable, strong) NSMenu* mainMenu;
- (BOOL)setActivationPolicy:(NSApplicationActivationPolicy)activationPolicy;
- (void)activateIgnoringOtherApps:(BOOL)flag API_DEPRECATED("Use -activate.", macos(10.0, 14.0));
- (void)unhide:(nullable id)sender;
- (BOOL)sendAction:(SEL)action to:(nullable id)target from:(nullable id)sender;
@end
typedef NSInteger NSModalResponse;
@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
- (NSModalResponse)runModal;
@end
FOUNDATION_EXPORT __kindof NSApplication* _Null_unspecified NSApp;
FOUNDATION_EXPORT NSNotificationName NSApplicationDidFinishLaunchingNotification;

NS_ASSUME_NONNULL_END
