import QtQuick
import Vellmoor.Controls
import Vellmoor.Models

// What can be done with a row of a cleanup list.
PathMenu {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    files: row.files
    owner: row.name
    paths: rows
    place: row.index
    title: row.title

    ContextMenuItem {
        objectName: root.row.name + ".menu.keep"
        text: L.tr("保留")
        visible: root.rows.canKeep(root.row.index)

        onTriggered: root.rows.keep(root.row.index)
    }

    // Why its tick is disabled.
    ContextMenuItem {
        objectName: root.row.name + ".menu.kept"
        text: L.tr("保留的项目")
        visible: root.rows.isHeldBack(root.row.index)

        onTriggered: root.rows.keptAsked()
    }

    ContextMenuItem {
        objectName: root.row.name + ".menu.putBack"
        text: L.tr("放回")
        visible: root.row.returnable

        onTriggered: root.rows.putBack(root.row.index)
    }

    ContextMenuItem {
        objectName: root.row.name + ".menu.leftovers"
        text: L.tr("查看残留文件")
        visible: root.row.bundle !== ""

        onTriggered: root.rows.setExpanded(root.row.index, true)
    }
}
