#include "MacTexts.h"

#include "FoundationValues.h"

#include <algorithm>
#include <chrono>

namespace vellmoor::mac {
namespace {

NSDate* dateOf(TimePoint time) {
    const std::chrono::duration<double> seconds = time.time_since_epoch();
    return [NSDate dateWithTimeIntervalSince1970:seconds.count()];
}

char asciiLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isAsciiLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

std::string asciiLower(std::string_view text) {
    std::string lower(text);
    std::ranges::transform(lower, lower.begin(), [](char c) { return asciiLower(c); });
    return lower;
}

} // namespace

std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language) {
    @autoreleasepool {
        // One per call: a formatter may not be shared between threads.
        NSRelativeDateTimeFormatter* formatter = [[NSRelativeDateTimeFormatter alloc] init];
        formatter.unitsStyle = NSRelativeDateTimeFormatterUnitsStyleShort;
        formatter.locale = [NSLocale localeWithLocaleIdentifier:language == AppLanguage::english ? @"en" : @"zh-Hans"];
        return textOf([formatter localizedStringForDate:dateOf(date) relativeToDate:dateOf(now)]);
    }
}

int compareNames(std::string_view a, std::string_view b) {
    @autoreleasepool {
        NSString* first = objectOf(a);
        NSString* second = objectOf(b);
        if (first == nil || second == nil) {
            return a.compare(b);
        }
        return static_cast<int>([first localizedCaseInsensitiveCompare:second]);
    }
}

bool containsPhrase(std::string_view text, std::string_view phrase) {
    @autoreleasepool {
        NSString* whole = objectOf(text);
        NSString* part = objectOf(phrase);
        return whole != nil && part.length > 0 && [whole localizedCaseInsensitiveContainsString:part];
    }
}

std::string lowerCase(std::string_view text) {
    @autoreleasepool {
        NSString* object = objectOf(text);
        return object == nil ? asciiLower(text) : textOf(object.lowercaseString);
    }
}

std::string lettersAndDigits(std::string_view text) {
    @autoreleasepool {
        NSString* object = objectOf(text);
        if (object == nil) {
            std::string kept = asciiLower(text);
            std::erase_if(kept, [](char c) { return !isAsciiLetterOrDigit(c); });
            return kept;
        }
        // Letters, marks and numbers, in Unicode's sense.
        NSCharacterSet* others = NSCharacterSet.alphanumericCharacterSet.invertedSet;
        NSArray<NSString*>* parts = [object.lowercaseString componentsSeparatedByCharactersInSet:others];
        return textOf([parts componentsJoinedByString:@""]);
    }
}

} // namespace vellmoor::mac
