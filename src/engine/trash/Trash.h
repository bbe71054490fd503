#pragma once

#include "scan/EngineContext.h"

#include <optional>
#include <vector>

namespace vellmoor {

/// A Trash folder to look at.
struct TrashSource {
    std::string title;       ///< localised
    std::string description; ///< localised
    Path url;                ///< the folder whose children are the items
    TrashFolder trash;
};

/// The user's own Trash, whether it exists or not.
TrashFolder homeTrash(const TrashLayout& layout);

/// The user's own Trash first, then the volumes' in the system's order, without duplicates.
std::vector<TrashSource> trashSources(const EngineContext& context);

/// Where what lies at `place`, directly in the contents of `trash`, was before, by its restore note; nothing without a
/// valid one.
std::optional<Path> trashedOrigin(const EngineContext& context, const TrashFolder& trash, const Path& place);

/// One row per Trash that holds something or cannot be read.
std::vector<CleanupItem> trashItems(EngineContext& context);

} // namespace vellmoor
