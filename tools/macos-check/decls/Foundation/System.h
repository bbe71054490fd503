// Child processes, the host, settings, languages, notifications.
#pragma once
#import <Foundation/Files.h>

NS_ASSUME_NONNULL_BEGIN

@interface NSFileHandle : NSObject <NSSecureCoding>
@property(class, readonly, strong) NSFileHandle* fileHandleWithNullDevice;
- (nullable NSData*)readDataToEndOfFileAndReturnError:(out NSError* _Nullable* _Nullable)error;
@end
@interface NSPipe : NSObject
@property(readonly, retain) NSFileHandle* fileHandleForReading;
+ (NSPipe*)pipe;
@end
@interface NSTask : NSObject
@property(nullable, copy) NSURL* executableURL;
@property(nullable, copy) NSArray<NSString*>* arguments;
@property(nullable, retain) id standardOutput;
@property(nullable, retain) id standardError;
@property(readonly) int terminationStatus;
- (BOOL)launchAndReturnError:(out NSError* _Nullable* _Nullable)error;
- (void)waitUntilExit;
@end

typedef NS_OPTIONS(uint64_t, NSActivityOptions) {
    NSActivityIdleSystemSleepDisabled = (1ULL << 20),
    NSActivityUserInitiated = (0x00FFFFFFULL | NSActivityIdleSystemSleepDisabled)
};
@interface NSProcessInfo : NSObject
@property(class, readonly, strong) NSProcessInfo* processInfo;
@property(readonly) unsigned long long physicalMemory;
- (id<NSObject>)beginActivityWithOptions:(NSActivityOptions)options reason:(NSString*)reason;
- (void)endActivity:(id<NSObject>)activity;
@end

@interface NSUserDefaults : NSObject
@property(class, readonly, strong) NSUserDefaults* standardUserDefaults;
- (nullable NSString*)stringForKey:(NSString*)defaultName;
- (void)setObject:(nullable id)value forKey:(NSString*)defaultName;
@end

typedef NSString* NSNotificationName;
@interface NSNotification : NSObject <NSCopying>
@end
@interface NSNotificationCenter : NSObject
@property(class, readonly, strong) NSNotificationCenter* defaultCenter;
- (void)addObserver:(id)observer
           selector:(SEL)aSelector
               name:(nullable NSNotificationName)aName
             object:(nullable id)anObject;
- (void)removeObserver:(id)observer;
@end

@interface NSAppleEventDescriptor : NSObject <NSCopying, NSSecureCoding>
@end
@interface NSAppleEventManager : NSObject
+ (NSAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)handleEventSelector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end

@interface NSLocale : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, copy) NSArray<NSString*>* preferredLanguages;
+ (instancetype)localeWithLocaleIdentifier:(NSString*)ident;
@end

typedef NS_ENUM(NSInteger, NSRelativeDateTimeFormatterUnitsStyle) {
    NSRelativeDateTimeFormatterUnitsStyleFull = 0,
    NSRelativeDateTimeFormatterUnitsStyleSpellOut,
    NSRelativeDateTimeFormatterUnitsStyleShort,
    NSRelativeDateTimeFormatterUnitsStyleAbbreviated
};
@interface NSFormatter : NSObject <NSCopying>
@end
@interface NSRelativeDateTimeFormatter : NSFormatter
@property NSRelativeDateTimeFormatterUnitsStyle unitsStyle;
@property(null_resettable, copy) NSLocale* locale;
- (NSString*)localizedStringForDate:(NSDate*)date relativeToDate:(NSDate*)referenceDate;
@end

NS_ASSUME_NONNULL_END
