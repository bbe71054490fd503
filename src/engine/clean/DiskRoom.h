#pragma once

#include "done/CleanupReport.h"
#include "plan/CleanPlan.h"
#include "scan/EngineContext.h"

#include <map>
#include <optional>

namespace vellmoor {

/// The room on the disks that a clean touches: asked before it, and again after it.
class DiskRoom {
public:
    DiskRoom(const EngineContext& context, const CleanPlan& plan);

    /// Puts into the report what there is more now.
    void measure(CleanupReport& report) const;

private:
    [[nodiscard]] std::optional<std::int64_t> available() const;

    const Platform& platform_;
    std::map<std::uint64_t, Path> folders_; ///< one on each disk
    std::optional<std::int64_t> before_;
};

} // namespace vellmoor
