#include "StoreActionsFixture.h"

namespace vellmoor {

StartupItem agent(const std::string& name) {
    StartupItem item;
    item.name = name;
    return item;
}

std::shared_ptr<Gate> StoreActions::startGatedClean(const CleanupReport& report) {
    auto gate = std::make_shared<Gate>();
    service->onClean([gate, report](const std::vector<CleanupItem>&) {
        gate->pass();
        return report;
    });
    store->cleanSelected(CleanerModule::trash);
    gate->awaitVisitor();
    return gate;
}

std::shared_ptr<Gate> StoreActions::startGatedDisable(const StartupActionResult& result) {
    auto gate = std::make_shared<Gate>();
    service->onDisable([gate, result](const StartupItem&) {
        gate->pass();
        return result;
    });
    store->setStartupItem(agent("Updater"), false);
    gate->awaitVisitor();
    return gate;
}

void StoreActions::awaitEnd() {
    processUntil([this] { return !store->isCleaning() && !store->isScanning(); });
    awaitWorkers();
}

std::shared_ptr<std::vector<std::string>> StoreActions::statusesFromNow() {
    auto seen = std::make_shared<std::vector<std::string>>();
    QObject::connect(store.get(), &CleanerStore::statusMessageChanged, store.get(),
                     [this, seen] { seen->push_back(store->statusMessage()); });
    return seen;
}

} // namespace vellmoor
