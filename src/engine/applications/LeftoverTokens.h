// How the name of a file is compared with the names of an application. Identifiers may be plain words, and folders
// such as ~/.config are shared by everything: on such systems only a name that is the whole one counts.
#pragma once

#include "Platform.h"
#include "layouts/AppLayout.h"

#include <compare>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor {

/// By what the leftovers of an application are recognised.
struct LeftoverTokens {
    std::string flatpak;    ///< the ID of a Flatpak, as it is written; it is known by nothing else
    std::string identifier; ///< a dotted one, in lower case; empty: none
    /// The names, and an identifier without a dot, as letters and digits only; none has under 4 characters.
    std::vector<std::string> names;
};

/// `identifier` may be empty. Of `names`, which may be empty, too, each counts.
LeftoverTokens leftoverTokens(const Platform& platform, LeftoverNames kind, std::string_view identifier,
                              const std::vector<std::string>& names);
LeftoverTokens flatpakTokens(std::string_view identifier);

/// A file name in the forms in which it is compared.
struct LeftoverName {
    std::string written;
    std::string lower;
    /// As letters and digits only: whole, and without the extension; where names count as a whole, without versions
    /// and without the tails that may follow a name.
    std::vector<std::string> plain;
    bool ofFlatpaks = false; ///< lies in a folder where only the ID of a Flatpak counts
};

LeftoverName leftoverName(const Platform& platform, const AppLayout& layout, const std::string& name,
                          bool ofFlatpaks = false);

/// How well a name fits: by identifier before by name, a longer token before a shorter one.
struct LeftoverMatch {
    bool byIdentifier = false;
    std::size_t length = 0;

    auto operator<=>(const LeftoverMatch&) const = default;
};

/// Nothing when the name does not fit.
std::optional<LeftoverMatch> leftoverMatch(const Platform& platform, LeftoverNames kind, const LeftoverName& name,
                                           const LeftoverTokens& tokens);

} // namespace vellmoor
