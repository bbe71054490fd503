// Texts as the user's language has them, by Foundation: members of MacPlatform. Bytes that are no UTF-8, which no Apple
// file system has in a name, are compared and folded as ASCII.
#include "MacPlatform.h"
#include "values/AsciiFolding.h"
#include "values/FoundationValues.h"

#include <chrono>

namespace vellmoor {
namespace {

using mac::objectOf;
using mac::textOf;

NSDate* dateOf(TimePoint time) {
    const std::chrono::duration<double> seconds = time.time_since_epoch();
    return [NSDate dateWithTimeIntervalSince1970:seconds.count()];
}

} // namespace

std::string MacPlatform::relativeDate(TimePoint date, TimePoint now, AppLanguage language) const {
    @autoreleasepool {
        // One per call: a formatter may not be shared between threads.
        NSRelativeDateTimeFormatter* formatter = [[NSRelativeDateTimeFormatter alloc] init];
        formatter.unitsStyle = NSRelativeDateTimeFormatterUnitsStyleShort;
        formatter.locale = [NSLocale localeWithLocaleIdentifier:language == AppLanguage::english ? @"en" : @"zh-Hans"];
        return textOf([formatter localizedStringForDate:dateOf(date) relativeToDate:dateOf(now)]);
    }
}

int MacPlatform::compareNames(std::string_view a, std::string_view b) const {
    @autoreleasepool {
        NSString* first = objectOf(a);
        NSString* second = objectOf(b);
        if (first == nil || second == nil) {
            return a.compare(b);
        }
        return static_cast<int>([first localizedCaseInsensitiveCompare:second]);
    }
}

bool MacPlatform::containsPhrase(std::string_view text, std::string_view phrase) const {
    @autoreleasepool {
        NSString* whole = objectOf(text);
        NSString* part = objectOf(phrase);
        return whole != nil && part.length > 0 && [whole localizedCaseInsensitiveContainsString:part];
    }
}

std::string MacPlatform::lowerCase(std::string_view text) const {
    @autoreleasepool {
        NSString* object = objectOf(text);
        return object == nil ? mac::asciiLower(text) : textOf(object.lowercaseString);
    }
}

std::string MacPlatform::lettersAndDigits(std::string_view text) const {
    @autoreleasepool {
        NSString* object = objectOf(text);
        if (object == nil) {
            return mac::asciiLettersAndDigits(text);
        }
        // Letters, marks and numbers, in Unicode's sense.
        NSCharacterSet* others = [NSCharacterSet.alphanumericCharacterSet invertedSet];
        NSArray<NSString*>* parts = [object.lowercaseString componentsSeparatedByCharactersInSet:others];
        return textOf([parts componentsJoinedByString:@""]);
    }
}

} // namespace vellmoor
