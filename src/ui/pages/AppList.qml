// qmllint disable unqualified
import QtQuick

// The applications.
CleanupList {
    id: root

    delegate: AppDelegate {
        isCurrent: ListView.isCurrentItem && root.Window.activeFocusItem === root
        rows: root.rows
        width: root.width - 10
    }
}
