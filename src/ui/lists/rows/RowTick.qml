import QtQuick
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// A row's tick; a lock where the row cannot be cleaned.
Item {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows
    property int size: Metrics.tickBox

    implicitHeight: Metrics.grown(size)
    implicitWidth: implicitHeight

    TickBox {
        focusPolicy: root.row.focusPolicy
        objectName: root.row.name + ".toggle"
        partial: root.row.partial
        size: root.size
        text: root.row.title
        ticked: root.row.ticked
        visible: root.row.cleanable

        onClicked: root.rows.toggle(root.row.index)
    }

    Symbol {
        anchors.centerIn: parent
        color: Colors.gray
        name: "lock"
        objectName: root.row.name + ".lock"
        size: 14
        visible: !root.row.cleanable
    }
}
