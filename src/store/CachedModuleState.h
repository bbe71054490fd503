#pragma once

#include "TickLedger.h"
#include "found/ScanSnapshot.h"

#include <string>

namespace vellmoor {

/// A module's last result: the fields of a snapshot, when it was scanned, and what produced it.
struct CachedModuleState : ScanSnapshot {
    TimePoint scannedAt;
    std::string source; ///< localised: "Smart Scan" or "Single scan"
    TickLedger ledger;  ///< of cleanupItems
};

} // namespace vellmoor
