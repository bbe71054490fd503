// qmllint disable unqualified
import QtQuick

// The large files.
CleanupList {
    id: root

    delegate: LargeFileDelegate {
        hasKeys: false
        rows: root.rows
        width: root.width - 10
    }
}
