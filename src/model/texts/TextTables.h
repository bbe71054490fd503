// The fixed tables behind L; only L and the tests read them.
#pragma once

#include <span>
#include <string_view>

namespace vellmoor {

struct TextEntry {
    std::string_view chinese; ///< the key
    std::string_view english;
};

struct FurtherTextEntry {
    std::string_view chinese;
    std::string_view english;
    std::string_view replaces; ///< the key of the main table that this text stands in for; empty: a text of its own
};

std::span<const TextEntry> englishTexts();
std::span<const FurtherTextEntry> furtherTexts();

} // namespace vellmoor
