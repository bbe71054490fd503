#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace vellmoor {

/// What the theme takes from the desktop: the interface font and its size, and whether things may move; and what is
/// known before any view is loaded.
class Appearance final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QString fontFamily READ fontFamily CONSTANT FINAL)
    /// 1 for the usual size of interface text, more when the user asked for larger text.
    Q_PROPERTY(double fontScale READ fontScale CONSTANT FINAL)
    Q_PROPERTY(bool reducedMotion READ reducedMotion CONSTANT FINAL)
    Q_PROPERTY(QColor groundStart READ groundStart CONSTANT FINAL)
    Q_PROPERTY(QColor groundMiddle READ groundMiddle CONSTANT FINAL)
    Q_PROPERTY(QColor groundEnd READ groundEnd CONSTANT FINAL)

public:
    Appearance(bool reducedMotion, double usualTextPoints, QObject* parent = nullptr);
    /// Takes what the window loader left on the engine.
    static Appearance* create(QQmlEngine* engine, QJSEngine*);
    /// Whether the desktop asks for less movement, and the size of its interface text when nobody asked for another.
    static void setDesktop(QQmlEngine& engine, bool reducedMotion, double usualTextPoints);

    // The window's ground. It stands here and not in the theme, because the first frame is drawn before the theme is
    // loaded.
    [[nodiscard]] static QColor groundStart() { return {0xe3, 0xf2, 0xfb}; }
    [[nodiscard]] static QColor groundMiddle() { return {0xf8, 0xfa, 0xfc}; }
    [[nodiscard]] static QColor groundEnd() { return {0xfb, 0xec, 0xf1}; }

    [[nodiscard]] QString fontFamily() const { return fontFamily_; }
    [[nodiscard]] double fontScale() const { return fontScale_; }
    [[nodiscard]] bool reducedMotion() const { return reducedMotion_; }

private:
    QString fontFamily_;
    double fontScale_;
    bool reducedMotion_;
};

} // namespace vellmoor
