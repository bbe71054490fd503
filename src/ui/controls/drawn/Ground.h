#pragma once

#include <QColor>
#include <QQuickItem>

class QImage;

namespace vellmoor {

/// The window's ground: one diagonal gradient of three colours, from the top left to the bottom right.
class Ground : public QQuickItem {
    Q_OBJECT

public:
    explicit Ground(QQuickItem* parent = nullptr);

    void setColors(const QColor& start, const QColor& middle, const QColor& end);

protected:
    QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

private:
    [[nodiscard]] QImage drawn(QSize size) const;

    QColor start_;
    QColor middle_;
    QColor end_;
    bool changed_ = true;
};

} // namespace vellmoor
