#pragma once

#include <QAccessible>

namespace vellmoor {

/// A factory of accessible interfaces: Qt Quick's own for every item, with what `Spoken` adds. Null for what is no
/// accessible item.
QAccessibleInterface* spokenItem(const QString& className, QObject* object);

} // namespace vellmoor
