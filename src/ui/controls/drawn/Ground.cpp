#include "Ground.h"

#include <QLinearGradient>
#include <QPainter>

namespace vellmoor {
namespace {

/// A gradient has no detail: drawn this much smaller it takes a sixteenth of the memory, and is enlarged without a
/// step.
constexpr int reduction = 4;

} // namespace

Ground::Ground(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setOpaquePainting(true);
}

void Ground::setColors(const QColor& start, const QColor& middle, const QColor& end) {
    start_ = start;
    middle_ = middle;
    end_ = end;
    update();
}

void Ground::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickPaintedItem::geometryChange(now, before);
    setTextureSize((now.size() / reduction).toSize().expandedTo({1, 1}));
}

void Ground::paint(QPainter* painter) {
    const QRectF area = boundingRect();
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0.0, start_);
    gradient.setColorAt(0.5, middle_);
    gradient.setColorAt(1.0, end_);
    painter->fillRect(area, gradient);
}

} // namespace vellmoor
