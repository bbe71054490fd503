import QtQuick
import Vellmoor.Models

// A row of LargeFileList: a file has no paths to unfold.
CleanupRoles {
    id: root

    required property CleanupListModel rows

    ListView.onPooled: visible = false
    ListView.onReused: visible = true
    implicitHeight: file.implicitHeight
    objectName: name

    onActiveFocusChanged: {
        if (activeFocus && ListView.view)
            ListView.view.currentIndex = index;
    }

    LargeFileRow {
        id: file

        row: root
        rows: root.rows
        width: root.width
    }
}
