#pragma once

#include "DesktopLook.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QFileSystemWatcher>
#include <QMap>
#include <QObject>
#include <QString>
#include <QVariant>

#include <filesystem>
#include <optional>

namespace vellmoor {

/// The desktop's look as its settings portal tells it, and as the files of GTK and KDE have it for what the portal
/// does not know or when there is none.
/// https://flatpak.github.io/xdg-desktop-portal/docs/doc-org.freedesktop.portal.Settings.html
class LookWatcher final : public QObject {
    Q_OBJECT

public:
    /// Asks the portal, and waits for it no longer than a frame or two; what it says later is told by `changed`.
    LookWatcher(const QDBusConnection& bus, std::filesystem::path config, QObject* parent = nullptr);

    [[nodiscard]] DesktopLook look() const;

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void takeSetting(const QString& group, const QString& key, const QDBusVariant& value);

private:
    using Settings = QMap<QString, QVariantMap>;
    void askPortal(const QDBusConnection& bus);
    void take(const Settings& settings);
    void take(const QString& group, const QString& key, const QVariant& value);
    void readFiles();

    std::filesystem::path config_;
    DesktopLook files_;
    std::optional<bool> dark_;
    std::optional<bool> highContrast_;
    std::optional<bool> reducedMotion_;
    std::optional<bool> animates_; ///< GNOME's own setting
    std::optional<double> textScale_;
    QFileSystemWatcher watcher_;
};

} // namespace vellmoor
