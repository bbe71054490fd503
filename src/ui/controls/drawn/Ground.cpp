#include "Ground.h"

#include <QLinearGradient>
#include <QPainter>

namespace vellmoor {

Ground::Ground(QQuickItem* parent) : QQuickPaintedItem(parent) {
    setOpaquePainting(true);
}

void Ground::setColors(const QColor& start, const QColor& middle, const QColor& end) {
    start_ = start;
    middle_ = middle;
    end_ = end;
    update();
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
