import QtQuick
import Vellmoor.Models

// A row of LargeFileList: a file has no paths to unfold.
CleanupRoles {
    id: root

    required property CleanupListModel rows
    property bool isCurrent: false

    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    implicitHeight: file.implicitHeight
    objectName: name

    LargeFileRow {
        id: file

        isCurrent: root.isCurrent
        row: root
        rows: root.rows
        width: root.width
    }
}
