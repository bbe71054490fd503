#include "values/AsciiFolding.h"

#include <algorithm>

namespace vellmoor::mac {
namespace {

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
}

} // namespace

std::string asciiLower(std::string_view text) {
    std::string result(text);
    std::ranges::transform(result, result.begin(), lower);
    return result;
}

std::string asciiLettersAndDigits(std::string_view text) {
    std::string result = asciiLower(text);
    std::erase_if(result, [](char c) { return !isLetterOrDigit(c); });
    return result;
}

} // namespace vellmoor::mac
