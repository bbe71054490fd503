import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// A row's menu, loaded when it is first asked for.
Loader {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows
    // The menu's file.
    property url menu: Qt.resolvedUrl("RevealMenu.qml")

    function popup(): void {
        if (!item)
            setSource(menu, {
                    "row": row,
                    "rows": rows
                });
        (item as ContextMenu).popup();
    }
}
