// Application bundles, packages and launch agents, by Foundation: members of MacPlatform.
#include "MacPlatform.h"
#include "PropertyValue.h"
#include "values/FoundationValues.h"

namespace vellmoor {
namespace {

using mac::addressOf;
using mac::textOf;

constexpr std::size_t sizeLimit = 1 << 20;

/// As far as PropertyValue knows kinds: what is none of them keeps its place only.
PropertyValue valueOf(id object) {
    if ([object isKindOfClass:[NSString class]]) {
        NSString* string = object;
        return textOf(string);
    }
    if (object == (__bridge id)kCFBooleanTrue) { // identity, not equality: the number 1 equals the Boolean
        return true;
    }
    if (![object isKindOfClass:[NSArray class]]) {
        return {};
    }
    std::vector<PropertyValue> elements;
    NSArray* list = object;
    for (id element in list) {
        elements.push_back(valueOf(element));
    }
    return elements;
}

PropertyDictionary dictionaryOf(NSDictionary* list) {
    PropertyDictionary values;
    for (id key in list) {
        if ([key isKindOfClass:[NSString class]]) {
            NSString* name = key;
            values.emplace(textOf(name), valueOf([list objectForKey:name]));
        }
    }
    return values;
}

} // namespace

bool mac::isDeclaredPackage(const Path& folder) {
    @autoreleasepool {
        NSNumber* value = nil;
        return [addressOf(folder) getResourceValue:&value forKey:NSURLIsPackageKey error:nullptr] && value.boolValue;
    }
}

// The names are those of the user's language where the bundle has them. A bundle that changes on the disk keeps its
// names until this process ends.
std::optional<BundleInfo> MacPlatform::bundleInfo(const Path& bundle) const {
    @autoreleasepool {
        NSBundle* found = [NSBundle bundleWithURL:addressOf(bundle)];
        if (found == nil) {
            return std::nullopt;
        }
        PropertyDictionary names;
        for (NSString* key in @[ @"CFBundleDisplayName", @"CFBundleName" ]) {
            names.emplace(textOf(key), valueOf([found objectForInfoDictionaryKey:key]));
        }
        names.emplace("CFBundleIdentifier", valueOf(found.bundleIdentifier));
        return bundleInfoIn(names);
    }
}

// This program's bundle, or the folder of its executable when it runs without one.
Path MacPlatform::ownPath() const {
    @autoreleasepool {
        return mac::pathOf(NSBundle.mainBundle.bundleURL);
    }
}

// Reads XML, binary and old-style property lists of at most 1 MiB.
std::optional<LaunchAgent> MacPlatform::launchAgent(const Path& propertyList) const {
    // Not read by Foundation, which would wait at a FIFO for ever.
    const std::optional<std::string> bytes = fileContents(propertyList, sizeLimit);
    if (!bytes) {
        return std::nullopt;
    }
    @autoreleasepool {
        NSData* data = [NSData dataWithBytes:bytes->data() length:bytes->size()];
        id top = [NSPropertyListSerialization propertyListWithData:data
                                                           options:NSPropertyListImmutable
                                                            format:nullptr
                                                             error:nullptr];
        if (![top isKindOfClass:[NSDictionary class]]) {
            return std::nullopt;
        }
        NSDictionary* keys = top;
        return launchAgentIn(dictionaryOf(keys));
    }
}

} // namespace vellmoor
