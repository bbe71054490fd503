#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// What a row of a list is known by: a fingerprint of the texts that name it. It has 128 bits, so that no two different
/// rows of a list have the same one, and takes no memory of its own, of which paths of tens of thousands of rows take
/// much.
class RowKey {
public:
    RowKey() = default;
    RowKey(const std::string& text) : RowKey(RowKey().with(text)) {} // NOLINT(google-explicit-constructor): it names it
    /// The key of what is named by this one and a further text or number.
    [[nodiscard]] RowKey with(std::string_view text) const;
    [[nodiscard]] RowKey with(int number) const;
    [[nodiscard]] std::size_t hash() const { return first_; }

    auto operator<=>(const RowKey&) const = default;

private:
    [[nodiscard]] RowKey with(const void* bytes, std::size_t count) const;

    std::size_t first_ = 0x243f6a8885a308d3U; // any two numbers that differ
    std::size_t second_ = 0x13198a2e03707344U;
};

/// Where keys stand in a list; in two blocks of memory, since a list may have tens of thousands of rows.
class RowKeys {
public:
    /// For so many at most.
    explicit RowKeys(std::size_t most);
    /// False when the key is there already.
    bool add(const RowKey& key);
    /// How many were added before this one; -1: it was not added.
    [[nodiscard]] int find(const RowKey& key) const;

private:
    [[nodiscard]] std::size_t slotOf(const RowKey& key) const;

    std::vector<RowKey> keys_;
    std::vector<std::uint32_t> slots_; ///< positions in keys_, plus one
};

/// Makes keys different from those before them: things of the same name are told apart by their order.
class DistinctKeys {
public:
    explicit DistinctKeys(std::size_t most) : keys_(most) {}
    [[nodiscard]] RowKey next(const RowKey& key);

private:
    RowKeys keys_;
    std::vector<int> repeats_; ///< of the keys that came again, by their place; made when the first one does
};

} // namespace vellmoor
