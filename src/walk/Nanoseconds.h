#pragma once

#include <cstdint>
#include <ctime>
#include <limits>

namespace vellmoor::walk {

/// Since 1970. A disk may hold any number: what does not fit becomes the earliest or latest time that does.
inline std::int64_t nanoseconds(const timespec& time) {
    std::int64_t result = 0;
    if (__builtin_mul_overflow(std::int64_t{time.tv_sec}, std::int64_t{1'000'000'000}, &result) ||
        __builtin_add_overflow(result, std::int64_t{time.tv_nsec}, &result)) {
        return time.tv_sec < 0 ? std::numeric_limits<std::int64_t>::min() : std::numeric_limits<std::int64_t>::max();
    }
    return result;
}

} // namespace vellmoor::walk
