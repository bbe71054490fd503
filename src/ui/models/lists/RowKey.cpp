#include "RowKey.h"

#include <QHashFunctions>

#include <algorithm>
#include <bit>

namespace vellmoor {

RowKey RowKey::with(std::string_view text) const {
    return with(text.data(), text.size());
}

RowKey RowKey::with(int number) const {
    return with(&number, sizeof number);
}

RowKey RowKey::with(const void* bytes, std::size_t count) const {
    constexpr std::size_t odd = 0x9e3779b97f4a7c15U; // an empty text changes the key, too
    RowKey key;
    key.first_ = qHashBits(bytes, count, first_ + odd * (count + 1));
    key.second_ = qHashBits(bytes, count, second_ ^ (odd * (count + 2)));
    return key;
}

RowKeys::RowKeys(std::size_t most) : slots_(std::bit_ceil(2 * most + 2)) {
    keys_.reserve(most);
}

bool RowKeys::add(const RowKey& key) {
    std::uint32_t& slot = slots_[slotOf(key)];
    if (slot != 0) {
        return false;
    }
    keys_.push_back(key);
    slot = static_cast<std::uint32_t>(keys_.size());
    return true;
}

int RowKeys::find(const RowKey& key) const {
    return static_cast<int>(slots_[slotOf(key)]) - 1;
}

/// The key's own, or the free one where it would be put.
std::size_t RowKeys::slotOf(const RowKey& key) const {
    std::size_t slot = key.hash() & (slots_.size() - 1);
    while (slots_[slot] != 0 && keys_[slots_[slot] - 1] != key) {
        slot = (slot + 1) & (slots_.size() - 1);
    }
    return slot;
}

RowKey DistinctKeys::next(const RowKey& key) {
    if (keys_.add(key)) {
        return key;
    }
    const auto place = static_cast<std::size_t>(keys_.find(key));
    repeats_.resize(std::max(repeats_.size(), place + 1));
    return key.with(++repeats_[place]);
}

} // namespace vellmoor
