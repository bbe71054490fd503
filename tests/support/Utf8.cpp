#include "Utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace vellmoor::test {
namespace {

struct Form {
    std::uint32_t mask; ///< of the bits in the first byte that tell this form
    std::uint32_t lead;
    std::size_t length;
    std::uint32_t smallest; ///< a smaller character has a shorter form
};

constexpr std::array forms{Form{0x80, 0x00, 1, 0}, Form{0xe0, 0xc0, 2, 0x80}, Form{0xf0, 0xe0, 3, 0x800},
                           Form{0xf8, 0xf0, 4, 0x10000}};

/// How many bytes the first character takes; 0 when there is none.
std::size_t characterLength(std::string_view text) {
    const auto byte = [&](std::size_t index) -> std::uint32_t { return static_cast<unsigned char>(text[index]); };
    const auto* form = std::ranges::find_if(
        forms, [&](const Form& candidate) { return (byte(0) & candidate.mask) == candidate.lead; });
    if (form == forms.end() || form->length > text.size()) {
        return 0;
    }
    std::uint32_t character = byte(0) & ~form->mask;
    for (std::size_t index = 1; index < form->length; ++index) {
        if ((byte(index) & 0xc0U) != 0x80U) {
            return 0;
        }
        character = character << 6U | (byte(index) & 0x3fU);
    }
    const bool isSurrogate = character >= 0xd800 && character <= 0xdfff;
    return character >= form->smallest && character <= 0x10ffff && !isSurrogate ? form->length : 0;
}

} // namespace

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        if (length == 0) {
            return false;
        }
        text.remove_prefix(length);
    }
    return true;
}

} // namespace vellmoor::test
