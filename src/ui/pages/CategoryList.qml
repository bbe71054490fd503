// qmllint disable unqualified
import QtQuick

// The categories of most modules.
CleanupList {
    id: root

    delegate: CategoryDelegate {
        hasKeys: false
        rows: root.rows
        width: root.width - 10
    }
}
