// Facts and small changes of single paths, where Linux has its own way. Platform.h says what each one answers.
#pragma once

#include "disk/PosixFiles.h"

#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace vellmoor::files {

std::optional<FileFacts> facts(const Path& path);
/// A link counts itself, dangling or not. What may not be asked about (a closed folder above it) exists, too: only a
/// path that the system says is missing is missing.
bool existsItself(const Path& path);
/// A dangling link does not exist.
bool existsFollowed(const Path& path);
/// With the rights of this process; a folder must also be searchable.
bool isReadable(const Path& path);
std::expected<std::vector<FolderEntry>, std::string> entries(const Path& folder);

Outcome moveItem(const Path& from, const Path& to);
Outcome createFolder(const Path& folder);

std::optional<Capacity> capacity(const Path& path);

} // namespace vellmoor::files
