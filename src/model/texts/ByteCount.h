#pragma once

#include <cstdint>
#include <string>

namespace vellmoor {

/// `bytes` as every byte amount is shown: decimal units KB to TB, KB without decimals, MB with up to one, GB and TB
/// with up to two, trailing zeros dropped, the next unit when rounding reaches it; "0 KB" for nothing, and at least
/// "1 KB" for something.
std::string byteCountText(std::int64_t bytes);

/// The two halves of byteCountText, for places that set them apart: {"1.5", "GB"}.
struct ByteCountParts {
    std::string number;
    std::string unit;
};
ByteCountParts byteCountParts(std::int64_t bytes);

} // namespace vellmoor
