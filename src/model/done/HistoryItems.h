// The targets of a clean of the past, as they are held.
#pragma once

#include "done/CleanupReport.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <ranges>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// One target of a clean of the past.
struct HistoryItem {
    std::size_t index = 0; ///< by which it is asked for
    std::string path;      ///< where it was
    std::string title;     ///< of its row, as it was shown
    std::int64_t bytes = 0;
    CleanupFate fate = CleanupFate::Untried;
    std::string place; ///< where it lies in a Trash now; empty: nowhere
    bool isPutBack = false;
    std::string reason; ///< localised then; why it was kept or failed

    bool operator==(const HistoryItem&) const = default;
};

/// A list of them that is made once and then read. There may be tens of thousands, for as long as the program runs:
/// their texts lie in one piece, and a folder, a title or a name that repeats itself lies there once. An item is put
/// together when it is asked for. Texts hold no NUL, as paths do not.
class HistoryItems {
public:
    HistoryItems() = default;
    HistoryItems(std::initializer_list<HistoryItem> items);

    void reserve(std::size_t count) { held_.reserve(count); }
    void push_back(const HistoryItem& item);

    [[nodiscard]] std::size_t size() const { return held_.size(); }
    [[nodiscard]] bool empty() const { return held_.empty(); }
    [[nodiscard]] HistoryItem operator[](std::size_t number) const;
    [[nodiscard]] auto all() const {
        return std::views::iota(std::size_t{0}, size()) |
               std::views::transform([this](std::size_t number) { return (*this)[number]; });
    }
    /// Of all texts together, as they are held.
    [[nodiscard]] std::size_t textBytes() const { return texts_.size(); }

    bool operator==(const HistoryItems&) const = default;

private:
    /// Where a text begins in `texts_`, which a NUL ends.
    using Place = std::size_t;
    /// A path in two: what ends with its last slash, and what follows it.
    struct Path {
        Place folder = 0;
        Place name = 0;

        bool operator==(const Path&) const = default;
    };
    struct Held {
        std::size_t index = 0;
        std::int64_t bytes = 0;
        Path path;
        Path place;
        Place title = 0;
        Place reason = 0;
        CleanupFate fate = CleanupFate::Untried;
        bool isPutBack = false;

        bool operator==(const Held&) const = default;
    };

    [[nodiscard]] std::string_view textAt(Place place) const { return texts_.c_str() + place; }
    [[nodiscard]] std::string textOf(const Path& path) const;
    /// Where `text` lies from now on: at `other`, if that is the same.
    Place hold(std::string_view text, Place other);
    Path holdPath(std::string_view text, Place folder, Place name);

    std::vector<Held> held_;
    std::string texts_; ///< the empty one first
};

} // namespace vellmoor
