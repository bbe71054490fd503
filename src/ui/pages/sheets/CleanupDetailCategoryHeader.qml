// qmllint disable type
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// A category's heading in the pre-clean sheet.
RowFrame {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    Accessible.name: row.title + " " + row.size + " " + row.riskTitle
    Accessible.role: Accessible.ListItem
    Spoken.expandable: row.expandable
    Spoken.expanded: row.expanded
    Spoken.tick: row.tick
    color: hovered ? Colors.popup : Colors.sheetRow
    implicitHeight: Math.max(44, Metrics.grown(40))
    leaving: row.leaving

    onTapped: rows.toggleExpanded(row.index)

    RowLayout {
        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 6
        spacing: 10

        RowTick {
            row: root.row
            rows: root.rows
        }

        SymbolTile {
            size: 30
            symbol: root.row.symbol
            tint: Colors.tint(root.row.tint)
        }

        BodyText {
            Layout.fillWidth: true
            font.weight: Font.DemiBold
            text: root.row.title
        }

        BodyText {
            font.weight: Font.Medium
            text: root.row.amount
        }

        RiskBadge {
            risk: root.row.risk
            text: root.row.riskTitle
        }

        ExpandButton {
            row: root.row
            rows: root.rows
        }
    }
}
