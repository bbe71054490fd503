#pragma once

#include <cstdint>
#include <string_view>

namespace vellmoor {

/// The named system colours that records carry; the window decides how each looks.
enum class Tint : std::uint8_t { cyan, teal, mint, green, orange, red, pink, purple, indigo, blue, gray };

constexpr std::string_view tintName(Tint tint) {
    switch (tint) {
    case Tint::cyan:
        return "cyan";
    case Tint::teal:
        return "teal";
    case Tint::mint:
        return "mint";
    case Tint::green:
        return "green";
    case Tint::orange:
        return "orange";
    case Tint::red:
        return "red";
    case Tint::pink:
        return "pink";
    case Tint::purple:
        return "purple";
    case Tint::indigo:
        return "indigo";
    case Tint::blue:
        return "blue";
    case Tint::gray:
        return "gray";
    }
    return "gray";
}

} // namespace vellmoor
