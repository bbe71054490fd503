// qmllint disable unqualified
import QtQuick

// The categories of most modules.
CleanupList {
    id: root

    delegate: CategoryDelegate {
        isCurrent: ListView.isCurrentItem && root.Window.activeFocusItem === root
        rows: root.rows
        width: root.width - 10
    }
}
