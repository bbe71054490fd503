#pragma once

#include "StoreFixture.h"

#include <memory>

namespace vellmoor {

class StoreScan : public StoreFixture {
protected:
    /// Starts a scan that reports `fraction`, and then stands at the gate that is answered.
    std::shared_ptr<Gate> scanReporting(double fraction);
    void finish(const std::shared_ptr<Gate>& gate);
};

} // namespace vellmoor
