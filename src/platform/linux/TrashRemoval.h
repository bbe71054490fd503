#pragma once

#include "Platform.h"

#include <string>
#include <string_view>

namespace vellmoor {

/// Platform::removeFromTrash after the Trash specification 1.0: the item, then its .trashinfo, then its line in
/// directorysizes. A failed item keeps its note, so that what is left can be restored. A Trash whose contents lie in
/// the Trash folder itself (macOS) has no notes.
Outcome removeFromTrash(const Path& path, const TrashFolder& trash);

/// The directorysizes text without the lines of the folder `name`.
std::string withoutDirectorySize(std::string_view text, std::string_view name);

} // namespace vellmoor
