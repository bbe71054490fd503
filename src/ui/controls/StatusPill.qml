import QtQuick
import QtQuick.Layouts
import Vellmoor.Theme

// A capsule: the symbol and the value in their colour, the title beside them.
Rectangle {
    id: root

    required property string title
    required property string value
    required property color tint
    required property string symbol

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText
    border.color: Colors.vmLine
    color: Colors.softButton
    implicitHeight: 40
    implicitWidth: row.implicitWidth + 24
    radius: height / 2

    RowLayout {
        id: row

        anchors.fill: parent
        anchors.leftMargin: 14
        anchors.rightMargin: 14
        spacing: Metrics.gap

        Symbol {
            color: root.tint
            name: root.symbol
            size: 15
        }

        Caption {
            Layout.fillWidth: true
            text: root.title
        }

        BodyText {
            Layout.maximumWidth: root.width * 0.6
            color: Colors.ink(root.tint)
            font.weight: Font.DemiBold
            text: root.value
        }
    }
}
