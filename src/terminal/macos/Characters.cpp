#include "Characters.h"

#include <cwchar>
#include <xlocale.h>

namespace vellmoor::terminal {
namespace {

constexpr auto replacement = "\xef\xbf\xbd"; // U+FFFD

/// Whatever the user's language, texts here are UTF-8. nullptr would be the locale of the process.
locale_t utf8Locale() {
    static const locale_t locale = ::newlocale(LC_CTYPE_MASK, "en_US.UTF-8", nullptr);
    return locale;
}

} // namespace

std::vector<Character> charactersOf(std::string_view text) {
    std::vector<Character> characters;
    while (!text.empty()) {
        wchar_t unit = 0;
        std::mbstate_t state{};
        const std::size_t length = ::mbrtowc_l(&unit, text.data(), text.size(), &state, utf8Locale());
        if (length > text.size()) { // no character, or only its beginning
            characters.push_back({.bytes = replacement});
            text.remove_prefix(1);
            continue;
        }
        const std::size_t taken = length == 0 ? 1 : length; // 0: the zero byte
        const int cells = ::wcwidth_l(unit, utf8Locale());
        characters.push_back({.bytes = std::string(text.substr(0, taken)),
                              .cells = cells < 0 ? 0 : static_cast<std::size_t>(cells),
                              .isControl = ::iswcntrl_l(unit, utf8Locale()) != 0});
        text.remove_prefix(taken);
    }
    return characters;
}

} // namespace vellmoor::terminal
