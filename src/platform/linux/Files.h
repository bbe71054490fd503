// Facts and small changes of single paths, as POSIX has them. Platform.h says what each one answers.
#pragma once

#include "Platform.h"

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vellmoor::files {

/// The system's text for an errno value.
std::string reason(int error);
/// A failed Outcome with that text.
Outcome failure(int error);

std::optional<FileFacts> facts(const Path& path);
/// A link counts itself, dangling or not.
bool existsItself(const Path& path);
/// A dangling link does not exist.
bool existsFollowed(const Path& path);
/// With the rights of this process; a folder must also be searchable.
bool isReadable(const Path& path);
bool isExecutable(const Path& path);
std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder);
std::optional<std::string> contents(const Path& path, std::size_t limit);
std::optional<Path> linkTarget(const Path& path);
std::optional<Path> realPath(const Path& path);
/// The links above `path` resolved, `path` itself not: where a move or removal would act.
std::optional<Path> realPlace(const Path& path);

Outcome moveItem(const Path& from, const Path& to);
Outcome createFolder(const Path& folder);
Outcome createFile(const Path& path, std::string_view contents);
Outcome removeFile(const Path& path);

/// Writes all of it; false leaves errno.
bool writeAll(int descriptor, std::string_view bytes);

std::optional<Capacity> capacity(const Path& path);

} // namespace vellmoor::files
