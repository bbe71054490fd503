#include "MacBundles.h"

#include "FoundationValues.h"

#include <array>
#include <sys/attr.h>
#include <unistd.h>

namespace vellmoor::mac {
namespace {

constexpr std::size_t sizeLimit = 1 << 20;

/// "hasBundle" of the Finder flags, which are two bytes, high one first, at offset 8 of the Finder information.
constexpr std::size_t flagsOffset = 8;
constexpr unsigned char hasBundleInHighByte = 0x20;

struct FinderInformation {
    std::uint32_t length;
    std::array<unsigned char, 32> bytes;
};

NSDictionary* dictionaryIn(const Path& propertyList) {
    // Not read by Foundation, which would wait at a FIFO for ever.
    const std::optional<std::string> bytes = fileContents(propertyList, sizeLimit);
    if (!bytes) {
        return nil;
    }
    NSData* data = [NSData dataWithBytes:bytes->data() length:bytes->size()];
    id top = [NSPropertyListSerialization propertyListWithData:data
                                                       options:NSPropertyListImmutable
                                                        format:nullptr
                                                         error:nullptr];
    return [top isKindOfClass:[NSDictionary class]] ? top : nil;
}

std::vector<std::string> stringsIn(id object) {
    std::vector<std::string> strings;
    if (![object isKindOfClass:[NSArray class]]) {
        return strings;
    }
    NSArray* list = object;
    for (id element in list) {
        std::optional<std::string> string = stringIn(element);
        if (!string) {
            return {};
        }
        strings.push_back(*std::move(string));
    }
    return strings;
}

} // namespace

bool hasBundleMark(const Path& folder) {
    attrlist wanted{};
    wanted.bitmapcount = ATTR_BIT_MAP_COUNT;
    wanted.commonattr = ATTR_CMN_FNDRINFO;
    FinderInformation found{};
    return ::getattrlist(folder.c_str(), &wanted, &found, sizeof found, FSOPT_NOFOLLOW) == 0 &&
           found.length == sizeof found && (found.bytes[flagsOffset] & hasBundleInHighByte) != 0;
}

bool isDeclaredPackage(const Path& folder) {
    @autoreleasepool {
        NSNumber* value = nil;
        return [addressOf(folder) getResourceValue:&value forKey:NSURLIsPackageKey error:nullptr] && value.boolValue;
    }
}

std::optional<BundleInfo> bundleInfo(const Path& path) {
    @autoreleasepool {
        NSBundle* bundle = [NSBundle bundleWithURL:addressOf(path)];
        if (bundle == nil) {
            return std::nullopt;
        }
        return BundleInfo{.identifier = stringIn(bundle.bundleIdentifier),
                          .displayName = stringIn([bundle objectForInfoDictionaryKey:@"CFBundleDisplayName"]),
                          .name = stringIn([bundle objectForInfoDictionaryKey:@"CFBundleName"])};
    }
}

Path ownPath() {
    @autoreleasepool {
        return pathOf(NSBundle.mainBundle.bundleURL);
    }
}

std::optional<LaunchAgent> launchAgent(const Path& propertyList) {
    @autoreleasepool {
        NSDictionary* keys = dictionaryIn(propertyList);
        if (keys == nil) {
            return std::nullopt;
        }
        // Identity, not equality: the number 1 equals the Boolean.
        const bool runs = [keys objectForKey:@"RunAtLoad"] == (__bridge id)kCFBooleanTrue;
        return LaunchAgent{.label = stringIn([keys objectForKey:@"Label"]),
                           .program = stringIn([keys objectForKey:@"Program"]),
                           .arguments = stringsIn([keys objectForKey:@"ProgramArguments"]),
                           .hasKeepAlive = [keys objectForKey:@"KeepAlive"] != nil,
                           .runAtLoad = runs};
    }
}

} // namespace vellmoor::mac
