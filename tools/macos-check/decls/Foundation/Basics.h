// Macros, numbers and plain structures of Foundation.
#pragma once
#include <CoreFoundation/CoreFoundation.h>
#include <CoreGraphics/CoreGraphics.h>
#include <CoreServices/CoreServices.h>
#include <dispatch/dispatch.h>
#include <objc/NSObjCRuntime.h>
#import <objc/NSObject.h>
#include <objc/objc.h>

#define FOUNDATION_EXPORT CF_EXPORT
#define NS_ASSUME_NONNULL_BEGIN _Pragma("clang assume_nonnull begin")
#define NS_ASSUME_NONNULL_END _Pragma("clang assume_nonnull end")
#define NS_RETURNS_INNER_POINTER __attribute__((objc_returns_inner_pointer))
#define NS_ENUM(TYPE, NAME)                                                                                            \
    enum __attribute__((enum_extensibility(open))) NAME : TYPE NAME;                                                   \
    enum NAME : TYPE
#define NS_CLOSED_ENUM(TYPE, NAME)                                                                                     \
    enum __attribute__((enum_extensibility(closed))) NAME : TYPE NAME;                                                 \
    enum NAME : TYPE
#define NS_OPTIONS(TYPE, NAME)                                                                                         \
    TYPE NAME;                                                                                                         \
    enum __attribute__((flag_enum, enum_extensibility(open))) : TYPE

typedef double NSTimeInterval;
typedef CGPoint NSPoint;
typedef CGSize NSSize;
typedef CGRect NSRect;
typedef NS_CLOSED_ENUM(NSInteger, NSComparisonResult) { NSOrderedAscending = -1L, NSOrderedSame, NSOrderedDescending };

FOUNDATION_EXPORT const NSRect NSZeroRect;

static inline NSPoint NSMakePoint(CGFloat x, CGFloat y) {
    NSPoint point = {x, y};
    return point;
}
static inline NSSize NSMakeSize(CGFloat w, CGFloat h) {
    NSSize size = {w, h};
    return size;
}
static inline NSRect NSMakeRect(CGFloat x, CGFloat y, CGFloat w, CGFloat h) {
    NSRect rect = {{x, y}, {w, h}};
    return rect;
}
static inline CGFloat NSHeight(NSRect aRect) {
    return aRect.size.height;
}

@class NSAppleEventDescriptor, NSData, NSDate, NSError, NSLocale, NSString, NSURL;
@class NSArray<__covariant ObjectType>;
@class NSDictionary<__covariant KeyType, __covariant ObjectType>;

NS_ASSUME_NONNULL_BEGIN
@protocol NSCopying
@end
@protocol NSFastEnumeration
@end
@protocol NSSecureCoding
@end

FOUNDATION_EXPORT SEL NSSelectorFromString(NSString* aSelectorName);
NS_ASSUME_NONNULL_END
