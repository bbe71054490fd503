#include "ApplicationIconProvider.h"

#include <QUrl>

#include <algorithm>

namespace vellmoor {
namespace {

constexpr int defaultPixels = 38;

} // namespace

ApplicationIconProvider::ApplicationIconProvider(Desktop& desktop)
    : QQuickImageProvider(QQuickImageProvider::Image, desktop.drawsOnAnyThread()
                                                          ? QQmlImageProviderBase::ForceAsynchronousImageLoading
                                                          : QQmlImageProviderBase::Flags()),
      desktop_(desktop) {}

QImage ApplicationIconProvider::requestImage(const QString& id, QSize* size, const QSize& requestedSize) {
    const QByteArray path = QByteArray::fromPercentEncoding(id.toUtf8());
    const int wanted = std::max(requestedSize.width(), requestedSize.height());
    QImage icon = desktop_.applicationIcon(path.toStdString(), wanted > 0 ? wanted : defaultPixels);
    if (size != nullptr) {
        *size = icon.size();
    }
    return icon;
}

bool Desktop::hasApplicationIcon(const std::filesystem::path& application) {
    return !applicationIcon(application, defaultPixels).isNull();
}

QString applicationIconSource(Desktop& desktop, const std::filesystem::path& application) {
    if (application.empty() || !desktop.hasApplicationIcon(application)) {
        return {};
    }
    const QByteArray path = QByteArray::fromStdString(application.string()).toPercentEncoding();
    return QStringLiteral("image://application/") + QString::fromLatin1(path);
}

} // namespace vellmoor
