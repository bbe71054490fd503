import QtQuick
import Vellmoor.Models

// A row of a cleanup list that unfolds: a category, drawn as the list wants it, or one of its paths.
CleanupRoles {
    id: root

    required property CleanupListModel rows
    property Component category
    property bool isCurrent: false

    // A row kept for later use is no row: it takes neither the keyboard nor a screen reader.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    implicitHeight: loader.height
    objectName: name

    Loader {
        id: loader

        sourceComponent: root.isTarget ? target : root.category
        width: root.width
    }

    Component {
        id: target

        CleanupTargetRow {
            isCurrent: root.isCurrent
            isEnabled: root.cleanable
            row: root
            rows: root.rows
        }
    }
}
