// qmllint disable unqualified
import QtQuick

// A row of DetailList.
RowDelegate {
    id: root

    category: Component {
        CleanupDetailCategoryHeader {
            row: root
            rows: root.rows
        }
    }
}
