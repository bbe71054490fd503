#pragma once

#include "Platform.h"

#include <optional>
#include <string_view>

namespace vellmoor {

/// Parses a key file with GLib. `isUnit`: the syntax of systemd (lines continued by a backslash, ";" comments), and
/// values as written, since such a file has escapes of its own.
std::optional<KeyFile> parseKeyFile(std::string_view text, bool isUnit);

/// Platform::keyFile: a regular file of at most 1 MiB; a unit file is known by its name's ending. Of a desktop entry,
/// what is there in other languages than the program's is left out.
std::optional<KeyFile> readKeyFile(const Path& path);

} // namespace vellmoor
