// Documented interfaces of UserNotifications that Vellmoor calls, for the check on Linux only.
#pragma once
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class UNUserNotificationCenter;

@interface UNNotificationContent : NSObject <NSCopying, NSSecureCoding>
@end
@interface UNMutableNotificationContent : UNNotificationContent
@property(copy) NSString* title;
@property(copy) NSString* body;
@end

@interface UNNotificationTrigger : NSObject <NSCopying, NSSecureCoding>
@end
@interface UNNotificationRequest : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)requestWithIdentifier:(NSString*)identifier
                              content:(UNNotificationContent*)content
                              trigger:(nullable UNNotificationTrigger*)trigger;
@end

@interface UNNotification : NSObject <NSCopying, NSSecureCoding>
@end

FOUNDATION_EXPORT NSString* const UNNotificationDefaultActionIdentifier;
@interface UNNotificationResponse : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy) NSString* actionIdentifier;
@end

typedef NS_OPTIONS(NSUInteger, UNAuthorizationOptions) { UNAuthorizationOptionAlert = 1 << 2 };
typedef NS_OPTIONS(NSUInteger, UNNotificationPresentationOptions) {
    UNNotificationPresentationOptionList = 1 << 3,
    UNNotificationPresentationOptionBanner = 1 << 4
};

@protocol UNUserNotificationCenterDelegate <NSObject>
@optional
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions options))completionHandler;
- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler;
@end

@interface UNUserNotificationCenter : NSObject
@property(nullable, weak) id<UNUserNotificationCenterDelegate> delegate;
+ (UNUserNotificationCenter*)currentNotificationCenter;
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(nullable void (^)(BOOL granted, NSError* _Nullable error))completionHandler;
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(nullable void (^)(NSError* _Nullable error))completionHandler;
@end

NS_ASSUME_NONNULL_END
