#include "ApplicationIconProvider.h"

#include <QPixmap>
#include <QUrl>

#include <algorithm>

namespace vellmoor {
namespace {

constexpr int defaultPixels = 38;

} // namespace

ApplicationIconProvider::ApplicationIconProvider(Desktop& desktop)
    : QQuickImageProvider(QQuickImageProvider::Pixmap),
      desktop_(desktop) {}

QPixmap ApplicationIconProvider::requestPixmap(const QString& id, QSize* size, const QSize& requestedSize) {
    const QByteArray path = QByteArray::fromPercentEncoding(id.toUtf8());
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    const QPixmap icon =
        QPixmap::fromImage(desktop_.applicationIcon(path.toStdString(), wanted > 0 ? wanted : defaultPixels));
    if (size != nullptr) {
        *size = icon.size();
    }
    return icon;
}

QString applicationIconSource(Desktop& desktop, const std::filesystem::path& application) {
    if (application.empty() || desktop.applicationIcon(application, defaultPixels).isNull()) {
        return {};
    }
    const QByteArray path = QByteArray::fromStdString(application.string()).toPercentEncoding();
    return QStringLiteral("image://application/") + QString::fromLatin1(path);
}

} // namespace vellmoor
