#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>

namespace vellmoor {
namespace {

const QString objectPath = QStringLiteral("/org/vellmoor/Vellmoor");
const QString interfaceName = QStringLiteral("org.freedesktop.Application");
constexpr int answerMilliseconds = 3000;

/// What the launcher gave this start, so that the other instance may come to the front.
QVariantMap ownPlatformData() {
    QVariantMap data;
    const QByteArray token = qgetenv("XDG_ACTIVATION_TOKEN");
    const QByteArray startup = qgetenv("DESKTOP_STARTUP_ID");
    if (!token.isEmpty()) {
        data.insert(QStringLiteral("activation-token"), QString::fromUtf8(token));
    }
    if (!startup.isEmpty()) {
        data.insert(QStringLiteral("desktop-startup-id"), QString::fromUtf8(startup));
    }
    return data;
}

/// Qt's Wayland plugin takes the token for the next activation from this variable.
void takeActivationToken(const QVariantMap& platformData) {
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (!token.isEmpty()) {
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    }
}

} // namespace

QString instanceName(const std::filesystem::path& home, const std::filesystem::path& accountHome) {
    const QString name = QStringLiteral("org.vellmoor.Vellmoor");
    if (home == accountHome) {
        return name;
    }
    constexpr int digits = 16;
    const auto hash = QCryptographicHash::hash(QByteArray::fromStdString(home.string()), QCryptographicHash::Sha256);
    // An element of a bus name begins with a letter.
    return name + QStringLiteral(".home") + QString::fromLatin1(hash.toHex().left(digits));
}

SingleInstance::SingleInstance(QDBusConnection bus, QString name, QObject* parent)
    : QObject(parent),
      bus_(std::move(bus)),
      name_(std::move(name)) {
    new ApplicationAdaptor(this);
}

bool SingleInstance::claim() {
    if (!bus_.isConnected()) {
        return true;
    }
    // The object first: whoever sees the name may call at once.
    bus_.registerObject(objectPath, this, QDBusConnection::ExportAdaptors);
    return bus_.registerService(name_);
}

bool SingleInstance::raiseOther() const {
    QDBusMessage call = QDBusMessage::createMethodCall(name_, objectPath, interfaceName, QStringLiteral("Activate"));
    call << ownPlatformData();
    return bus_.call(call, QDBus::Block, answerMilliseconds).type() == QDBusMessage::ReplyMessage;
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData) {
    takeActivationToken(platformData);
    Q_EMIT instance_.activated();
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void ApplicationAdaptor::ActivateAction(const QString& name, const QVariantList&, const QVariantMap& platformData) {
    takeActivationToken(platformData);
    if (name == QLatin1String("quit")) {
        Q_EMIT instance_.quitAsked();
    }
}

} // namespace vellmoor
