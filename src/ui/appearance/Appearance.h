#pragma once

#include "DesktopLook.h"

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <optional>

class QJSEngine;
class QQmlEngine;

namespace vellmoor {

/// Which theme the user asked for.
enum class ThemeChoice : std::uint8_t { system, light, dark };

/// "system", "light" or "dark".
QString rawValue(ThemeChoice choice);
std::optional<ThemeChoice> themeChoice(const QString& rawValue);

/// What the theme takes from the desktop and from the user: light or dark, contrast, the interface font and its size,
/// and whether things may move; and the colours that are needed before any view is loaded. It follows the desktop
/// while the program runs.
class Appearance final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY changed FINAL)
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY changed FINAL)
    Q_PROPERTY(bool reducedMotion READ reducedMotion NOTIFY changed FINAL)
    Q_PROPERTY(QString fontFamily READ fontFamily NOTIFY changed FINAL)
    /// 1 for the usual size of interface text; from 0.8 to 2.
    Q_PROPERTY(double fontScale READ fontScale NOTIFY changed FINAL)
    /// The raw value of the user's ThemeChoice.
    Q_PROPERTY(QString choice READ choice WRITE setChoice NOTIFY choiceChanged FINAL)
    Q_PROPERTY(QColor groundStart READ groundStart NOTIFY changed FINAL)
    Q_PROPERTY(QColor groundMiddle READ groundMiddle NOTIFY changed FINAL)
    Q_PROPERTY(QColor groundEnd READ groundEnd NOTIFY changed FINAL)

public:
    /// Without defaults: Qt would make another one itself.
    Appearance(const DesktopLook& look, ThemeChoice choice, QObject* parent = nullptr);
    /// The one that the window left on the engine; the window owns it.
    static Appearance* create(QQmlEngine* engine, QJSEngine*);
    void serve(QQmlEngine& engine);

    /// What the desktop says now.
    void follow(const DesktopLook& look);

    [[nodiscard]] bool dark() const;
    [[nodiscard]] bool highContrast() const { return look_.highContrast; }
    [[nodiscard]] bool reducedMotion() const { return look_.reducedMotion; }
    [[nodiscard]] QString fontFamily() const;
    [[nodiscard]] double fontScale() const { return fontScale_; }
    [[nodiscard]] QString choice() const { return rawValue(choice_); }
    void setChoice(const QString& choice);

    // The window's ground. It stands here and not in the theme, because the first frame is drawn before the theme is
    // loaded.
    [[nodiscard]] QColor groundStart() const;
    [[nodiscard]] QColor groundMiddle() const;
    [[nodiscard]] QColor groundEnd() const;

Q_SIGNALS:
    void changed();
    void choiceChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void readFont();

    DesktopLook look_;
    ThemeChoice choice_;
    mutable std::optional<QString> fontFamily_; ///< found for the first text: the first frame does not wait for fonts
    double fontScale_ = 1;
};

} // namespace vellmoor
