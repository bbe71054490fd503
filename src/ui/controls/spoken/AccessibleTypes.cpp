#include "AccessibleTypes.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QUrl>

namespace vellmoor {

AccessibleTypes::AccessibleTypes(QQmlEngine& engine) : engine_(engine) {
    QAccessible::installActivationObserver(this);
    accessibilityActiveChanged(QAccessible::isActive());
}

AccessibleTypes::~AccessibleTypes() {
    QAccessible::removeActivationObserver(this);
}

/// Called before the reader is served.
void AccessibleTypes::accessibilityActiveChanged(bool active) {
    if (active) {
        // Not by the function that registers them: what registers a module a second time is warned of, since Qt 6.8.
        QQmlComponent(&engine_).setData("import QtQuick\nItem {}", QUrl());
    }
}

} // namespace vellmoor
