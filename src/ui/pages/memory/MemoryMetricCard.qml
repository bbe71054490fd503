import QtQuick
import QtQuick.Layouts
import Vellmoor.Controls
import Vellmoor.Theme

// One memory figure.
Rectangle {
    id: root

    required property string title
    required property string value
    required property string symbol
    required property color tint

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText
    Layout.fillWidth: true
    Layout.preferredWidth: 1
    border.color: Colors.vmLine
    color: Colors.row
    implicitHeight: Math.max(36, line.implicitHeight + 4)
    radius: Metrics.rowRadius

    RowLayout {
        id: line

        anchors.fill: parent
        anchors.leftMargin: 10
        anchors.rightMargin: 8
        spacing: 8

        SymbolTile {
            size: Metrics.smallTile
            symbol: root.symbol
            tint: root.tint
        }

        ColumnLayout {
            spacing: 0

            Caption {
                Layout.fillWidth: true
                text: root.title
            }

            BodyText {
                Layout.fillWidth: true
                font.weight: Font.DemiBold
                text: root.value
            }
        }
    }
}
