#include "start/Wishes.h"

#include "QtText.h"

namespace vellmoor {

void Wishes::grant(const Wish& wish) {
    if (model_ == nullptr) {
        waiting_ = wish;
    } else if (!model_->sheetOpen()) {
        grantNow(wish);
    }
}

void Wishes::ready(CleanerStore& store, WindowModel& model) {
    store_ = &store;
    model_ = &model;
    // A window that is activated shows its module again, which forgets how the scan ended.
    connect(store_, &CleanerStore::isScanningChanged, this, [this] { isScanned_ = store_->scanProgress() >= 1.0; });
    // Queued: the store has then told everybody else, and its next call is not one out of its own signal.
    connect(store_, &CleanerStore::isScanningChanged, this, &Wishes::goOn, Qt::QueuedConnection);
    connect(store_, &CleanerStore::isCleaningChanged, this, &Wishes::goOn, Qt::QueuedConnection);
    if (waiting_) {
        grantNow(*waiting_);
        waiting_.reset();
    }
}

void Wishes::grantNow(const Wish& wish) {
    offer_ = Offer::none;
    switch (wish.deed) {
    case Wish::Deed::offerEmptyTrash:
        model_->setModule(toQt(rawValue(CleanerModule::trash)));
        offer_ = Offer::scan;
        goOn();
        break;
    case Wish::Deed::scan:
        model_->setModule(toQt(rawValue(wish.module.value_or(CleanerModule::smartScan))));
        model_->refresh();
        break;
    case Wish::Deed::none:
        if (wish.module) {
            model_->setModule(toQt(rawValue(*wish.module)));
        }
        break;
    }
}

/// The next step of the offer, once nothing runs; it ends when the user goes elsewhere or stops the scan.
void Wishes::goOn() {
    if (offer_ == Offer::none || store_->isScanning() || store_->isCleaning()) {
        return;
    }
    const bool isWanted = store_->activeModule() == CleanerModule::trash && !model_->sheetOpen();
    if (isWanted && offer_ == Offer::scan) {
        offer_ = Offer::ask;
        model_->refresh();
        return;
    }
    offer_ = Offer::none;
    if (isWanted && isScanned_ && model_->offer()->canClean()) {
        Q_EMIT model_->cleanOffered();
    }
}

} // namespace vellmoor
