import QtQuick
import Vellmoor.Theme

// A symbol on a rounded square of its own tint, or an application's icon in its place.
Item {
    id: root

    property string symbol
    property string icon
    property color tint: Colors.gray
    property int size: Metrics.tile

    implicitHeight: size
    implicitWidth: size

    Rectangle {
        anchors.fill: parent
        color: Colors.faint(root.tint, 0.14)
        radius: Math.round(root.size * 0.28)
        visible: root.icon === ""
    }

    Symbol {
        anchors.centerIn: parent
        color: root.tint
        name: root.icon === "" ? root.symbol : ""
        size: Math.round(root.size * 0.5)
        visible: root.icon === ""
    }

    Image {
        anchors.fill: parent
        source: root.icon
        sourceSize.height: root.size
        sourceSize.width: root.size
        visible: root.icon !== ""
    }
}
