// The real system under the tests: what the stand-in borrows its files and texts from.
#pragma once

#include "Platform.h"
#include "StandInPlatform.h"
#include "layouts/SystemLayout.h"

#include <vector>

namespace vellmoor::test {

const Platform& hostPlatform();

/// The host's own layout for a home folder.
SystemLayout hostLayout(const Path& home);

/// The shapes that a stand-in can have here. On a Mac it is a Mac's only: the engine reads Linux's key files with
/// what Linux has.
std::vector<System> hostedSystems();

} // namespace vellmoor::test
