#pragma once

#include "start/Wish.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <filesystem>

namespace vellmoor {

/// The name on the session bus by which desktops know the program; that of its desktop file.
QString applicationBusName();

/// The name on the session bus of the instance that cleans `home`. A home other than the account's is a world of its
/// own (a demonstration, a test) and gets a name of its own, which is the same at every start.
QString instanceName(const std::filesystem::path& home, const std::filesystem::path& accountHome);

/// One Vellmoor per session and home: the first holds a name on the session bus, a later one asks it to show its
/// window. The interface is that of the Desktop Entry Specification's D-Bus activation.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    SingleInstance(QDBusConnection bus, QString name, QObject* parent = nullptr);

    /// Takes the name. False when another instance holds it; true also without a bus.
    bool claim();
    /// Answers to another name, too: the bus that started this program waits for the one it knows.
    void answerTo(const QString& name);
    /// Asks the instance that holds the name to show its window and to do that; false when it did not answer.
    [[nodiscard]] bool raiseOther(const Wish& wish) const;

Q_SIGNALS:
    /// A later start, a click on the launcher, or one of its actions.
    void activated(const vellmoor::Wish& wish);
    void quitAsked();

private:
    friend class ApplicationAdaptor;
    QDBusConnection bus_;
    QString name_;
};

class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    explicit ApplicationAdaptor(SingleInstance* instance) : QDBusAbstractAdaptor(instance), instance_(*instance) {}

public Q_SLOTS:
    void Activate(const QVariantMap& platformData);
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

private:
    SingleInstance& instance_;
};

} // namespace vellmoor
