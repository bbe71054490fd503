#pragma once

#include "scan/EngineContext.h"
#include "trash/TrashSession.h"

namespace vellmoor {

/// Puts right what cleans that were cut off have left: notes whose item never came go, and the history learns where
/// the items are that moved before it was told. Under the lock of a clean.
void recoverCutOff(EngineContext& context, TrashSession& session);

/// The same, with what lies half deleted in a Trash, when nothing is to be cleaned. Nothing while somebody cleans.
void recover(EngineContext& context);

} // namespace vellmoor
