// What of a path is offered beside what the user keeps.
#pragma once

#include "keep/KeptPaths.h"
#include "scan/EngineContext.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vellmoor {

/// What the user keeps, as this call found it. A list that cannot be read keeps nothing back here: the clean, which
/// reads it again, then removes nothing.
const KeptPaths& keptPaths(EngineContext& context);

struct Offer {
    Path path;
    std::string heldBack; ///< localised: why it stays whatever is ticked; empty: it may go
};

/// What becomes of a path that holds a kept one.
enum class Splitting : std::uint8_t {
    Along, ///< all that lies beside the kept path is offered in its place
    Never, ///< a part of it is of no use: it is held back as a whole
};

/// Nothing for a kept path, and for one that holds a kept path what `splitting` says; the path itself otherwise. What
/// the layout or the system calls a whole is never split.
std::vector<Offer> offersOf(EngineContext& context, const Path& path, Splitting splitting);

} // namespace vellmoor
