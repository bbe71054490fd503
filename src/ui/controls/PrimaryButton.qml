import QtQuick
import QtQuick.Templates as T
import Vellmoor.Theme

// PrimaryActionStyle: the main actions.
T.Button {
    id: root

    property string symbol
    property bool destructive: false
    readonly property color base: destructive ? Colors.red : Colors.cyan

    Accessible.focusable: enabled
    Accessible.name: text
    Accessible.onPressAction: {
        if (root.enabled)
            root.clicked();
    }
    focusPolicy: enabled ? Qt.StrongFocus : Qt.NoFocus
    implicitHeight: Metrics.button
    implicitWidth: Math.max(96, label.implicitWidth + 40)
    opacity: enabled ? 1 : 0.45

    background: Item {
        SoftShadow {
            color: Colors.faint(root.base, root.pressed ? 0.16 : 0.28)
            radius: Metrics.button / 2
            reach: 12
            visible: root.enabled
        }

        Rectangle {
            anchors.fill: parent
            color: Colors.groundMiddle
            radius: height / 2
        }

        Rectangle {
            anchors.fill: parent
            color: root.hovered && !root.pressed ? Colors.faint(root.base, 0.88) : Colors.faint(root.base, 0.78)
            radius: height / 2
        }

        Rectangle {
            anchors.fill: parent
            color: Colors.softButtonPressed
            radius: height / 2
            visible: root.pressed
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
                color: Colors.onAccent
                name: root.symbol
                size: 14
                visible: root.symbol !== ""
            }

            Text {
                color: Colors.onAccent
                font.family: Type.family
                font.pixelSize: Type.button
                font.weight: Font.DemiBold
                text: root.text
                textFormat: Text.PlainText
            }
        }
    }
    Keys.onEnterPressed: root.clicked()
    Keys.onReturnPressed: root.clicked()
}
