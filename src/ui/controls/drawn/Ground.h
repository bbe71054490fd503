#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace vellmoor {

/// The window's ground: one diagonal gradient of three colours, from the top left to the bottom right.
class Ground : public QQuickPaintedItem {
    Q_OBJECT

public:
    explicit Ground(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

    void setColors(const QColor& start, const QColor& middle, const QColor& end);

protected:
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    QColor start_;
    QColor middle_;
    QColor end_;
};

} // namespace vellmoor
