#pragma once

#include "Wish.h"

#include <expected>
#include <span>
#include <string>

namespace vellmoor {

/// What the words after the program's name ask for.
struct CommandLine {
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
std::expected<CommandLine, std::string> readCommandLine(std::span<const char* const> words);

/// What --help prints. The manual page is made from it.
std::string helpText();

} // namespace vellmoor
