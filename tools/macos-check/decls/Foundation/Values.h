// Texts, numbers, dates, data, errors.
#pragma once
#import <Foundation/Basics.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSUTF8StringEncoding = 4 };

@interface NSCharacterSet : NSObject <NSCopying, NSSecureCoding>
@property(class, readonly, copy) NSCharacterSet* alphanumericCharacterSet;
@property(readonly, copy) NSCharacterSet* invertedSet;
@end

@interface NSString : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(nullable, readonly) const char* UTF8String NS_RETURNS_INNER_POINTER;
@property(readonly, copy) NSString* lowercaseString;
- (nullable instancetype)initWithBytes:(const void*)bytes length:(NSUInteger)len encoding:(NSStringEncoding)encoding;
- (nullable instancetype)initWithData:(NSData*)data encoding:(NSStringEncoding)encoding;
- (BOOL)isEqualToString:(NSString*)aString;
- (NSComparisonResult)localizedCaseInsensitiveCompare:(NSString*)string;
- (BOOL)localizedCaseInsensitiveContainsString:(NSString*)str;
- (NSArray<NSString*>*)componentsSeparatedByCharactersInSet:(NSCharacterSet*)separator;
@end
// The class that the compiler makes @"..." of.
@interface NSConstantString : NSString {
@public
    char* _bytes;
    unsigned int _length;
}
@end

@interface NSValue : NSObject <NSCopying, NSSecureCoding>
@end
@interface NSNumber : NSValue
@property(readonly) BOOL boolValue;
@property(readonly) long long longLongValue;
@end

@interface NSDate : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)dateWithTimeIntervalSince1970:(NSTimeInterval)secs;
@end

typedef NSString* NSErrorDomain;
FOUNDATION_EXPORT NSErrorDomain const NSCocoaErrorDomain;
enum : NSInteger { NSFileWriteOutOfSpaceError = 640, NSFileWriteVolumeReadOnlyError = 642 };
@interface NSError : NSObject <NSCopying, NSSecureCoding>
@property(readonly, copy) NSErrorDomain domain;
@property(readonly) NSInteger code;
@property(readonly, copy) NSString* localizedDescription;
@end
@interface NSException : NSObject <NSCopying, NSSecureCoding>
@property(nullable, readonly, copy) NSString* reason;
@end

@interface NSData : NSObject <NSCopying, NSSecureCoding>
@property(readonly) NSUInteger length;
@property(nullable, readonly) const void* bytes NS_RETURNS_INNER_POINTER;
+ (instancetype)dataWithBytes:(nullable const void*)bytes length:(NSUInteger)length;
@end

NS_ASSUME_NONNULL_END
