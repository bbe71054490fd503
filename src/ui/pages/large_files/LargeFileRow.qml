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

    Accessible.checkable: row.cleanable
    Accessible.checked: row.ticked
    Accessible.description: row.detail
    Accessible.name: row.title + " " + row.size
    Accessible.role: Accessible.ListItem
    help: name.truncated ? row.title : ""
    implicitHeight: Math.max(68, line.implicitHeight + 18)

    onMenuAsked: menu.popup()
    onTapped: rows.toggle(row.index)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 12
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
            spacing: 3

            BodyText {
                id: name

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                font.weight: Font.DemiBold
                text: root.row.title
            }

            Caption {
                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.row.detail
            }

            RowLayout {
                spacing: 4

                Symbol {
                    color: Colors.vmSecondaryText
                    name: "clock"
                    size: 10
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
            Layout.maximumWidth: 82
            Layout.minimumWidth: 82
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

    RowMenu {
        id: menu

        row: root.row
        rows: root.rows
    }
}
