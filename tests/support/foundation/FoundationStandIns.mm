#include "Played.h"

#include <unistd.h>

// LeakSanitizer asks for this by its name. Objects live to the end here: nothing counts who needs them.
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libobjc\nleak:libgnustep-base\n";
}

namespace vellmoor::test {

Stage& stage() {
    static Stage only;
    return only;
}

void resetStage() {
    stage() = Stage();
}

namespace played {

std::string textOf(NSString* text) {
    return text == nil ? std::string() : std::string(text.UTF8String);
}

NSString* objectOf(const std::string& text) {
    return [NSString stringWithUTF8String:text.c_str()];
}

std::filesystem::path pathOf(NSURL* address) {
    return address.path.UTF8String;
}

NSError* errorOf(NSInteger code, const std::string& sentence) {
    return [NSError errorWithDomain:NSCocoaErrorDomain
                               code:code
                           userInfo:@{NSLocalizedDescriptionKey : objectOf(sentence)}];
}

} // namespace played

namespace {

using namespace played;

const StagedVolume* volumeAt(const std::filesystem::path& path) {
    for (const StagedVolume& volume : stage().volumes) {
        if (volume.path == path) {
            return &volume;
        }
    }
    return nullptr;
}

id resourceValue(NSURL* address, NSString* key) {
    const std::filesystem::path path = pathOf(address);
    const auto number = [](const std::optional<std::int64_t>& bytes) {
        return bytes ? [NSNumber numberWithLongLong:*bytes] : nil;
    };
    if ([key isEqualToString:NSURLVolumeNameKey]) {
        const StagedVolume* const volume = volumeAt(path);
        return volume != nullptr && volume->name ? objectOf(*volume->name) : nil;
    }
    if ([key isEqualToString:NSURLVolumeTotalCapacityKey]) {
        return number(stage().totalBytes);
    }
    if ([key isEqualToString:NSURLVolumeAvailableCapacityForImportantUsageKey]) {
        return number(stage().importantBytes);
    }
    if ([key isEqualToString:NSURLVolumeAvailableCapacityKey]) {
        return number(stage().plainBytes);
    }
    if ([key isEqualToString:NSURLVolumeURLKey]) {
        for (const StagedVolume& volume : stage().volumes) {
            if (path.native().starts_with(volume.path.native())) {
                return [NSURL fileURLWithPath:objectOf(volume.path.native()) isDirectory:YES];
            }
        }
        return nil;
    }
    if ([key isEqualToString:NSURLVolumeUUIDStringKey]) {
        return stage().volumeNumber.empty() ? nil : objectOf(stage().volumeNumber);
    }
    if ([key isEqualToString:NSURLIsPackageKey]) {
        return [NSNumber numberWithBool:stage().packages.contains(path.extension().string())];
    }
    return nil;
}

/// "name 2.txt" where "name.txt" is taken, as macOS does.
std::filesystem::path freePlace(const std::filesystem::path& folder, const std::filesystem::path& name) {
    std::filesystem::path place = folder / name;
    for (int number = 2; std::filesystem::exists(std::filesystem::symlink_status(place)); ++number) {
        place = folder / (name.stem().string() + " " + std::to_string(number) + name.extension().string());
    }
    return place;
}

} // namespace
} // namespace vellmoor::test

using namespace vellmoor::test;
using namespace vellmoor::test::played;

NSURLResourceKey const StandInImportantUsageKey = @"NSURLVolumeAvailableCapacityForImportantUsageKey";

const void* StandInTrue(void) {
    return [NSNumber numberWithBool:YES];
}

@implementation NSURL (StandIn)
+ (NSURL*)fileURLWithFileSystemRepresentation:(const char*)path isDirectory:(BOOL)isDir relativeToURL:(NSURL*)baseURL {
    (void)baseURL;
    stage().addresses.push_back(std::string(isDir ? "folder " : "file ") + path);
    return [NSURL fileURLWithPath:[NSString stringWithUTF8String:path] isDirectory:isDir];
}
- (NSDictionary*)resourceValuesForKeys:(NSArray*)keys error:(NSError**)error {
    (void)error;
    NSMutableDictionary* values = [NSMutableDictionary dictionary];
    for (NSString* key in keys) {
        id value = resourceValue(self, key);
        if (value != nil) {
            [values setObject:value forKey:key];
        }
    }
    return values;
}
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
- (BOOL)getResourceValue:(id*)value forKey:(NSString*)key error:(NSError**)error {
    (void)error;
    *value = resourceValue(self, key);
    return YES;
}
#pragma clang diagnostic pop
@end

