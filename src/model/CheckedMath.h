// Sums of byte and file counts: an overflow is a programming or input error that must not pass as a small number.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <type_traits>

namespace vellmoor {

/// Ends the program with one line on standard error.
[[noreturn]] inline void fatalOverflow() {
    std::fputs("vellmoor: arithmetic overflow\n", stderr);
    std::abort();
}

template <class Integer>
    requires std::is_integral_v<Integer>
constexpr Integer checkedAdd(Integer a, Integer b) {
    Integer sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        fatalOverflow();
    }
    return sum;
}

template <class Integer>
    requires std::is_integral_v<Integer>
constexpr Integer checkedSub(Integer a, Integer b) {
    Integer difference = 0;
    if (__builtin_sub_overflow(a, b, &difference)) {
        fatalOverflow();
    }
    return difference;
}

template <class Integer>
    requires std::is_integral_v<Integer>
constexpr Integer checkedMul(Integer a, Integer b) {
    Integer product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        fatalOverflow();
    }
    return product;
}

} // namespace vellmoor
