#include "look/LookWatcher.h"

#include "look/LookFiles.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

#include <utility>

namespace vellmoor {
namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString portalInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString gnomeGroup = QStringLiteral("org.gnome.desktop.interface");

/// A portal that has to be started first answers later.
constexpr int patienceMs = 60;

constexpr unsigned preferDark = 1;
constexpr unsigned preferLight = 2;

/// On X11 the desktop's text scale is part of the screen's, which Qt applies to everything.
bool scalesWithTheScreen() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

LookWatcher::LookWatcher(const QDBusConnection& bus, std::filesystem::path config, QObject* parent)
    : QObject(parent),
      config_(std::move(config)) {
    qDBusRegisterMetaType<Settings>();
    readFiles();
    const auto readAgain = [this] {
        readFiles();
        Q_EMIT changed();
    };
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, readAgain);
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, this, readAgain);
    askPortal(bus);
}

void LookWatcher::askPortal(const QDBusConnection& bus) {
    QDBusConnection(bus).connect(portalService, portalPath, portalInterface, QStringLiteral("SettingChanged"), this,
                                 SLOT(takeSetting(QString, QString, QDBusVariant)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, portalInterface, QStringLiteral("ReadAll"));
    question << QStringList{appearanceGroup, gnomeGroup};
    const QDBusMessage answer = bus.call(question, QDBus::Block, patienceMs);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
        take(qdbus_cast<Settings>(answer.arguments().constFirst()));
        return;
    }
    auto* later = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(later, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        const QDBusPendingReply<Settings> reply = *finished;
        if (!reply.isError()) { // without a portal the files hold
            take(reply.value());
            Q_EMIT changed();
        }
        finished->deleteLater();
    });
}

void LookWatcher::take(const Settings& settings) {
    for (auto group = settings.begin(); group != settings.end(); ++group) {
        for (auto setting = group.value().begin(); setting != group.value().end(); ++setting) {
            take(group.key(), setting.key(), setting.value());
        }
    }
}

void LookWatcher::takeSetting(const QString& group, const QString& key, const QDBusVariant& value) {
    const DesktopLook before = look();
    take(group, key, value.variant());
    if (before != look()) {
        Q_EMIT changed();
    }
}

void LookWatcher::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == appearanceGroup && key == QLatin1String("color-scheme")) {
        const unsigned scheme = value.toUInt();
        dark_ = scheme == preferDark || scheme == preferLight ? std::optional(scheme == preferDark) : std::nullopt;
    } else if (group == appearanceGroup && key == QLatin1String("contrast")) {
        highContrast_ = value.toUInt() == 1;
    } else if (group == appearanceGroup && key == QLatin1String("reduced-motion")) {
        reducedMotion_ = value.toUInt() == 1;
    } else if (group == gnomeGroup && key == QLatin1String("enable-animations")) {
        animates_ = value.toBool();
    } else if (group == gnomeGroup && key == QLatin1String("text-scaling-factor")) {
        textScale_ = value.toDouble();
    }
}

void LookWatcher::readFiles() {
    files_ = lookOfFiles(config_);
    // A replaced file is a new one, which the watcher does not know yet.
    for (const QString& path : watchedLookFiles(config_)) {
        watcher_.addPath(path); // false when it is watched already
    }
}

DesktopLook LookWatcher::look() const {
    DesktopLook now = files_;
    now.dark = dark_.value_or(now.dark);
    now.highContrast = highContrast_.value_or(now.highContrast);
    now.reducedMotion = reducedMotion_.value_or(false) || !animates_.value_or(true);
    now.textScale = textScale_ && *textScale_ > 0 && !scalesWithTheScreen() ? *textScale_ : 1.0;
    return now;
}

} // namespace vellmoor
