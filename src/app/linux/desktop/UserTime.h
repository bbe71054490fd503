#pragma once

#include <QObject>

#include <string>

namespace vellmoor {

/// When the user last pressed a key or a button: with it, a window that another program opens for Vellmoor may come to
/// the front.
class UserTime final : public QObject {
    Q_OBJECT

public:
    explicit UserTime(QObject* parent = nullptr);
    bool eventFilter(QObject* watched, QEvent* event) override;

    /// The startup identifier for one such program; empty where the display has none to give (Wayland asks the
    /// compositor for one, which Qt 6.4 offers nobody).
    [[nodiscard]] std::string startupId();

private:
    unsigned long long milliseconds_ = 0;
    int given_ = 0;
};

} // namespace vellmoor
