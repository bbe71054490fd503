#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::terminal {

/// One character of a text, as a terminal shows it.
struct Character {
    std::string bytes;
    std::size_t cells = 1;  ///< columns: none for a combining mark, two for a Chinese character
    bool isControl = false; ///< it would move the cursor, or nothing visible
};

/// What is no UTF-8 becomes U+FFFD.
std::vector<Character> charactersOf(std::string_view text);

} // namespace vellmoor::terminal
