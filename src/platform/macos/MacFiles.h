// Facts and small changes of single paths on macOS, in plain POSIX. Platform.h says what each one answers. None of
// them makes the system fetch a file or folder whose content lies in a cloud only: such a call fails instead.
#pragma once

#include "Platform.h"

#include <cstddef>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::mac {

/// The system's text for an errno value.
std::string reason(int error);

std::optional<FileFacts> facts(const Path& path);
/// A dangling link does not exist, nor does anything in a folder that privacy protection closes.
bool exists(const Path& path);
/// A folder is opened to find out, since privacy protection answers there and nowhere else.
bool isReadable(const Path& path);
bool isExecutable(const Path& path);
/// Names that begin with "._", the halves of files on foreign volumes, are left out. Hidden is what Finder hides.
std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder);
std::optional<std::string> fileContents(const Path& path, std::size_t limit);
std::optional<std::string> fileStart(const Path& path, std::size_t count);
std::optional<Path> linkTarget(const Path& path);
/// "//", "." and a slash at the end dropped, ".." followed through the file system, and "/private" dropped from
/// "/private/tmp/x" and its like when the rest exists. Other links stay.
Path standardized(const Path& path);
/// The same for a system where `exists` says what does.
Path standardized(const Path& path, const std::function<bool(const Path&)>& exists);
std::optional<Path> realPath(const Path& path);
/// `real` has no links above it.
bool isMountPoint(const Path& real);

/// Leaves no half-written file behind.
Outcome createFile(const Path& path, std::string_view contents);
Outcome createLink(const Path& path, const Path& target);
Outcome removeFile(const Path& path);

} // namespace vellmoor::mac
