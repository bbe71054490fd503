#include "ProgressRing.h"

#include <QConicalGradient>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace vellmoor {
namespace {

// How much of the light is white.
constexpr double whiteness = 0.3;

QColor lit(const QColor& color) {
    const auto mixed = [](int part) { return static_cast<int>(std::lround(part + (255 - part) * whiteness)); };
    return {mixed(color.red()), mixed(color.green()), mixed(color.blue()), color.alpha()};
}

// QPainter counts sixteenths of a degree, anticlockwise from three o'clock.
int painterAngle(double clockwiseFromTop) {
    return static_cast<int>(std::lround((90.0 - clockwiseFromTop) * 16.0));
}

int painterSpan(double degrees) {
    return static_cast<int>(std::lround(-degrees * 16.0));
}

} // namespace

ProgressRing::ProgressRing(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setAntialiasing(true);
}

void ProgressRing::paint(QPainter* painter) {
    const double inset = thickness_ / 2.0 + 1.0;
    const QRectF circle = boundingRect().adjusted(inset, inset, -inset, -inset);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(trackColor_, thickness_, Qt::SolidLine, Qt::RoundCap));
    painter->drawArc(circle, painterAngle(startAngle_), painterSpan(spanAngle_));
    const double shown = std::clamp(value_, 0.0, 1.0);
    if (shown > 0) {
        // A little lighter half way round; the same at both ends, so that a full ring has no seam.
        QConicalGradient light(circle.center(), 90.0 - startAngle_);
        light.setColorAt(0.0, color_);
        light.setColorAt(0.5, lit(color_));
        light.setColorAt(1.0, color_);
        painter->setPen(QPen(QBrush(light), thickness_, Qt::SolidLine, Qt::RoundCap));
        painter->drawArc(circle, painterAngle(startAngle_), painterSpan(spanAngle_ * shown));
    }
}

} // namespace vellmoor
