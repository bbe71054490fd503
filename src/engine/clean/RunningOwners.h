#pragma once

#include "layouts/OwnedFolders.h"
#include "scan/EngineContext.h"

#include <chrono>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace vellmoor {

/// Which application that runs now uses a path: browsers, Flatpaks, snaps. What such an application holds open is
/// neither listed as junk nor removed.
class RunningOwners {
public:
    /// Those of this call.
    static RunningOwners& of(EngineContext& context);

    explicit RunningOwners(EngineContext& context);

    /// Makes the next answer ask the system again, whatever was known.
    void refresh() {
        asked_.reset();
        mayShareLook_ = false;
    }
    /// The display name of the application that uses `path`, a folder above it or something below it; nothing when none
    /// runs. What is known of the running programs is at most a second old.
    [[nodiscard]] std::optional<std::string> ownerOf(const Path& path);
    /// The same for a standardised path of which is known where it lies, links above it resolved; nothing: it does not.
    [[nodiscard]] std::optional<std::string> ownerOf(const Path& path, const std::optional<Path>& place);

private:
    using Moment = std::chrono::steady_clock::time_point;

    void add(OwnedFolders folders);
    void refreshWhenOld();
    [[nodiscard]] bool mayRun(const OwnedFolders& owned) const;
    [[nodiscard]] std::optional<std::string> runningOwner(const OwnedFolders& owned, const Path& path) const;
    [[nodiscard]] std::string nameOf(const std::string& token, const std::string& child) const;

    EngineContext& context_;
    std::vector<OwnedFolders> owned_; ///< in the form that the layout names and with links resolved
    std::vector<OwnedFolders> inUse_; ///< those of the applications that run
    std::set<std::string> running_;
    std::optional<Moment> asked_;
    bool mayShareLook_ = true; ///< nothing was asked yet: what all others of the call know is new enough
};

} // namespace vellmoor
