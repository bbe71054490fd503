#include "FileKindLook.h"

#include "QtText.h"

namespace vellmoor {

QString kindSymbol(LargeFileKindFilter kind) {
    switch (kind) {
    case LargeFileKindFilter::installers:
        return QStringLiteral("shippingbox");
    case LargeFileKindFilter::archives:
        return QStringLiteral("doc.zipper");
    case LargeFileKindFilter::videos:
        return QStringLiteral("film");
    case LargeFileKindFilter::images:
        return QStringLiteral("photo");
    case LargeFileKindFilter::documents:
        return QStringLiteral("doc.text");
    case LargeFileKindFilter::all:
    case LargeFileKindFilter::other:
        break;
    }
    return QStringLiteral("doc");
}

QString kindTitle(LargeFileKindFilter kind) {
    const bool known = kind != LargeFileKindFilter::all && kind != LargeFileKindFilter::other;
    return known ? toQt(title(kind)) : localised("文件");
}

} // namespace vellmoor
