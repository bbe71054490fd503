#include "TextTable.h"

#include "Characters.h"

#include <algorithm>

namespace vellmoor::terminal {
namespace {

constexpr std::string_view gap = "  ";

std::string padded(const std::string& text, std::size_t width, Side side) {
    const std::string blanks(width - std::min(width, cells(text)), ' ');
    return side == Side::Left ? text + blanks : blanks + text;
}

} // namespace

std::size_t cells(std::string_view text) {
    std::size_t sum = 0;
    for (const Character& character : charactersOf(text)) {
        sum += character.cells;
    }
    return sum;
}

std::string fitted(std::string_view text, std::size_t width) {
    const bool isCut = cells(text) > width;
    const std::size_t room = isCut ? width - std::min<std::size_t>(width, 1) : width;
    std::string kept;
    std::size_t used = 0;
    for (const Character& character : charactersOf(text)) {
        if (character.isControl) {
            continue;
        }
        used += character.cells;
        if (used > room) {
            break;
        }
        kept += character.bytes;
    }
    return isCut && width > 0 ? kept + "…" : kept;
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

} // namespace vellmoor::terminal
