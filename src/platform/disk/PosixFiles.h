// What every POSIX system does alike with single paths. Platform.h says what each one answers.
#pragma once

#include "Platform.h"

#include <cstddef>
#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace vellmoor::files {

/// The system's text for an errno value.
std::string reason(int error);
/// A failed Outcome with that text.
Outcome failure(int error);

/// A disk may hold any number: what lies centuries away becomes the nearest time that can be reckoned with.
TimePoint timePoint(const timespec& time);

/// Whether this process may do all of `rights` (R_OK, W_OK, X_OK) with what is at `path`.
bool hasRights(const Path& path, int rights);
bool isExecutable(const Path& path);
std::optional<std::string> contents(const Path& path, std::size_t limit);
/// Of an open file, from where it is read next.
std::optional<std::string> contents(int descriptor, std::size_t limit);
std::optional<std::string> start(const Path& path, std::size_t count);
std::optional<Path> linkTarget(const Path& path);
std::optional<Path> realPath(const Path& path);

Outcome createFile(const Path& path, std::string_view contents);
/// A symbolic link with `target` as its text.
Outcome createLink(const Path& path, const Path& target);
Outcome removeFile(const Path& path);

/// Writes all of it; false leaves errno.
bool writeAll(int descriptor, std::string_view bytes);

} // namespace vellmoor::files
