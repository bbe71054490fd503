#include "StoreScanFixture.h"

namespace vellmoor {

std::shared_ptr<Gate> StoreScan::scanReporting(double fraction) {
    const auto gate = std::make_shared<Gate>();
    service->onScan([gate, fraction](CleanerModule, const ProgressCallback& progress, const CancelToken&) {
        progress({"Finding large files...", fraction});
        gate->pass();
        return ScanSnapshot();
    });
    store->scan(CleanerModule::largeFiles, true);
    gate->awaitVisitor();
    processQueued();
    return gate;
}

void StoreScan::finish(const std::shared_ptr<Gate>& gate) {
    gate->open();
    processUntil([this] { return !store->isScanning(); });
}

} // namespace vellmoor
