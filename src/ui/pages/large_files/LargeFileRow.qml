// qmllint disable type
import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Lists
import Vellmoor.Models
import Vellmoor.Theme

// One large file.
RowFrame {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows

    Accessible.description: row.detail
    Accessible.name: row.title + " " + row.size
    Accessible.role: Accessible.ListItem
    Spoken.tick: row.tick
    help: name.truncated || folder.truncated ? row.path : ""
    implicitHeight: Math.max(60, line.implicitHeight + 12)
    leaving: row.leaving

    onTapped: rows.toggle(row.index)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 6
        spacing: 8

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
            spacing: 1

            BodyText {
                id: name

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                font.weight: Font.DemiBold
                text: root.row.title
            }

            Caption {
                id: folder

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.row.detail
            }

            RowLayout {
                spacing: 4

                Symbol {
                    color: Colors.vmSecondaryText
                    name: "clock"
                    size: 11
                }

                Caption {
                    Layout.fillWidth: true
                    text: root.row.modified
                }
            }
        }

        SymbolTile {
            size: 26
            symbol: root.row.kindSymbol
            tint: Colors.gray
        }

        ColumnLayout {
            Layout.maximumWidth: Metrics.grown(82)
            Layout.minimumWidth: Metrics.grown(82)
            spacing: 2

            BodyText {
                Layout.fillWidth: true
                font.weight: Font.DemiBold
                horizontalAlignment: Text.AlignRight
                text: root.row.size
            }

            Caption {
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignRight
                text: root.row.kind
            }
        }

        RevealButton {
            row: root.row
            rows: root.rows
        }
    }
}
