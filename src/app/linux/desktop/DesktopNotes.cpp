#include "desktop/DesktopNotes.h"

#include "QtText.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QVariantMap>

#include <utility>

namespace vellmoor {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString path = QStringLiteral("/org/freedesktop/Notifications");
constexpr int desktopsOwnTime = -1;

} // namespace

DesktopNotes::DesktopNotes(const QDBusConnection& bus, QObject* parent) : QObject(parent), bus_(bus) {
    bus_.connect(service, path, service, QStringLiteral("ActionInvoked"), this, SLOT(invoke(uint, QString)));
    bus_.connect(service, path, service, QStringLiteral("ActivationToken"), this, SLOT(keepToken(uint, QString)));
}

void DesktopNotes::show(const QString& title, const QString& text, std::function<void()> opened) {
    opened_ = std::move(opened);
    QDBusMessage call = QDBusMessage::createMethodCall(service, path, service, QStringLiteral("Notify"));
    const QVariantMap hints{{QStringLiteral("desktop-entry"), QStringLiteral("org.vellmoor.Vellmoor")}};
    call << QStringLiteral("Vellmoor") << shown_ << QStringLiteral("org.vellmoor.Vellmoor") << title << text
         << QStringList{QStringLiteral("default"), localised("打开 Vellmoor")} << hints << desktopsOwnTime;
    auto* watcher = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<uint> reply = *finished;
        shown_ = reply.isError() ? 0 : reply.value();
        finished->deleteLater();
    });
}

void DesktopNotes::invoke(uint note, const QString& action) {
    if (note == shown_ && action == QLatin1String("default") && opened_) {
        opened_();
    }
}

void DesktopNotes::keepToken(uint note, const QString& token) {
    if (note == shown_) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8()); // Qt takes it when the window is activated next
    }
}

} // namespace vellmoor
