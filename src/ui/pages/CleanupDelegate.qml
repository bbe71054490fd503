// qmllint disable unqualified
import QtQuick
import Vellmoor.Models

// A row of a cleanup list: a path, or a category drawn as the list wants it.
CleanupRoles {
    id: root

    required property CleanupListModel rows
    // "cleanup", "detail", "file" or "app"
    required property string look

    // A row kept for later use is no row: it takes neither the keyboard nor a screen reader.
    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    height: loader.height
    objectName: name

    // The keyboard is on one of the row's own controls: the list goes along.
    onActiveFocusChanged: {
        if (activeFocus && ListView.view)
            ListView.view.currentIndex = index;
    }

    Loader {
        id: loader

        focus: true
        sourceComponent: {
            if (root.isTarget)
                return target;
            return root.look === "cleanup" ? category : root.look === "detail" ? heading : root.look === "file" ? file : app;
        }
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

    Component {
        id: category

        CleanupRow {
            row: root
            rows: root.rows
        }
    }

    Component {
        id: heading

        CleanupDetailCategoryHeader {
            row: root
            rows: root.rows
        }
    }

    Component {
        id: file

        LargeFileRow {
            row: root
            rows: root.rows
        }
    }

    Component {
        id: app

        AppUninstallerRow {
            row: root
            rows: root.rows
        }
    }
}
