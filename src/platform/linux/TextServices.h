// Text services from ICU. Bytes that are not UTF-8 count as U+FFFD.
#pragma once

#include "Platform.h"

#include <string>
#include <string_view>

namespace vellmoor::texts {

bool isUtf8(std::string_view text);

/// "2 days ago", "2天前": the largest unit (year, month, week, day, hour, minute, second) of which there is at least
/// one, in the short style, counted by the local calendar.
std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language);

/// By the rules of the user's locale; a plain C locale sorts as Unicode's root.
int compareNames(std::string_view a, std::string_view b);
/// No text holds the empty phrase.
bool containsPhrase(std::string_view text, std::string_view phrase);
std::string lowerCase(std::string_view text);
std::string lettersAndDigits(std::string_view text);

} // namespace vellmoor::texts
