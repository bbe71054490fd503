#include "tray/Trays.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QGuiApplication>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <xcb/xcb.h>

namespace vellmoor {
namespace {

constexpr int answerMilliseconds = 1000;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

/// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/
bool hasHostOnTheBus() {
    const QString watcher = QStringLiteral("org.kde.StatusNotifierWatcher");
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(watcher)) {
        return false;
    }
    QDBusMessage question =
        QDBusMessage::createMethodCall(watcher, QStringLiteral("/StatusNotifierWatcher"),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << watcher << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusReply<QVariant> answer = bus.call(question, QDBus::Block, answerMilliseconds);
    return answer.isValid() && answer.value().toBool();
}

/// https://specifications.freedesktop.org/systemtray-spec/systemtray-spec-latest.html: the tray of the first screen.
bool hasTrayOnX11() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // Without a display the interface may be there all the same, but it has no connection.
    xcb_connection_t* connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection == nullptr) {
        return false;
    }
    constexpr const char* name = "_NET_SYSTEM_TRAY_S0";
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> atom(xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name), nullptr));
    if (!atom) {
        return false;
    }
    const std::unique_ptr<xcb_get_selection_owner_reply_t, Free> selection(
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, atom->atom), nullptr));
    return selection && selection->owner != XCB_WINDOW_NONE;
}

} // namespace

bool hasTray() {
    return hasHostOnTheBus() || hasTrayOnX11();
}

} // namespace vellmoor
