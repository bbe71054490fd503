import QtQuick

// A row of AppList.
RowDelegate {
    id: root

    category: Component {
        AppUninstallerRow {
            isCurrent: root.isCurrent
            row: root
            rows: root.rows
        }
    }
}
