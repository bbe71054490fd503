#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::terminal {

/// How many cells of a terminal a text takes: Chinese characters and emoji take two, combining marks none. Bytes
/// that are not UTF-8 take one each; line ends and other controls take none.
std::size_t cells(std::string_view text);

/// The text in at most `width` cells, cut with "…", controls left out.
std::string fitted(std::string_view text, std::size_t width);

enum class Side : std::uint8_t { Left, Right };

/// Rows of cells that are set under each other.
class TextTable {
public:
    struct Column {
        Side side = Side::Left;
        std::size_t widest = 40; ///< longer texts are cut
    };

    explicit TextTable(std::vector<Column> columns) : columns_(std::move(columns)) {}

    void add(std::vector<std::string> row);
    /// One text for each row, without blanks at its end. All rows of one table line up.
    [[nodiscard]] std::vector<std::string> lines() const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<std::string>> rows_;
};

} // namespace vellmoor::terminal
