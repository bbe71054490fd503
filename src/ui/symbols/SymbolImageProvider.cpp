#include "SymbolImageProvider.h"

#include <QColor>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <utility>

namespace vellmoor {
namespace {

constexpr int defaultPixels = 16;

QString pictureFile(const QString& symbol) {
    return QStringLiteral(":/symbols/%1.svg").arg(symbol);
}

/// The pictures are black on nothing: keeps their shape, takes the wanted colour.
void paint(QImage& shape, const QColor& color) {
    QPainter painter(&shape);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(shape.rect(), color);
}

} // namespace

bool hasSymbol(const QString& symbol) {
    return QFile::exists(pictureFile(symbol));
}

QImage symbolImage(const QString& symbol, const QColor& color, int pixels) {
    if (!hasSymbol(symbol) || pixels < 1) {
        return {};
    }
    QSvgRenderer renderer(pictureFile(symbol));
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter);
    }
    paint(image, color);
    return image;
}

SymbolImageProvider::SymbolImageProvider(SymbolSource system, bool drawsOnAnyThread)
    : QQuickImageProvider(QQuickImageProvider::Image, drawsOnAnyThread
                                                          ? QQmlImageProviderBase::ForceAsynchronousImageLoading
                                                          : QQmlImageProviderBase::Flags()),
      system_(std::move(system)) {}

QImage SymbolImageProvider::picture(const QString& symbol, const QColor& color, int pixels) const {
    QImage own = system_ ? system_(symbol, pixels) : QImage();
    if (own.isNull()) {
        return symbolImage(symbol, color, pixels);
    }
    paint(own, color);
    return own;
}

QImage SymbolImageProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QString name = id.section(QLatin1Char('?'), 0, 0);
    const QColor color(id.section(QLatin1Char('?'), 1));
    const int pixels = std::max(requestedSize.width(), requestedSize.height());
    const QImage image =
        picture(name, color.isValid() ? color : QColor(Qt::black), pixels > 0 ? pixels : defaultPixels);
    if (size != nullptr) {
        *size = image.size();
    }
    return image;
}

} // namespace vellmoor
