#pragma once

#include "scan/EngineContext.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>

namespace vellmoor {

/// Which application that runs now uses a path. What such an application holds open is not removed.
class RunningOwners {
public:
    explicit RunningOwners(EngineContext& context) : context_(context) {}

    /// Makes the next answer ask the system again, whatever was known.
    void refresh() { asked_.reset(); }
    /// The display name of the application that uses `path`; nothing when none runs. What is known of the running
    /// programs is at most a second old.
    [[nodiscard]] std::optional<std::string> ownerOf(const Path& path);

private:
    EngineContext& context_;
    std::set<std::string> running_;
    std::optional<std::chrono::steady_clock::time_point> asked_;
};

} // namespace vellmoor
