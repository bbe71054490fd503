// qmllint disable unqualified
import QtQuick

// The applications.
CleanupList {
    id: root

    delegate: AppDelegate {
        hasKeys: false
        rows: root.rows
        width: root.width - 10
    }
}
