#include "Ground.h"

#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

namespace vellmoor {
namespace {

/// A gradient has no detail: drawn this much smaller it takes a sixteenth of the memory, and is enlarged without a
/// step.
constexpr int reduction = 4;

} // namespace

Ground::Ground(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void Ground::setColors(const QColor& start, const QColor& middle, const QColor& end) {
    start_ = start;
    middle_ = middle;
    end_ = end;
    changed_ = true;
    update();
}

void Ground::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    changed_ = changed_ || now.size() != before.size();
    update();
}

QSGNode* Ground::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
    const QSize reduced = QSizeF(size() / reduction).toSize();
    if (reduced.isEmpty()) {
        delete node;
        return nullptr;
    }
    auto* image = static_cast<QSGImageNode*>(node);
    if (image == nullptr) {
        image = window()->createImageNode();
        image->setOwnsTexture(true);
        image->setFiltering(QSGTexture::Linear);
        changed_ = true;
    }
    if (changed_) {
        image->setTexture(window()->createTextureFromImage(drawn(reduced), QQuickWindow::TextureIsOpaque));
        image->setSourceRect(QRectF(QPointF(), reduced));
        changed_ = false;
    }
    image->setRect(boundingRect());
    return image;
}

QImage Ground::drawn(QSize size) const {
    QImage image(size, QImage::Format_RGB32);
    const QRectF area(QPointF(), size);
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0.0, start_);
    gradient.setColorAt(0.5, middle_);
    gradient.setColorAt(1.0, end_);
    QPainter(&image).fillRect(area, gradient);
    return image;
}

} // namespace vellmoor
