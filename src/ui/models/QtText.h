// Small bridges between the records' types and Qt's.
#pragma once

#include "CleanerModule.h"
#include "L.h"

#include <QString>

#include <filesystem>
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

/// `path` with the home folder shown as "~".
QString displayPath(const std::filesystem::path& path, const std::filesystem::path& home);

/// The symbol of a module in the sidebar and in its header.
QString moduleSymbol(CleanerModule module);
/// The headline over a module's page, localised.
QString moduleHeadline(CleanerModule module);
/// The sentence under the headline, localised.
QString moduleDescription(CleanerModule module);

} // namespace vellmoor
