#pragma once

#include <QQuickImageProvider>

namespace vellmoor {

/// Draws `image://shadow/RADIUS,REACH,COLOR`: the nine-part picture of a wide soft shadow around a rounded
/// rectangle. The rectangle itself is left clear, so that the shadow does not show through glass. Its corner parts
/// are RADIUS + REACH + 1 wide, its middle part 1.
class ShadowImageProvider final : public QQuickImageProvider {
public:
    ShadowImageProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

} // namespace vellmoor
