// What Vellmoor uses of CoreGraphics: bitmaps to draw icons and symbols into.
#pragma once
#include <CoreFoundation/CoreFoundation.h>

#ifndef CF_DEFINES_CG_TYPES // GNUstep's Foundation has them since 1.31
typedef struct CGPoint {
    CGFloat x;
    CGFloat y;
} CGPoint;
typedef struct CGSize {
    CGFloat width;
    CGFloat height;
} CGSize;
typedef struct CGRect {
    CGPoint origin;
    CGSize size;
} CGRect;
#endif

typedef struct CGColorSpace* CGColorSpaceRef;
typedef struct CGContext* CGContextRef;

typedef enum CGImageAlphaInfo : uint32_t {
    kCGImageAlphaPremultipliedLast = 1,
    kCGImageAlphaPremultipliedFirst = 2
} CGImageAlphaInfo;
typedef uint32_t CGBitmapInfo;

CF_EXPORT const CFStringRef kCGColorSpaceSRGB;
CF_EXPORT CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef name);
CF_EXPORT void CGColorSpaceRelease(CGColorSpaceRef space);
CF_EXPORT CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bitsPerComponent,
                                             size_t bytesPerRow, CGColorSpaceRef space, CGBitmapInfo bitmapInfo);
CF_EXPORT void CGContextRelease(CGContextRef c);
