#pragma once

#include "CleanerStore.h"
#include "WindowModel.h"
#include "start/Wish.h"

#include <QObject>

#include <cstdint>
#include <optional>

namespace vellmoor {

/// Does what a start or the desktop's menu asked for, as the user's own clicks would: nothing while a sheet or a
/// question is open, since no button may change under the hand.
class Wishes final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Now, or when the window is ready.
    void grant(const Wish& wish);
    /// The views are there. Both must outlive this.
    void ready(CleanerStore& store, WindowModel& model);

private:
    enum class Offer : std::uint8_t { none, scan, ask };

    void grantNow(const Wish& wish);
    void goOn();

    CleanerStore* store_ = nullptr;
    WindowModel* model_ = nullptr;
    std::optional<Wish> waiting_; ///< until the window is ready
    Offer offer_ = Offer::none;   ///< what comes next on the way to the question about the Trash
    bool isScanned_ = false;      ///< the last scan came to its end
};

} // namespace vellmoor
