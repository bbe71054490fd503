#include "tray/StatusBarController.h"

#include "QtText.h"
#include "SymbolImageProvider.h"
#include "tray/Trays.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QIcon>
#include <QPixmap>

namespace vellmoor {
namespace {

/// Readable on light and on dark panels.
const QColor symbolColor(0x0b, 0x93, 0xc6);

QIcon statusIcon() {
    QIcon icon;
    for (const int pixels : {16, 22, 24, 32, 48, 64}) {
        icon.addPixmap(QPixmap::fromImage(symbolImage(QStringLiteral("sparkles"), symbolColor, pixels)));
    }
    return icon;
}

} // namespace

StatusBarController::StatusBarController(QQuickWindow& window, QObject* parent) : QObject(parent), window_(window) {
    window_.installEventFilter(this);
    buildMenu();
    // The menu follows the language that is current when it opens.
    connect(&menu_, &QMenu::aboutToShow, this, &StatusBarController::buildMenu);
    watchForTray();
}

void StatusBarController::install() {
    if (item_ != nullptr || !hasTray()) {
        return;
    }
    item_ = std::make_unique<QSystemTrayIcon>(statusIcon());
    item_->setToolTip(QStringLiteral("Vellmoor"));
    item_->setContextMenu(&menu_);
    connect(item_.get(), &QSystemTrayIcon::activated, this, &StatusBarController::clicked);
    item_->show();
}

void StatusBarController::watchForTray() {
    const QString name = QStringLiteral("org.kde.StatusNotifierWatcher");
    QDBusConnection bus = QDBusConnection::sessionBus();
    auto* watcher = new QDBusServiceWatcher(name, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusBarController::install);
    // The watcher may be there before the panel that shows the items.
    bus.connect(name, QStringLiteral("/StatusNotifierWatcher"), name, QStringLiteral("StatusNotifierHostRegistered"),
                this, SLOT(install()));
}

void StatusBarController::buildMenu() {
    menu_.clear();
    connect(menu_.addAction(localised("打开 Vellmoor")), &QAction::triggered, this,
            &StatusBarController::showMainWindow);
    menu_.addSeparator();
    connect(menu_.addAction(localised("退出")), &QAction::triggered, this, &StatusBarController::quitAsked);
}

void StatusBarController::clicked(QSystemTrayIcon::ActivationReason reason) {
    if (reason != QSystemTrayIcon::Context) {
        showMainWindow();
    }
}

void StatusBarController::showMainWindow() {
    if (window_.visibility() == QWindow::Minimized) {
        window_.showNormal();
    } else {
        window_.show();
    }
    window_.raise();
    window_.requestActivate();
}

bool StatusBarController::isInstalled() const {
    return item_ != nullptr && item_->isVisible() && QSystemTrayIcon::isSystemTrayAvailable();
}

bool StatusBarController::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &window_ && event->type() == QEvent::Close) {
        install(); // a tray of X11 may have come without a word
        if (!isInstalled()) {
            Q_EMIT quitAsked();
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vellmoor
