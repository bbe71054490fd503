import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
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
    implicitHeight: Math.max(68, line.implicitHeight + 18)

    onMenuAsked: menu.popup()
    onTapped: rows.toggle(row.index)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 12
        anchors.rightMargin: 6
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
            spacing: 3

            BodyText {
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
            Accessible.name: root.row.kind
            Accessible.role: Accessible.Graphic
            size: 26
            symbol: root.row.kindSymbol
            tint: Colors.gray

            HelpTip {
                shown: kindHover.hovered
                text: root.row.kind
            }

            HoverHandler {
                id: kindHover
            }
        }

        BodyText {
            Layout.preferredWidth: 82
            font.weight: Font.DemiBold
            horizontalAlignment: Text.AlignRight
            text: root.row.size
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
