// Pictures and what they are drawn into.
#pragma once
#import <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

typedef CGFloat NSFontWeight;
FOUNDATION_EXPORT const NSFontWeight NSFontWeightRegular;

API_AVAILABLE(macos(11.0))
@interface NSImageSymbolConfiguration : NSObject <NSCopying, NSSecureCoding>
+ (instancetype)configurationWithPointSize:(CGFloat)pointSize weight:(NSFontWeight)weight;
@end

typedef NS_ENUM(NSUInteger, NSCompositingOperation) {
    NSCompositingOperationCopy = 1,
    NSCompositingOperationSourceOver = 2,
    NSCompositingOperationSourceIn = 3
};

@interface NSImage : NSObject <NSCopying, NSSecureCoding>
@property NSSize size;
// A property named template, which is a word of C++.
- (void)setTemplate:(BOOL)isTemplate;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description API_AVAILABLE(macos(11.0));
- (nullable NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration API_AVAILABLE(macos(11.0));
- (void)drawInRect:(NSRect)rect;
- (void)drawInRect:(NSRect)rect fromRect:(NSRect)fromRect operation:(NSCompositingOperation)op fraction:(CGFloat)delta;
@end

@interface NSGraphicsContext : NSObject
@property(class, nullable, strong) NSGraphicsContext* currentContext;
+ (NSGraphicsContext*)graphicsContextWithCGContext:(CGContextRef)graphicsPort flipped:(BOOL)initialFlippedState;
@end

NS_ASSUME_NONNULL_END
