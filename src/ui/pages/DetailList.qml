// qmllint disable unqualified
import QtQuick

// The categories of the pre-clean sheet.
CleanupList {
    id: root

    delegate: DetailDelegate {
        hasKeys: false
        rows: root.rows
        width: root.width - 10
    }
}
