// Small bridges between the records' types and Qt's.
#pragma once

#include "texts/L.h"

#include <QString>

#include <cstdint>
#include <string_view>

namespace vellmoor {

inline QString toQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The localised text, with its arguments filled in.
template <class... Arguments>
QString localised(std::string_view key, Arguments&&... arguments) {
    return toQt(L::tr(key, std::forward<Arguments>(arguments)...));
}

/// A number with its digits grouped: "12,345".
QString groupedText(std::int64_t number);

/// A fraction from 0 to 1 as "42%".
QString percentText(double fraction);

/// The text of a number of things, with its digits grouped; `one` is the text for exactly one.
QString countText(std::string_view many, std::string_view one, std::int64_t count);

} // namespace vellmoor
