#pragma once

#include <QMenu>
#include <QObject>
#include <QQuickWindow>
#include <QSystemTrayIcon>

#include <memory>

namespace vellmoor {

/// The status item: it keeps the program alive when the window is closed, and brings the window back. Without a
/// tray, closing the window ends the program.
class StatusBarController final : public QObject {
    Q_OBJECT

public:
    explicit StatusBarController(QQuickWindow& window, QObject* parent = nullptr);

    /// Whether closing the window may leave the program running.
    [[nodiscard]] bool isInstalled() const;
    /// Shows the window, also from its minimised state, and brings it to the front.
    void showMainWindow();

public Q_SLOTS:
    /// Shows the status item once the desktop has a tray; looks again when one appears on the bus and when the window
    /// is closed.
    void install();

Q_SIGNALS:
    void quitAsked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void watchForTray();
    void buildMenu();
    void clicked(QSystemTrayIcon::ActivationReason reason);

    QQuickWindow& window_;
    QMenu menu_;
    std::unique_ptr<QSystemTrayIcon> item_;
};

} // namespace vellmoor
