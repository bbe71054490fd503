import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// SoftIconButtonStyle: one symbol, named by its help text.
Pressable {
    id: root

    required property string symbol
    property string help
    property int size: Metrics.iconButton
    property color ink: Colors.vmText

    Accessible.name: help
    implicitHeight: size
    implicitWidth: size

    background: Rectangle {
        border.color: Colors.vmLine
        border.width: root.flat ? 0 : 1
        color: root.pressed ? Colors.softButtonPressed : (root.flat && !root.hovered ? Colors.clear : Colors.softButton)
        radius: Metrics.smallRadius

        FocusRing {
            radius: Metrics.smallRadius + 2
            shown: root.visualFocus
        }
    }
    contentItem: Item {
        Symbol {
            anchors.centerIn: parent
            color: root.enabled ? root.ink : Colors.gray
            name: root.symbol
            size: 15
        }
    }

    HelpTip {
        shown: root.hovered
        text: root.help
    }
}
