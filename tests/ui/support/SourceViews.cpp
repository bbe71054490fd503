#include "SourceViews.h"

#include <QUrl>

namespace vellmoor {

QUrl SourceViews::intercept(const QUrl& url, DataType type) {
    static const QString prefix = QStringLiteral("qrc:/qt/qml/Vellmoor/");
    if (type != QmlFile || !url.toString().startsWith(prefix)) {
        return url;
    }
    const QString place = url.toString().mid(prefix.size());
    // A module is a folder of its own name, in small letters; the window's own files stand on top.
    const bool isWindow = !place.contains(QLatin1Char('/')) || place.front().isLower();
    const qsizetype slash = place.indexOf(QLatin1Char('/'));
    const QString inside =
        isWindow ? QStringLiteral("window/") + place : place.left(slash).toLower() + place.mid(slash);
    return QUrl::fromLocalFile(folder_ + QLatin1Char('/') + inside);
}

} // namespace vellmoor
