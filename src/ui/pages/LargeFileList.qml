// qmllint disable unqualified
import QtQuick

// The large files.
CleanupList {
    id: root

    delegate: LargeFileDelegate {
        isCurrent: ListView.isCurrentItem && root.Window.activeFocusItem === root
        rows: root.rows
        width: root.width - 10
    }
}
