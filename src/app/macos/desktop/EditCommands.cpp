#include "desktop/EditCommands.h"

#include "desktop/MenuTables.h"

#include <QMetaMethod>

#include <algorithm>

namespace vellmoor {

bool editFocused(QObject* focused, std::string_view action) {
    const auto entries = editMenu();
    const bool isKnown = std::ranges::any_of(entries, [&](const BarEntry& entry) { return action == entry.action; });
    if (focused == nullptr || !isKnown) {
        return false;
    }
    // Qt Quick's text views name these methods as AppKit does, but for the colon.
    action.remove_suffix(1);
    const QByteArray signature = QByteArray(action.data(), static_cast<qsizetype>(action.size())) + "()";
    const int index = focused->metaObject()->indexOfMethod(signature);
    return index >= 0 && focused->metaObject()->method(index).invoke(focused, Qt::DirectConnection);
}

} // namespace vellmoor
