#pragma once

#include "StoreFixture.h"

#include <memory>
#include <string>
#include <vector>

namespace vellmoor {

StartupItem agent(const std::string& name);

/// A store that acts: cleans, switches login items, quits applications.
class StoreActions : public StoreFixture {
protected:
    void showTrash() { scanned(CleanerModule::trash, snapshotOf({row(CleanerModule::trash, "Trash", {10, 20})})); }

    /// Starts a clean that stands at the gate that is answered.
    std::shared_ptr<Gate> startGatedClean(const CleanupReport& report = {});
    /// Likewise, switches off a login item.
    std::shared_ptr<Gate> startGatedDisable(const StartupActionResult& result);
    void awaitEnd();
    /// Every status from now on.
    std::shared_ptr<std::vector<std::string>> statusesFromNow();
};

} // namespace vellmoor
