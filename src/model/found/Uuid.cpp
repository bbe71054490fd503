#include "found/Uuid.h"

#include <cstring>
#include <random>

namespace vellmoor {

Uuid Uuid::random() {
    thread_local std::mt19937_64 generator = [] {
        std::random_device device;
        std::seed_seq seed{device(), device(), device(), device(), device(), device()};
        return std::mt19937_64(seed);
    }();
    const std::array<std::uint64_t, 2> words{generator(), generator()};
    Uuid id;
    std::memcpy(id.bytes.data(), words.data(), id.bytes.size());
    id.bytes[6] = static_cast<std::uint8_t>((id.bytes[6] & 0x0FU) | 0x40U);
    id.bytes[8] = static_cast<std::uint8_t>((id.bytes[8] & 0x3FU) | 0x80U);
    return id;
}

std::string Uuid::text() const {
    constexpr const char* digits = "0123456789abcdef";
    std::string out;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i == 4 || i == 6 || i == 8 || i == 10) {
            out += '-';
        }
        out += digits[bytes[i] >> 4U];
        out += digits[bytes[i] & 0x0FU];
    }
    return out;
}

} // namespace vellmoor
