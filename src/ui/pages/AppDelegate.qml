// qmllint disable unqualified
import QtQuick

// A row of AppList.
RowDelegate {
    id: root

    category: Component {
        AppUninstallerRow {
            row: root
            rows: root.rows
        }
    }
}
