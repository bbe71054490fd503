import QtQuick

// A row of DetailList.
RowDelegate {
    id: root

    category: Component {
        CleanupDetailCategoryHeader {
            isCurrent: root.isCurrent
            row: root
            rows: root.rows
        }
    }
}
