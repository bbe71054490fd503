// Small bridges between the records' types and Qt's.
#pragma once

#include "L.h"

#include <QString>

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

} // namespace vellmoor
