#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace vellmoor {

/// The window's ground: one diagonal gradient of three colours, from the top left to the bottom right.
class Ground : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QColor start MEMBER start_ NOTIFY changed FINAL)
    Q_PROPERTY(QColor middle MEMBER middle_ NOTIFY changed FINAL)
    Q_PROPERTY(QColor end MEMBER end_ NOTIFY changed FINAL)

public:
    explicit Ground(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

Q_SIGNALS:
    void changed();

private:
    QColor start_;
    QColor middle_;
    QColor end_;
};

} // namespace vellmoor
