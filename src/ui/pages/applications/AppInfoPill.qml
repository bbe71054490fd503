import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// A small labelled capsule: title over value.
Rectangle {
    id: root

    required property string title
    required property string value
    required property color tint

    Accessible.name: title + " " + value
    Accessible.role: Accessible.StaticText
    color: Colors.wash(tint)
    implicitHeight: text.implicitHeight + 8
    implicitWidth: text.implicitWidth + 16
    radius: 7

    Column {
        id: text

        anchors.left: parent.left
        anchors.leftMargin: 8
        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.top: parent.top
        anchors.topMargin: 4

        Caption {
            color: Colors.vmText
            text: root.title
            width: parent.width
        }

        Caption {
            color: Colors.ink(root.tint)
            elide: Text.ElideMiddle
            font.weight: Font.Medium
            text: root.value
            width: parent.width
        }
    }
}
