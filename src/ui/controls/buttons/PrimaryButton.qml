import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// PrimaryActionStyle: the main actions.
Pressable {
    id: root

    property string symbol
    property bool destructive: false
    readonly property color base: destructive ? Colors.danger : Colors.primary
    readonly property color lit: destructive ? Colors.dangerHover : Colors.primaryHover
    readonly property color ink: enabled ? Colors.onAccent : Colors.vmSecondaryText

    implicitHeight: Metrics.button
    implicitWidth: Math.max(96, label.implicitWidth + 40)

    background: Item {
        SoftShadow {
            color: Colors.faint(root.base, root.pressed ? 0.16 : 0.28)
            radius: Metrics.button / 2
            reach: 12
            visible: root.enabled && !Colors.strong
        }

        Rectangle {
            anchors.fill: parent
            border.color: root.enabled ? Colors.clear : Colors.vmLine
            color: !root.enabled ? Colors.track : root.hovered || root.pressed ? root.lit : root.base
            radius: height / 2
        }

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
            spacing: Metrics.gap

            Symbol {
                anchors.verticalCenter: parent.verticalCenter
                color: root.ink
                name: root.symbol
                size: 14
                visible: root.symbol !== ""
            }

            Text {
                color: root.ink
                font.family: Type.family
                font.pixelSize: Type.button
                font.weight: Font.DemiBold
                text: root.text
                textFormat: Text.PlainText
            }
        }
    }
}
