#pragma once

#include "found/CleanerModule.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor {

/// What a start, or the desktop's menu, asks of the window besides showing itself. None of it removes anything.
struct Wish {
    enum class Deed : std::uint8_t {
        none,
        scan,            ///< starts a scan of the module
        offerEmptyTrash, ///< looks into the Trash, then opens the question that stands before emptying it
    };
    std::optional<CleanerModule> module; ///< to be shown; nothing: the one that is
    Deed deed = Deed::none;

    bool operator==(const Wish&) const = default;
};

/// A wish on the session bus: the name of an action and, for some, a module's raw value.
struct WishedAction {
    std::string name; ///< empty: only show the window
    std::string module;
};

WishedAction actionOf(const Wish& wish);
/// Nothing for an action that is not one of these; a module that does not exist is left out.
std::optional<Wish> wishOf(std::string_view action, std::string_view module);

} // namespace vellmoor
