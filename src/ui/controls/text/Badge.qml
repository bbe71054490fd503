import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// A small tinted capsule with an optional symbol.
Rectangle {
    id: root

    property string text
    property string symbol
    property color tint: Colors.gray
    // Whether a screen reader meets it by itself.
    property bool spoken: false

    Accessible.ignored: !spoken
    Accessible.name: text
    Accessible.role: Accessible.StaticText

    color: Colors.tile(tint)
    implicitHeight: Math.max(18, label.implicitHeight + 4)
    implicitWidth: content.implicitWidth + 14
    radius: height / 2

    Row {
        id: content

        anchors.centerIn: parent
        spacing: 4

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            color: Colors.ink(root.tint)
            name: root.symbol
            size: 11
            visible: root.symbol !== ""
        }

        Caption {
            id: label

            color: Colors.ink(root.tint)
            font.weight: Font.Medium
            text: root.text
        }
    }
}
