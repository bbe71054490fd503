// qmllint disable unqualified
import QtQuick
import Vellmoor.Models

// A row of a cleanup list that unfolds: a category, drawn as the list wants it, or one of its paths.
CleanupRoles {
    id: root

    required property CleanupListModel rows
    property Component category

    // A row kept for later use is no row: it takes neither the keyboard nor a screen reader.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    implicitHeight: loader.height
    objectName: name

    // The keyboard is on one of the row's own controls: the list goes along.
    onActiveFocusChanged: {
        if (activeFocus && ListView.view)
            ListView.view.currentIndex = index;
    }

    Loader {
        id: loader

        focus: true
        sourceComponent: root.isTarget ? target : root.category
        width: root.width
    }

    Component {
        id: target

        CleanupTargetRow {
            isEnabled: root.cleanable
            row: root
            rows: root.rows
        }
    }
}
