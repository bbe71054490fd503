// qmllint disable unqualified
import QtQuick

// The large files.
CleanupList {
    id: root

    delegate: LargeFileDelegate {
        rows: root.rows
        width: root.width - 10
    }
}
