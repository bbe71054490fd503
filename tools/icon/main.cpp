// vellmoor-icon: draws the program's icon, one SVG, in the forms that the systems want.
//
//   vellmoor-icon PICTURE.svg OUT...     OUT is FILE.icns, or PIXELS=FILE.png
#include "IconFamily.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

namespace {

QByteArray png(QSvgRenderer& renderer, int pixels) {
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        renderer.render(&painter);
    }
    QBuffer bytes;
    bytes.open(QIODevice::WriteOnly);
    return image.save(&bytes, "PNG") ? bytes.data() : QByteArray();
}

bool write(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    if (!bytes.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush()) {
        return true;
    }
    std::fprintf(stderr, "vellmoor-icon: %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
    return false;
}

bool make(QSvgRenderer& renderer, const QString& out) {
    if (out.endsWith(QStringLiteral(".icns"))) {
        return write(out, QByteArray::fromStdString(vellmoor::icon::iconFamily(
                              [&](int pixels) { return png(renderer, pixels).toStdString(); })));
    }
    const int pixels = out.section(QLatin1Char('='), 0, 0).toInt();
    if (pixels < 1 || pixels > 4096) {
        std::fprintf(stderr, "vellmoor-icon: neither FILE.icns nor PIXELS=FILE.png: %s\n", qPrintable(out));
        return false;
    }
    return write(out.section(QLatin1Char('='), 1), png(renderer, pixels));
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 3) {
        std::fputs("usage: vellmoor-icon PICTURE.svg OUT...\n", stderr);
        return 2;
    }
    QSvgRenderer renderer(words[1]);
    if (!renderer.isValid()) {
        std::fprintf(stderr, "vellmoor-icon: no picture: %s\n", qPrintable(words[1]));
        return 1;
    }
    for (const QString& out : words.sliced(2)) {
        if (!make(renderer, out)) {
            return 1;
        }
    }
    return 0;
}
