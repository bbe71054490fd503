#include "ShadowImageProvider.h"

#include <QColor>
#include <QPainter>
#include <QPainterPath>

namespace vellmoor {
namespace {

constexpr int rings = 24; ///< rounded rectangles laid over each other, from wide to narrow

QImage shadowImage(int radius, int reach, const QColor& color) {
    const int side = 2 * (radius + reach + 1) + 1;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QColor layer = color;
    for (int i = 0; i < rings; ++i) {
        // Quadratic steps: dense near the edge, thinning out.
        const double distance = 1.0 - static_cast<double>(i) / rings;
        const double spread = reach * distance * distance;
        layer.setAlphaF(color.alphaF() / static_cast<float>(rings));
        painter.setBrush(layer);
        const double inset = reach + 1 - spread;
        const QRectF shape = QRectF(0, 0, side, side).adjusted(inset, inset, -inset, -inset);
        // The light comes from above.
        painter.drawRoundedRect(shape.translated(0, spread / 6.0), radius + spread, radius + spread);
    }
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    const double inner = reach + 1;
    painter.drawRoundedRect(QRectF(0, 0, side, side).adjusted(inner, inner, -inner, -inner), radius, radius);
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
