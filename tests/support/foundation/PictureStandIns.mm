// Pictures, and what they are drawn into.
#include "Played.h"

#include <cstring>

using namespace vellmoor::test;
using namespace vellmoor::test::played;

struct CGContext {
    std::size_t bytesPerRow;
    unsigned info;
};
struct CGColorSpace {};

const NSFontWeight NSFontWeightRegular = 0;
const CFStringRef kCGColorSpaceSRGB = nullptr;

CGColorSpaceRef CGColorSpaceCreateWithName(CFStringRef) {
    return new CGColorSpace;
}
void CGColorSpaceRelease(CGColorSpaceRef space) {
    delete space;
}
CGContextRef CGBitmapContextCreate(void* data, size_t width, size_t height, size_t bits, size_t bytesPerRow,
                                   CGColorSpaceRef, CGBitmapInfo info) {
    const bool isPossible = bits == 8 && bytesPerRow >= width * 4;
    if (isPossible) {
        std::memset(data, 0xff, bytesPerRow * height); // all of it must be there
    }
    return isPossible ? new CGContext{.bytesPerRow = bytesPerRow, .info = static_cast<unsigned>(info)} : nullptr;
}
void CGContextRelease(CGContextRef context) {
    delete context;
}

@implementation NSImageSymbolConfiguration
+ (instancetype)configurationWithPointSize:(CGFloat)points weight:(NSFontWeight)weight {
    NSImageSymbolConfiguration* made = [[NSImageSymbolConfiguration alloc] init];
    of(made).width = points;
    of(made).height = weight;
    return made;
}
@end

@implementation NSImage
+ (instancetype)imageWithSystemSymbolName:(NSString*)name accessibilityDescription:(NSString*)description {
    (void)description;
    if (!stage().symbols.contains(textOf(name))) {
        return nil;
    }
    NSImage* image = [[NSImage alloc] init];
    of(image).width = stage().imageWidth;
    of(image).height = stage().imageHeight;
    return image;
}
- (NSImage*)imageWithSymbolConfiguration:(NSImageSymbolConfiguration*)configuration {
    stage().calls.push_back("symbol of " + std::to_string(static_cast<int>(of(configuration).width)) + " points");
    return self;
}
- (void)setTemplate:(BOOL)isTemplate {
    stage().isTemplate = isTemplate;
}
- (NSSize)size {
    return NSMakeSize(of(self).width, of(self).height);
}
- (void)setSize:(NSSize)size {
    of(self).width = size.width;
    of(self).height = size.height;
}
- (void)drawInRect:(NSRect)rect fromRect:(NSRect)from operation:(NSCompositingOperation)op fraction:(CGFloat)fraction {
    const bool isPlain = from.size.width == 0 && op == NSCompositingOperationSourceOver && fraction == 1;
    auto* context = reinterpret_cast<CGContext*>(of(NSGraphicsContext.currentContext).target);
    if (isPlain && context != nullptr) {
        stage().drawings.push_back(
            {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height, context->bytesPerRow, context->info});
    }
}
@end

@implementation NSGraphicsContext
static NSGraphicsContext* currentGraphics = nil;
+ (NSGraphicsContext*)currentContext {
    return currentGraphics;
}
+ (void)setCurrentContext:(NSGraphicsContext*)context {
    currentGraphics = context;
}
+ (NSGraphicsContext*)graphicsContextWithCGContext:(CGContextRef)context flipped:(BOOL)isFlipped {
    (void)isFlipped;
    NSGraphicsContext* made = [[NSGraphicsContext alloc] init];
    of(made).target = reinterpret_cast<id>(context);
    return made;
}
@end
