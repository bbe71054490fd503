#include "ShadowImageProvider.h"

#include <QColor>

#include <algorithm>
#include <cmath>

namespace vellmoor {
namespace {

/// How far (x, y) lies outside a rounded rectangle around the origin; 0 or less inside.
double distanceOutside(double x, double y, double halfSide, double radius) {
    const double dx = std::max(std::abs(x) - (halfSide - radius), 0.0);
    const double dy = std::max(std::abs(y) - (halfSide - radius), 0.0);
    return std::hypot(dx, dy) - radius;
}

/// The light comes from above: the shadow lies a little lower than what casts it.
QImage shadowImage(int radius, int reach, const QColor& color) {
    const int margin = reach + 1;
    const int side = 2 * (radius + margin) + 1;
    const double half = side / 2.0;
    const double drop = reach / 8.0;
    QImage image(side, side, QImage::Format_ARGB32);
    for (int row = 0; row < side; ++row) {
        for (int column = 0; column < side; ++column) {
            const double x = column + 0.5 - half;
            const double y = row + 0.5 - half;
            const double fromShape = distanceOutside(x, y, half - margin, radius);
            const double fromShadow = std::max(distanceOutside(x, y - drop, half - margin, radius), 0.0);
            const double fading = std::max(1.0 - fromShadow / (reach - drop), 0.0);
            const double edge = std::clamp(fromShape + 0.5, 0.0, 1.0);
            const double alpha = color.alphaF() * fading * fading * fading * edge;
            image.setPixel(
                column, row,
                qRgba(color.red(), color.green(), color.blue(), static_cast<int>(std::lround(alpha * 255.0))));
        }
    }
    return image;
}

} // namespace

ShadowImageProvider::ShadowImageProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage ShadowImageProvider::requestImage(const QString& id, QSize* size, const QSize&) {
    const QStringList parts = id.split(QLatin1Char(','));
    const QImage image = shadowImage(parts.value(0).toInt(), parts.value(1).toInt(), QColor(parts.value(2)));
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace vellmoor
