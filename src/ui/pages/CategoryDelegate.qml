// qmllint disable unqualified
import QtQuick

// A row of CategoryList.
RowDelegate {
    id: root

    category: Component {
        CleanupRow {
            row: root
            rows: root.rows
        }
    }
}
