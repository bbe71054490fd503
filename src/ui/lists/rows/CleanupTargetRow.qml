import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Models
import Vellmoor.Theme

// One path inside a category.
RowFrame {
    id: root

    required property CleanupRoles row
    required property CleanupListModel rows
    readonly property bool isEnabled: row.cleanable

    Accessible.description: row.detail
    Accessible.name: row.title + " " + row.size
    Accessible.role: Accessible.ListItem
    Spoken.tick: row.tick
    border.width: 0
    color: hovered ? Colors.rowHover : Colors.clear
    help: heading.truncated || location.truncated ? row.path : ""
    implicitHeight: Math.max(42, line.implicitHeight + 8)
    leaving: row.leaving

    onTapped: rows.toggle(row.index)

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 42
        anchors.rightMargin: 6
        spacing: 10

        TickBox {
            enabled: root.isEnabled
            focusPolicy: root.row.focusPolicy
            objectName: root.row.name + ".toggle"
            size: 18
            text: root.row.title
            ticked: root.row.ticked

            onClicked: root.rows.toggle(root.row.index)
        }

        SymbolTile {
            size: Metrics.smallTile
            symbol: root.row.symbol
            tint: Colors.tint(root.row.tint)
        }

        ColumnLayout {
            Layout.fillWidth: true
            spacing: 1

            BodyText {
                id: heading

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.row.title
            }

            Caption {
                id: location

                Layout.fillWidth: true
                elide: Text.ElideMiddle
                text: root.row.modified === "" ? root.row.detail : root.row.detail + " · " + root.row.modified
            }
        }

        BodyText {
            font.pixelSize: Type.body
            font.weight: Font.Medium
            text: root.row.size
        }

        SoftIconButton {
            Accessible.name: help + " " + root.row.title
            flat: true
            focusPolicy: root.row.focusPolicy
            help: L.tr("放回")
            ink: Colors.vmSecondaryText
            objectName: root.row.name + ".putBack"
            size: Metrics.rowButton
            symbol: "arrow.uturn.backward"
            visible: root.row.returnable

            onClicked: root.rows.putBack(root.row.index)
        }

        RevealButton {
            row: root.row
            rows: root.rows
        }
    }
}
