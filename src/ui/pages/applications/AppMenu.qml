import QtQuick
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models

// The menu of an application's row.
ContextMenu {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    ContextMenuItem {
        text: L.tr("在 Finder 中显示")

        onTriggered: root.rows.reveal(root.row.index)
    }

    ContextMenuItem {
        text: L.tr("查看残留文件")

        onTriggered: root.rows.setExpanded(root.row.index, true)
    }
}
