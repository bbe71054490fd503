#include "PercentText.h"

#include <charconv>

namespace vellmoor {
namespace {

bool isUnreserved(char character) {
    constexpr std::string_view marks = "-_.!~*'()/";
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || marks.contains(character);
}

} // namespace

std::string percentEncoded(std::string_view bytes) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        if (isUnreserved(byte)) {
            text += byte;
        } else {
            const auto value = static_cast<unsigned char>(byte);
            text += {'%', digits[value >> 4U], digits[value & 15U]};
        }
    }
    return text;
}

std::string percentDecoded(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        unsigned char byte = 0;
        const std::string_view digits = text.substr(1, 2);
        const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
        if (text.front() == '%' && digits.size() == 2 && error == std::errc() && end == digits.data() + 2) {
            bytes += static_cast<char>(byte);
            text.remove_prefix(3);
        } else {
            bytes += text.front();
            text.remove_prefix(1);
        }
    }
    return bytes;
}

} // namespace vellmoor
