#include "Appearance.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QVariant>

#include <algorithm>

namespace vellmoor {
namespace {

constexpr auto reducedMotionProperty = "vellmoorReducedMotion";

// Interface fonts of today's desktops have 9 to 11 points; more is a wish for larger text.
constexpr double usualPointSize = 11.0;
constexpr double largestScale = 1.4;

/// The desktop's font; without a desktop (or with its last resort) the best interface font that is installed.
QString interfaceFamily() {
    const QString wanted = QFontInfo(QGuiApplication::font()).family();
    if (!wanted.startsWith(QStringLiteral("DejaVu")) && !wanted.isEmpty()) {
        return wanted;
    }
    for (const auto* name : {"Inter", "Noto Sans", "Cantarell", "Ubuntu", "Source Sans 3", "Noto Sans CJK SC"}) {
        if (QFontDatabase::hasFamily(QLatin1String(name))) {
            return QLatin1String(name);
        }
    }
    return wanted;
}

double interfaceScale() {
    const double points = QGuiApplication::font().pointSizeF();
    return points > usualPointSize ? std::min(points / usualPointSize, largestScale) : 1.0;
}

} // namespace

Appearance::Appearance(bool reducedMotion, QObject* parent)
    : QObject(parent),
      fontFamily_(interfaceFamily()),
      fontScale_(interfaceScale()),
      reducedMotion_(reducedMotion) {}

Appearance* Appearance::create(QQmlEngine* engine, QJSEngine*) {
    return new Appearance(engine->property(reducedMotionProperty).toBool());
}

void Appearance::setReducedMotion(QQmlEngine& engine, bool reduced) {
    engine.setProperty(reducedMotionProperty, reduced);
}

} // namespace vellmoor
