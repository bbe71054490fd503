#pragma once

#include <QColor>
#include <QQuickPaintedItem>

namespace vellmoor {

/// An arc over a track: the scan's ring and the memory gauge.
class ProgressRing : public QQuickPaintedItem {
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY changed FINAL)
    Q_PROPERTY(double thickness READ thickness WRITE setThickness NOTIFY changed FINAL)
    /// Degrees, clockwise from the top.
    Q_PROPERTY(double startAngle READ startAngle WRITE setStartAngle NOTIFY changed FINAL)
    /// Degrees that value 1 covers.
    Q_PROPERTY(double spanAngle READ spanAngle WRITE setSpanAngle NOTIFY changed FINAL)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed FINAL)
    Q_PROPERTY(QColor trackColor READ trackColor WRITE setTrackColor NOTIFY changed FINAL)

public:
    explicit ProgressRing(QQuickItem* parent = nullptr);
    void paint(QPainter* painter) override;

    [[nodiscard]] double value() const { return value_; }
    void setValue(double value) { set(value_, value); }
    [[nodiscard]] double thickness() const { return thickness_; }
    void setThickness(double thickness) { set(thickness_, thickness); }
    [[nodiscard]] double startAngle() const { return startAngle_; }
    void setStartAngle(double degrees) { set(startAngle_, degrees); }
    [[nodiscard]] double spanAngle() const { return spanAngle_; }
    void setSpanAngle(double degrees) { set(spanAngle_, degrees); }
    [[nodiscard]] QColor color() const { return color_; }
    void setColor(const QColor& color) { set(color_, color); }
    [[nodiscard]] QColor trackColor() const { return trackColor_; }
    void setTrackColor(const QColor& color) { set(trackColor_, color); }

Q_SIGNALS:
    void changed();

private:
    template <class Value>
    void set(Value& member, const Value& value) {
        if (member != value) {
            member = value;
            update();
            Q_EMIT changed();
        }
    }
    double value_ = 0;
    double thickness_ = 10;
    double startAngle_ = 0;
    double spanAngle_ = 360;
    QColor color_ = Qt::black;
    QColor trackColor_ = Qt::transparent;
};

} // namespace vellmoor