@implementation NSFileManager (StandIn)
- (NSURL*)homeDirectoryForCurrentUser {
    return [NSURL fileURLWithPath:objectOf(stage().home.string()) isDirectory:YES];
}
- (NSArray*)mountedVolumeURLsIncludingResourceValuesForKeys:(NSArray*)propertyKeys options:(NSUInteger)options {
    (void)propertyKeys;
    NSMutableArray* addresses = [NSMutableArray array];
    for (const StagedVolume& volume : stage().volumes) {
        if (!volume.isHidden || (options & NSVolumeEnumerationSkipHiddenVolumes) == 0) {
            [addresses addObject:[NSURL fileURLWithPath:objectOf(volume.path.string()) isDirectory:YES]];
        }
    }
    return addresses;
}
- (BOOL)trashItemAtURL:(NSURL*)url resultingItemURL:(NSURL**)outResultingURL error:(NSError**)error {
    if (stage().trash.empty()) {
        constexpr NSInteger featureUnsupported = 3328;
        *error = errorOf(featureUnsupported, stage().trashFailure);
        return NO;
    }
    if (stage().beforeTrash) {
        stage().beforeTrash();
    }
    const std::filesystem::path from = pathOf(url);
    const std::filesystem::path to = freePlace(stage().trash, from.filename());
    std::filesystem::rename(from, to);
    if (outResultingURL != nullptr) {
        *outResultingURL = [NSURL fileURLWithPath:objectOf(to.string()) isDirectory:NO];
    }
    return YES;
}
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wobjc-protocol-method-implementation"
- (BOOL)removeItemAtURL:(NSURL*)url error:(NSError**)error {
    // GNUstep asks no delegate.
    return self.delegate == nil ? [self removeItemAtPath:url.path error:error] : removeAsked(self, url, error);
}
#pragma clang diagnostic pop
@end

@implementation NSTask (StandIn)
- (void)setStandInExecutableURL:(NSURL*)address {
    self.launchPath = address.path;
}
- (NSURL*)executableURL {
    return [NSURL fileURLWithPath:self.launchPath];
}
- (BOOL)launchAndReturnError:(NSError**)error {
    if (::access(self.launchPath.UTF8String, X_OK) != 0) {
        *error = errorOf(4, "The file does not exist.");
        return NO;
    }
    [self launch];
    return YES;
}
@end

@implementation NSFileHandle (StandIn)
- (NSData*)readDataToEndOfFileAndReturnError:(NSError**)error {
    (void)error;
    return [self readDataToEndOfFile];
}
@end

@implementation NSString (StandIn)
- (BOOL)localizedCaseInsensitiveContainsString:(NSString*)str {
    return [self rangeOfString:str options:NSCaseInsensitiveSearch].location != NSNotFound;
}
@end

@implementation NSLocale (StandIn)
+ (NSLocale*)standInWithIdentifier:(NSString*)identifier {
    id itself = identifier;
    return itself;
}
@end

@implementation StandInRelativeDateTimeFormatter
- (void)setUnitsStyle:(NSInteger)unitsStyle {
    style = unitsStyle;
}
- (NSInteger)unitsStyle {
    return style;
}
- (void)setLocale:(NSLocale*)locale {
    language = [locale retain];
}
- (NSLocale*)locale {
    return language;
}
- (NSString*)localizedStringForDate:(NSDate*)date relativeToDate:(NSDate*)referenceDate {
    const double seconds = [date timeIntervalSince1970] - [referenceDate timeIntervalSince1970];
    id identifier = language;
    const std::string told =
        std::to_string(style) + " " + [identifier UTF8String] + " " + std::to_string(static_cast<long long>(seconds));
    stage().relativeDates.push_back(told);
    return objectOf(told);
}
@end
