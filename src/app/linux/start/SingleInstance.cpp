#include "start/SingleInstance.h"

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

QString applicationBusName() {
    return QStringLiteral("org.vellmoor.Vellmoor");
}

QString instanceName(const std::filesystem::path& home, const std::filesystem::path& accountHome) {
    if (home == accountHome) {
        return applicationBusName();
    }
    constexpr int digits = 16;
    const auto hash = QCryptographicHash::hash(QByteArray::fromStdString(home.string()), QCryptographicHash::Sha256);
    // An element of a bus name begins with a letter.
    return applicationBusName() + QStringLiteral(".home") + QString::fromLatin1(hash.toHex().left(digits));
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

void SingleInstance::answerTo(const QString& name) {
    bus_.registerService(name);
}

bool SingleInstance::raiseOther(const Wish& wish) const {
    const WishedAction action = actionOf(wish);
    const QString method = QLatin1String(action.name.empty() ? "Activate" : "ActivateAction");
    QDBusMessage call = QDBusMessage::createMethodCall(name_, objectPath, interfaceName, method);
    if (!action.name.empty()) {
        QVariantList parameter;
        if (!action.module.empty()) {
            parameter << QString::fromStdString(action.module);
        }
        call << QString::fromStdString(action.name) << QVariant(parameter);
    }
    call << ownPlatformData();
    return bus_.call(call, QDBus::Block, answerMilliseconds).type() == QDBusMessage::ReplyMessage;
}

void ApplicationAdaptor::Activate(const QVariantMap& platformData) {
    takeActivationToken(platformData);
    Q_EMIT instance_.activated({});
}

void ApplicationAdaptor::Open(const QStringList&, const QVariantMap& platformData) {
    Activate(platformData);
}

void ApplicationAdaptor::ActivateAction(const QString& name, const QVariantList& parameter,
                                        const QVariantMap& platformData) {
    takeActivationToken(platformData);
    if (name == QLatin1String("quit")) {
        Q_EMIT instance_.quitAsked();
    } else if (const auto wish = wishOf(name.toStdString(), parameter.value(0).toString().toStdString())) {
        Q_EMIT instance_.activated(*wish);
    }
}

} // namespace vellmoor
