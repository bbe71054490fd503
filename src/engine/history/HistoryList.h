#pragma once

#include "done/History.h"
#include "history/Journal.h"
#include "scan/EngineContext.h"

#include <vector>

namespace vellmoor {

/// What can be taken back, or finished, of what was done in the last 90 days. A clean that runs now is not among it.
History history(EngineContext& context);

/// Drops what can no longer be taken back. Under the lock of a clean.
void pruneHistory(EngineContext& context);
/// Empties it; what lies in a Trash stays there. The reason when it did not happen.
Outcome forgetHistory(EngineContext& context);

/// Marks what a clean of the history put into the Trash where it lies, and unticks it.
void markFromCleans(EngineContext& context, std::vector<CleanupItem>& items);

/// Remembers that the login item of that name was switched and where its configuration lies since; nothing when it
/// cannot be written: the switch itself has been made.
void rememberSwitch(EngineContext& context, const std::string& name, const Path& file, bool isEnabled);

} // namespace vellmoor
