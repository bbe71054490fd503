#include "TextTable.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>

namespace vellmoor::probe {
namespace {

constexpr std::string_view gap = "  ";

icu::UnicodeString unicode(std::string_view text) {
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<std::int32_t>(text.size())));
}

std::size_t cellsOf(UChar32 character) {
    const std::uint32_t category = U_GET_GC_MASK(character);
    if ((category & (U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CC_MASK | U_GC_CF_MASK)) != 0) {
        return 0;
    }
    const int width = u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_FULLWIDTH || width == U_EA_WIDE ? 2 : 1;
}

std::string padded(const std::string& text, std::size_t width, Side side) {
    const std::string blanks(width - std::min(width, cells(text)), ' ');
    return side == Side::Left ? text + blanks : blanks + text;
}

} // namespace

std::size_t cells(std::string_view text) {
    const icu::UnicodeString characters = unicode(text);
    std::size_t sum = 0;
    for (std::int32_t index = 0; index < characters.length(); index = characters.moveIndex32(index, 1)) {
        sum += cellsOf(characters.char32At(index));
    }
    return sum;
}

std::string fitted(std::string_view text, std::size_t width) {
    const icu::UnicodeString characters = unicode(text);
    const bool isCut = cells(text) > width;
    const std::size_t room = isCut ? width - std::min<std::size_t>(width, 1) : width;
    icu::UnicodeString kept;
    std::size_t used = 0;
    for (std::int32_t index = 0; index < characters.length(); index = characters.moveIndex32(index, 1)) {
        const UChar32 character = characters.char32At(index);
        if (u_iscntrl(character) != 0) {
            continue;
        }
        used += cellsOf(character);
        if (used > room) {
            break;
        }
        kept.append(character);
    }
    std::string out;
    kept.toUTF8String(out);
    return isCut && width > 0 ? out + "…" : out;
}

void TextTable::add(std::vector<std::string> row) {
    row.resize(columns_.size());
    for (std::size_t column = 0; column < row.size(); ++column) {
        row[column] = fitted(row[column], columns_[column].widest);
    }
    rows_.push_back(std::move(row));
}

std::vector<std::string> TextTable::lines() const {
    std::vector<std::size_t> widths(columns_.size());
    for (const auto& row : rows_) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], cells(row[column]));
        }
    }
    std::vector<std::string> lines;
    for (const auto& row : rows_) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += (column == 0 ? "" : std::string(gap)) + padded(row[column], widths[column], columns_[column].side);
        }
        line.erase(line.find_last_not_of(' ') + 1);
        lines.push_back(std::move(line));
    }
    return lines;
}

} // namespace vellmoor::probe
