#pragma once

#include "Desktop.h"

#include <QQuickImageProvider>

namespace vellmoor {

/// Draws `image://application/PATH` (percent-encoded): the icon of an application as the desktop has it; on a thread
/// of its own where the desktop may be asked there.
class ApplicationIconProvider final : public QQuickImageProvider {
public:
    explicit ApplicationIconProvider(Desktop& desktop);
    QImage requestImage(const QString& id, QSize* size, const QSize& requestedSize) override;

private:
    Desktop& desktop_;
};

/// The address of an application's icon; empty when it has none.
QString applicationIconSource(Desktop& desktop, const std::filesystem::path& application);

} // namespace vellmoor
