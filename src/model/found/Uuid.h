#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>

namespace vellmoor {

/// A random identifier (RFC 4122, version 4) of a row, target or segment.
struct Uuid {
    std::array<std::uint8_t, 16> bytes{};

    /// A new one; safe on any thread.
    static Uuid random();
    /// The usual form, 8-4-4-4-12 lower-case hexadecimal digits.
    [[nodiscard]] std::string text() const;

    auto operator<=>(const Uuid&) const = default;
};

} // namespace vellmoor
