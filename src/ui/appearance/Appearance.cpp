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
constexpr auto usualTextPointsProperty = "vellmoorUsualTextPoints";

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

double interfaceScale(double usualPoints) {
    const double points = QGuiApplication::font().pointSizeF();
    return usualPoints > 0 && points > usualPoints ? std::min(points / usualPoints, largestScale) : 1.0;
}

} // namespace

Appearance::Appearance(bool reducedMotion, double usualTextPoints, QObject* parent)
    : QObject(parent),
      fontFamily_(interfaceFamily()),
      fontScale_(interfaceScale(usualTextPoints)),
      reducedMotion_(reducedMotion) {}

Appearance* Appearance::create(QQmlEngine* engine, QJSEngine*) {
    return new Appearance(engine->property(reducedMotionProperty).toBool(),
                          engine->property(usualTextPointsProperty).toDouble());
}

void Appearance::setDesktop(QQmlEngine& engine, bool reducedMotion, double usualTextPoints) {
    engine.setProperty(reducedMotionProperty, reducedMotion);
    engine.setProperty(usualTextPointsProperty, usualTextPoints);
}

} // namespace vellmoor
