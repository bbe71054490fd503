// The embedded pictures behind the symbol names.
#include "SymbolImageProvider.h"

#include <QColor>
#include <QDirIterator>
#include <QFileInfo>
#include <QImage>
#include <gtest/gtest.h>

namespace vellmoor {
namespace {

TEST(SymbolPictures, EveryPictureDrawsSomethingInTheWantedColour) {
    QDirIterator pictures(QStringLiteral(":/symbols"));
    int count = 0;
    while (pictures.hasNext()) {
        const QString name = QFileInfo(pictures.next()).completeBaseName();
        const QImage image = symbolImage(name, Qt::red, 32);
        bool drawn = false;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                drawn |= pixel.alpha() == 255 && pixel == QColor(Qt::red);
            }
        }
        EXPECT_TRUE(drawn) << name.toStdString();
        ++count;
    }
    EXPECT_GT(count, 50);
}

TEST(SymbolPictures, AnUnknownSymbolIsNoPicture) {
    EXPECT_FALSE(hasSymbol(QStringLiteral("no.such.symbol")));
    EXPECT_TRUE(symbolImage(QStringLiteral("no.such.symbol"), Qt::black, 16).isNull());
}

TEST(SymbolPictures, ASymbolThatTheSystemLacksComesFromTheEmbeddedOnes) {
    SymbolImageProvider provider([](const QString&, int) { return QImage(); });
    const QImage image = provider.requestImage(QStringLiteral("trash?#ff0000"), nullptr, QSize(16, 16));
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image, symbolImage(QStringLiteral("trash"), Qt::red, 16));
}

} // namespace
} // namespace vellmoor
