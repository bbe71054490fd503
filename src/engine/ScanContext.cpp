#include "ScanContext.h"

#include "ProcessTable.h"

namespace vellmoor {

const std::set<std::string>& ScanContext::runningNames() {
    if (!runningNames_) {
        runningNames_ = runningProcessNames(platform_, layout_);
    }
    return *runningNames_;
}

} // namespace vellmoor
