// GNUstep's Foundation, and of Apple's what it lacks and Vellmoor calls. FoundationStandIns.mm implements the rest.
#pragma once
#pragma clang system_header

#define _NATIVE_OBJC_EXCEPTIONS 1
#define GNUSTEP 1
#define GNUSTEP_BASE_LIBRARY 1
#define GNU_RUNTIME 1
#define API_DEPRECATED(...)
#define NSURLVolumeAvailableCapacityForImportantUsageKey StandInImportantUsageKey
#define NSVolumeEnumerationSkipHiddenVolumes StandInSkipHiddenVolumes
#define NSRelativeDateTimeFormatter StandInRelativeDateTimeFormatter
#define NSRelativeDateTimeFormatterUnitsStyleShort StandInUnitsStyleShort

#include_next <Foundation/Foundation.h>

#define localeWithLocaleIdentifier standInWithIdentifier
// Later ones have these, in terms of what the stand-ins call.
#define executableURL standInExecutableURL
#define launchAndReturnError standInLaunchAndReturnError

#include <CoreGraphics/CoreGraphics.h>
#include <CoreServices/CoreServices.h>

#ifndef FOUNDATION_EXPORT
#define FOUNDATION_EXPORT extern "C"
#endif
#define NS_ASSUME_NONNULL_BEGIN
#define NS_ASSUME_NONNULL_END

#define NSFileWriteVolumeReadOnlyError 642

/// The one object that a property list has for true.
extern "C" const void* StandInTrue(void);
#define kCFBooleanTrue StandInTrue()

typedef NSString* NSURLResourceKey;
extern NSURLResourceKey const StandInImportantUsageKey;

@interface NSURL (StandIn)
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path isDirectory:(BOOL)isDir relativeToURL:(NSURL*)baseURL;
- (NSDictionary*)resourceValuesForKeys:(NSArray*)keys error:(NSError**)error;
@end

enum { StandInSkipHiddenVolumes = 1UL << 1 };
@interface NSFileManager (StandIn)
@property(readonly, copy) NSURL* homeDirectoryForCurrentUser;
- (NSArray*)mountedVolumeURLsIncludingResourceValuesForKeys:(NSArray*)propertyKeys options:(NSUInteger)options;
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)outResultingURL error:(NSError**)error;
@end

@interface NSTask (StandIn)
@property(copy) NSURL* executableURL;
- (BOOL)launchAndReturnError:(NSError**)error;
@end
@interface NSFileHandle (StandIn)
- (NSData*)readDataToEndOfFileAndReturnError:(NSError**)error;
@end

@interface NSString (StandIn)
- (BOOL)localizedCaseInsensitiveContainsString:(NSString*)str;
@end

/// It is its identifier, and nothing else is ever asked of it.
@interface NSLocale (StandIn)
+ (NSLocale*)standInWithIdentifier:(NSString*)identifier;
@end

enum { StandInUnitsStyleShort = 2 };
@interface StandInRelativeDateTimeFormatter : NSObject {
@public
    NSInteger style;
    NSLocale* language;
}
@property NSInteger unitsStyle;
@property(copy) NSLocale* locale;
- (NSString*)localizedStringForDate:(NSDate*)date relativeToDate:(NSDate*)referenceDate;
@end

#define NSAppleEventManager StandInAppleEventManager
@interface StandInAppleEventManager : NSObject
+ (StandInAppleEventManager*)sharedAppleEventManager;
- (void)setEventHandler:(id)handler
            andSelector:(SEL)selector
          forEventClass:(AEEventClass)eventClass
             andEventID:(AEEventID)eventID;
- (void)removeEventHandlerForEventClass:(AEEventClass)eventClass andEventID:(AEEventID)eventID;
@end
typedef NSString* NSNotificationName;
