#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace vellmoor {

/// One Vellmoor per session: the first holds a name on the session bus, a later one asks it to show its window.
/// The interface is that of the Desktop Entry Specification's D-Bus activation.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(QDBusConnection bus, QObject* parent = nullptr);

    /// Takes the name. False when another instance holds it; true also without a bus.
    bool claim();
    /// Asks the instance that holds the name to show its window; false when it did not answer.
    [[nodiscard]] bool raiseOther() const;

Q_SIGNALS:
    /// A later start, or a click on the launcher.
    void activated();
    void quitAsked();

private:
    friend class ApplicationAdaptor;
    QDBusConnection bus_;
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
