#include "texts/ByteCount.h"

#include <array>

namespace vellmoor {
namespace {

struct Unit {
    const char* name;
    std::uint64_t bytes;
    unsigned decimals;
};

constexpr std::array<Unit, 4> units{
    {{"KB", 1'000, 0}, {"MB", 1'000'000, 1}, {"GB", 1'000'000'000, 2}, {"TB", 1'000'000'000'000, 2}}};

std::uint64_t powerOfTen(unsigned exponent) {
    std::uint64_t power = 1;
    for (unsigned i = 0; i < exponent; ++i) {
        power *= 10;
    }
    return power;
}

/// `bytes` in steps of the unit's last shown decimal, rounded half up.
std::uint64_t steps(std::uint64_t bytes, const Unit& unit) {
    const std::uint64_t step = unit.bytes / powerOfTen(unit.decimals);
    return bytes / step + (bytes % step >= step / 2 ? 1 : 0);
}

std::string numberText(std::uint64_t stepCount, unsigned decimals) {
    const std::uint64_t scale = powerOfTen(decimals);
    std::string text = std::to_string(stepCount / scale);
    std::string fraction = decimals == 0 ? std::string() : std::to_string(scale + stepCount % scale).substr(1);
    while (!fraction.empty() && fraction.back() == '0') {
        fraction.pop_back();
    }
    return fraction.empty() ? text : text + "." + fraction;
}

} // namespace

ByteCountParts byteCountParts(std::int64_t bytes) {
    const bool negative = bytes < 0;
    const std::uint64_t amount = negative ? ~static_cast<std::uint64_t>(bytes) + 1 : static_cast<std::uint64_t>(bytes);
    for (const Unit& unit : units) {
        std::uint64_t count = steps(amount, unit);
        const bool last = unit.bytes == units.back().bytes;
        if (!last && count >= 1'000 * powerOfTen(unit.decimals)) {
            continue;
        }
        if (count == 0 && amount > 0) {
            count = 1;
        }
        return {(negative ? "-" : "") + numberText(count, unit.decimals), unit.name};
    }
    return {"0", units.front().name};
}

std::string byteCountText(std::int64_t bytes) {
    const ByteCountParts parts = byteCountParts(bytes);
    return parts.number + " " + parts.unit;
}

} // namespace vellmoor
