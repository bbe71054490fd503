#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <functional>

namespace vellmoor {

/// Tells the desktop what is over while the user looks elsewhere (org.freedesktop.Notifications); one note at a time.
class DesktopNotes final : public QObject {
    Q_OBJECT

public:
    explicit DesktopNotes(const QDBusConnection& bus, QObject* parent = nullptr);

    /// `opened` is called when the user clicks the note. Silent where nobody shows notes.
    void show(const QString& title, const QString& text, std::function<void()> opened);

private Q_SLOTS:
    void invoke(uint note, const QString& action);
    /// Comes before the click: what lets the window come to the front on Wayland.
    void keepToken(uint note, const QString& token);

private:
    QDBusConnection bus_;
    uint shown_ = 0; ///< 0: none
    std::function<void()> opened_;
};

} // namespace vellmoor
