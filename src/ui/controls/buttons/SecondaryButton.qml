import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// The quiet button beside a primary one, and the small actions of panels.
Pressable {
    id: root

    property string symbol
    property bool compact: false
    property color ink: enabled ? Colors.vmText : Colors.gray

    implicitHeight: compact ? Metrics.rowButton : Metrics.button
    implicitWidth: text === "" ? implicitHeight : label.implicitWidth + (compact ? 20 : 32)

    background: Rectangle {
        border.color: Colors.vmLine
        border.width: 1
        color: root.pressed ? Colors.softButtonPressed : (root.hovered ? Colors.rowHover : Colors.softButton)
        radius: height / 2

        FocusRing {
            radius: height / 2
            shown: root.visualFocus
        }
    }
    contentItem: Item {
        implicitWidth: label.implicitWidth

        Row {
            id: label

            anchors.centerIn: parent
            spacing: root.compact ? 6 : Metrics.gap

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                name: root.symbol
                size: root.compact ? 12 : 14
                visible: root.symbol !== ""
            }

            Text {
                color: root.ink
                font.family: Type.family
                font.pixelSize: root.compact ? Type.caption : Type.body
                font.weight: Font.Medium
                text: root.text
                textFormat: Text.PlainText
                visible: text !== ""
            }
        }
    }
}
