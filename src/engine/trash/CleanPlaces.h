#pragma once

#include "ProtectedPaths.h"
#include "scan/EngineContext.h"
#include "trash/TrashSession.h"
#include "trash/TrashedPaths.h"

namespace vellmoor {

/// What a session with the Trash needs to know of the user's folders; its work ends with that of the call.
TrashPlaces cleanPlaces(const EngineContext& context, const TrashedPaths& trashed, const PathGuard& guard);

} // namespace vellmoor
