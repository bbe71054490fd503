// Between C++ values and Foundation's objects. For .mm files only, inside an autorelease pool: values leave such a
// file, objects never do.
#pragma once

#include "MacLog.h"
#include "Platform.h"
#include "disk/MacPaths.h"
#include "disk/PosixFiles.h"

#import <Foundation/Foundation.h>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor::mac {

/// nil for bytes that are no UTF-8.
inline NSString* objectOf(std::string_view text) {
    if (text.empty()) {
        return @"";
    }
    return [[NSString alloc] initWithBytes:text.data() length:text.size() encoding:NSUTF8StringEncoding];
}

/// Empty for nil.
inline std::string textOf(NSString* object) {
    const char* text = object.UTF8String;
    return text == nullptr ? std::string() : std::string(text);
}

/// What came out of a property list may be anything: only a string counts.
inline std::optional<std::string> stringIn(id object) {
    if (![object isKindOfClass:[NSString class]]) {
        return std::nullopt;
    }
    NSString* string = object;
    return textOf(string);
}

/// From the bytes, so that a name that is no UTF-8 reaches the disk. Never with a slash at its end, which would make
/// a link be followed.
inline NSURL* addressOf(const Path& path) {
    return [NSURL fileURLWithFileSystemRepresentation:path.c_str() isDirectory:NO relativeToURL:nil];
}

/// By its text: the "file system representation" takes accents apart, and then differs from the names on the disk.
inline Path pathOf(NSURL* address) {
    return address == nil ? Path() : standardized(textOf(address.path));
}

/// A failure in the system's words; they are a whole sentence with the file's name. `what` is for the log.
inline Outcome failureOf(NSError* error, LogCategory category, const char* what) {
    const std::string text = textOf(error.localizedDescription);
    logFailure(category, (what + (" in " + textOf(error.domain))).c_str(), error.code, text);
    return std::unexpected(text.empty() ? files::reason(EIO) : text);
}

} // namespace vellmoor::mac
