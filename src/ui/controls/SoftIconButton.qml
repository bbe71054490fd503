import QtQuick
import QtQuick.Templates as T
import Vellmoor.Theme

// SoftIconButtonStyle: one symbol, named by its help text.
T.Button {
    id: root

    required property string symbol
    property string help
    property int size: Metrics.iconButton
    property color ink: Colors.vmText

    Accessible.focusable: enabled
    Accessible.name: help
    Accessible.onPressAction: {
        if (root.enabled)
            root.clicked();
    }
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    implicitHeight: size
    implicitWidth: size
    opacity: enabled ? 1 : 0.4

    background: Rectangle {
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
            color: root.ink
            name: root.symbol
            size: root.size > Metrics.rowButton ? 15 : 13
        }
    }
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()

    HelpTip {
        shown: root.hovered
        text: root.help
    }
}
