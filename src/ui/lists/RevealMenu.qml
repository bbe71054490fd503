import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// The menu of a row that names a path.
ContextMenu {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    ContextMenuItem {
        objectName: root.row.name + ".menu.reveal"
        text: L.tr("在 Finder 中显示")

        onTriggered: root.rows.reveal(root.row.index)
    }
}
