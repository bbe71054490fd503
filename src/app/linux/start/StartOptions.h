#pragma once

#include "start/Wish.h"

#include <expected>
#include <span>
#include <string>

namespace vellmoor {

/// What the words after the program's name ask for.
struct StartOptions {
    enum class Kind : std::uint8_t {
        window,
        service, ///< started by the session bus: the window waits until somebody asks for it
        help,
        version,
    };
    Kind kind = Kind::window;
    Wish wish; ///< of a window
};

/// `words` without the program's name; the fault as one line, without that name.
std::expected<StartOptions, std::string> readStartOptions(std::span<const char* const> words);

/// What --help prints. The manual page is made from it.
std::string helpText();

} // namespace vellmoor
