// Moves and removals, by Foundation, whose sentences the user reads. Platform.h says what each one answers.
#pragma once

#include "Platform.h"

namespace vellmoor::mac {

/// Into the Trash of the item's own volume. Fails where the volume has none, which many network shares do.
Outcome moveToTrash(const Path& path);
/// Refused unless `path` really lies below the contents, whatever links lie on the way. Links inside are removed,
/// never followed; the first thing that cannot be removed ends it.
Outcome removeFromTrash(const Path& path, const TrashFolder& trash);
Outcome moveItem(const Path& from, const Path& to);
Outcome createFolder(const Path& folder);

} // namespace vellmoor::mac
