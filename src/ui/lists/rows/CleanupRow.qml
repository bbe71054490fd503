import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// One category: its tick, what it is, how much it holds and how safe it is to remove.
RowFrame {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    Accessible.description: row.detail
    Accessible.name: row.title + " " + row.size + " " + row.riskTitle
    Accessible.role: Accessible.ListItem
    Spoken.expandable: row.expandable
    Spoken.expanded: row.expanded
    Spoken.tick: row.tick
    help: heading.truncated ? row.title + "\n" + row.detail : description.truncated ? row.detail : ""
    implicitHeight: Math.max(54, line.implicitHeight + 12)
    leaving: row.leaving

    onTapped: rows.toggleExpanded(row.index)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 4
        spacing: 10

        RowTick {
            row: root.row
            rows: root.rows
        }

        SymbolTile {
            symbol: root.row.symbol
            tint: Colors.tint(root.row.tint)
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 2

            RowLayout {
                spacing: Metrics.gap

                BodyText {
                    id: heading

                    Layout.fillWidth: true
                    elide: Text.ElideMiddle
                    font.weight: Font.DemiBold
                    text: root.row.title
                }

                BodyText {
                    font.weight: Font.Medium
                    text: root.row.amount
                }
            }

            RowLayout {
                spacing: Metrics.gap

                Caption {
                    id: description

                    Layout.fillWidth: true
                    maximumLineCount: root.row.risk === "previewOnly" ? 3 : 2 // why it cannot be cleaned stands there
                    // A path is not broken at its slashes while it fits on a line.
                    text: root.row.detail.replace(/\//g, "/\u2060")
                    wrapMode: Text.Wrap
                }

                RiskBadge {
                    Layout.alignment: Qt.AlignTop
                    risk: root.row.risk
                    text: root.row.risk === "previewOnly" ? L.tr("预览") : root.row.riskTitle
                }
            }
        }

        ExpandButton {
            row: root.row
            rows: root.rows
        }
    }
}
