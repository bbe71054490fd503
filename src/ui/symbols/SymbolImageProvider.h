#pragma once

#include <QQuickImageProvider>

#include <functional>

namespace vellmoor {

/// A system's own symbols: the shape of the named one, black on nothing, `pixels` wide and high; null for an unknown
/// name.
using SymbolSource = std::function<QImage(const QString& symbol, int pixels)>;

/// Draws `image://symbol/NAME?COLOR` in one colour (#rrggbb or #aarrggbb), sharp at every size: from the system's own
/// symbols where it has them, else from the embedded pictures. A name that neither knows gives an empty picture,
/// which the image element reports.
class SymbolImageProvider final : public QQuickImageProvider {
public:
    /// `drawsOnAnyThread`: the window need not wait for a picture, which is drawn on a thread of the engine's.
    explicit SymbolImageProvider(SymbolSource system = {}, bool drawsOnAnyThread = false);
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    [[nodiscard]] QImage picture(const QString& symbol, const QColor& color, int pixels) const;

    SymbolSource system_;
};

/// The picture of `symbol` in `color`, `pixels` wide and high; null when there is none of that name.
QImage symbolImage(const QString& symbol, const QColor& color, int pixels);

/// Whether a picture of that name is embedded.
bool hasSymbol(const QString& symbol);

} // namespace vellmoor
