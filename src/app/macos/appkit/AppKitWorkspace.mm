#include "appkit/AppKitWorkspace.h"

#include "values/FoundationValues.h"

#import <AppKit/AppKit.h>
#include <memory>

namespace vellmoor {
namespace {

/// A symbol of this many points has a height of about 100.
constexpr double pointsPerHundredPixels = 78;

struct ReleaseContext {
    void operator()(CGContextRef context) const { CGContextRelease(context); }
};
struct ReleaseSpace {
    void operator()(CGColorSpaceRef space) const { CGColorSpaceRelease(space); }
};
template <class Reference, class Release>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, Release>;

/// A square picture with `image` in its middle, in its own size or as much smaller as it must be.
Picture drawn(NSImage* image, int pixels) {
    const auto place = image == nil ? std::nullopt : placedInSquare(image.size.width, image.size.height, pixels);
    if (!place) {
        return {};
    }
    const auto side = static_cast<std::size_t>(pixels);
    Picture picture{.width = pixels, .height = pixels, .bytes = std::vector<std::uint8_t>(side * side * 4)};
    const Owned<CGColorSpaceRef, ReleaseSpace> space(CGColorSpaceCreateWithName(kCGColorSpaceSRGB));
    const Owned<CGContextRef, ReleaseContext> context(
        CGBitmapContextCreate(picture.bytes.data(), side, side, 8, side * 4, space.get(),
                              static_cast<CGBitmapInfo>(kCGImageAlphaPremultipliedLast)));
    if (!context) {
        return {};
    }
    NSGraphicsContext* before = NSGraphicsContext.currentContext;
    NSGraphicsContext.currentContext = [NSGraphicsContext graphicsContextWithCGContext:context.get() flipped:NO];
    [image drawInRect:NSMakeRect(place->x, place->y, place->width, place->height)
             fromRect:NSZeroRect
            operation:NSCompositingOperationSourceOver
             fraction:1.0];
    NSGraphicsContext.currentContext = before;
    return picture;
}

} // namespace

bool AppKitWorkspace::openAddress(const std::string& address) {
    @autoreleasepool {
        NSString* text = mac::objectOf(address);
        NSURL* url = text == nil ? nil : [NSURL URLWithString:text];
        return url != nil && [NSWorkspace.sharedWorkspace openURL:url];
    }
}

bool AppKitWorkspace::openFile(const std::filesystem::path& path) {
    @autoreleasepool {
        return [NSWorkspace.sharedWorkspace openURL:mac::addressOf(path)];
    }
}

void AppKitWorkspace::reveal(const std::filesystem::path& path) {
    @autoreleasepool {
        [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ mac::addressOf(path) ]];
    }
}

Picture AppKitWorkspace::fileIcon(const std::filesystem::path& path, int pixels) {
    @autoreleasepool {
        NSString* name = mac::objectOf(path.native());
        if (name == nil) {
            return {};
        }
        NSImage* icon = [NSWorkspace.sharedWorkspace iconForFile:name];
        icon.size = NSMakeSize(pixels, pixels); // else it is drawn in its small size
        return drawn(icon, pixels);
    }
}

Picture AppKitWorkspace::symbol(const std::string& name, int pixels) {
    @autoreleasepool {
        NSString* text = mac::objectOf(name);
        NSImage* image = text == nil ? nil : [NSImage imageWithSystemSymbolName:text accessibilityDescription:nil];
        if (image == nil) {
            return {};
        }
        NSImageSymbolConfiguration* size =
            [NSImageSymbolConfiguration configurationWithPointSize:pixels * pointsPerHundredPixels / 100
                                                            weight:NSFontWeightRegular];
        return drawn([image imageWithSymbolConfiguration:size], pixels);
    }
}

bool AppKitWorkspace::reducesMotion() const {
    @autoreleasepool {
        return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion;
    }
}

bool AppKitWorkspace::increasesContrast() const {
    @autoreleasepool {
        return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldIncreaseContrast;
    }
}

} // namespace vellmoor
