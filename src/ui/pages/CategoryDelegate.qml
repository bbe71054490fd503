import QtQuick

// A row of CategoryList.
RowDelegate {
    id: root

    category: Component {
        CleanupRow {
            isCurrent: root.isCurrent
            row: root
            rows: root.rows
        }
    }
}
