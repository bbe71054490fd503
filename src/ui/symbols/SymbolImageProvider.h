#pragma once

#include <QQuickImageProvider>

namespace vellmoor {

/// Draws `image://symbol/NAME?COLOR` from the embedded pictures: sharp at every size, in one colour (#rrggbb or
/// #aarrggbb). An unknown name gives an empty picture, which the image element reports.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    SymbolImageProvider();
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;
};

/// The picture of `symbol` in `color`, `pixels` wide and high; null when there is none of that name.
QImage symbolImage(const QString& symbol, const QColor& color, int pixels);

/// Whether a picture of that name is embedded.
bool hasSymbol(const QString& symbol);

} // namespace vellmoor
