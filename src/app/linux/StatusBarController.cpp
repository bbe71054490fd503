#include "StatusBarController.h"

#include "QtText.h"
#include "SymbolImageProvider.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QEvent>
#include <QGuiApplication>
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
    // On X11 an item waits for a tray that comes later; elsewhere a tray tells the bus that it came.
    const bool waits = QGuiApplication::platformName() == QLatin1String("xcb");
    if (item_ == nullptr && (waits || QSystemTrayIcon::isSystemTrayAvailable())) {
        showItem();
    }
}

void StatusBarController::showItem() {
    item_ = std::make_unique<QSystemTrayIcon>(statusIcon());
    item_->setToolTip(QStringLiteral("Vellmoor"));
    item_->setContextMenu(&menu_);
    connect(item_.get(), &QSystemTrayIcon::activated, this, &StatusBarController::clicked);
    item_->show();
}

void StatusBarController::watchForTray() {
    auto* watcher =
        new QDBusServiceWatcher(QStringLiteral("org.kde.StatusNotifierWatcher"), QDBusConnection::sessionBus(),
                                QDBusServiceWatcher::WatchForRegistration, this);
    // A new item, since the one that waits for a tray of X11 knows nothing of the bus.
    connect(watcher, &QDBusServiceWatcher::serviceRegistered, this, &StatusBarController::showItem);
}

void StatusBarController::buildMenu() {
    menu_.clear();
    connect(menu_.addAction(localised("打开 Vellmoor")), &QAction::triggered, this,
            &StatusBarController::showMainWindow);
    menu_.addSeparator();
    connect(menu_.addAction(localised("退出")), &QAction::triggered, this, &StatusBarController::quitAsked);
}

QStringList StatusBarController::menuTitles() {
    buildMenu();
    QStringList titles;
    for (const QAction* action : menu_.actions()) {
        titles << action->text();
    }
    return titles;
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
    if (watched == &window_ && event->type() == QEvent::Close && !isInstalled()) {
        Q_EMIT quitAsked();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace vellmoor
