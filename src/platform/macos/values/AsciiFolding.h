// For bytes that are no UTF-8 and so no text to Foundation.
#pragma once

#include <string>
#include <string_view>

namespace vellmoor::mac {

/// The letters A to Z in lower case, every other byte as it is.
std::string asciiLower(std::string_view text);

/// The same with everything dropped that is neither one of these letters nor a digit.
std::string asciiLettersAndDigits(std::string_view text);

} // namespace vellmoor::mac
