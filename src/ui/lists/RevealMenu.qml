import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// What can be done with the path of a row.
ContextMenu {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    title: row.title

    ContextMenuItem {
        objectName: root.row.name + ".menu.reveal"
        text: L.tr("在 Finder 中显示")
        visible: root.row.path !== ""

        onTriggered: root.rows.reveal(root.row.index)
    }

    ContextMenuItem {
        objectName: root.row.name + ".menu.openFolder"
        text: L.tr("打开所在文件夹")
        visible: root.row.path !== ""

        onTriggered: root.rows.openFolder(root.row.index)
    }

    ContextMenuItem {
        objectName: root.row.name + ".menu.copyPath"
        text: L.tr("复制路径")
        visible: root.row.path !== ""

        onTriggered: root.rows.copyPath(root.row.index)
    }

    ContextMenuItem {
        objectName: root.row.name + ".menu.leftovers"
        text: L.tr("查看残留文件")
        visible: root.row.bundle !== ""

        onTriggered: root.rows.setExpanded(root.row.index, true)
    }
}
