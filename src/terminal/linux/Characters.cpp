#include "Characters.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdint>

namespace vellmoor::terminal {
namespace {

std::size_t cellsOf(UChar32 character) {
    const std::uint32_t category = U_GET_GC_MASK(character);
    if ((category & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CC_MASK | U_GC_CF_MASK)) != 0) {
        return 0;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE ? 2 : 1;
}

} // namespace

std::vector<Character> charactersOf(std::string_view text) {
    const auto units =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
    std::vector<Character> characters;
    for (std::int32_t index = 0; index < units.length(); index = units.moveIndex32(index, 1)) {
        const UChar32 unit = units.char32At(index);
        Character character{.bytes = {}, .cells = cellsOf(unit), .isControl = u_iscntrl(unit) != 0};
        icu::UnicodeString(unit).toUTF8String(character.bytes);
        characters.push_back(std::move(character));
    }
    return characters;
}

} // namespace vellmoor::terminal
