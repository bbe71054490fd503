// One path at a time, as a clean of its own.
#pragma once

#include "Platform.h"
#include "trash/TrashSession.h"

namespace vellmoor::test {

/// The request for what is at `path` now.
inline RemovalRequest requestFor(const Platform& platform, const Path& path, Sameness sameness = Sameness::Content) {
    return {.path = path, .identity = platform.identity(path), .sameness = sameness};
}

inline Removal moveToTrash(const Platform& platform, const RemovalRequest& request, const TrashPlaces& places) {
    const auto session = platform.trashSession(places);
    Removal removal = session->moveToTrash(request);
    session->finish();
    return removal;
}

inline Removal removeFromTrash(const Platform& platform, const RemovalRequest& request, const TrashFolder& trash) {
    const auto session = platform.trashSession({.home = trash, .known = {trash}, .volumeForms = {}, .anchors = {}});
    Removal removal = session->removeFromTrash(request, trash);
    session->finish();
    return removal;
}

} // namespace vellmoor::test
