// Texts as the user's language has them, by Foundation. Platform.h says what each one answers. Bytes that are no
// UTF-8, which no Apple file system has in a name, are compared and folded as ASCII.
#pragma once

#include "Platform.h"

#include <string>
#include <string_view>

namespace vellmoor::mac {

std::string relativeDate(TimePoint date, TimePoint now, AppLanguage language);
int compareNames(std::string_view a, std::string_view b);
bool containsPhrase(std::string_view text, std::string_view phrase);
std::string lowerCase(std::string_view text);
std::string lettersAndDigits(std::string_view text);

} // namespace vellmoor::mac
