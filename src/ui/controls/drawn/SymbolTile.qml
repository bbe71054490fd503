import QtQuick
import Vellmoor.Theme

// A symbol on a rounded square of its own tint, or an application's icon in its place.
Item {
    id: root

    property string symbol
    property string icon
    property color tint: Colors.gray
    property int size: Metrics.tile
    // Where there is no room for more, it keeps its size.
    property bool grows: true
    readonly property int drawn: grows ? Metrics.grown(size) : size

    implicitHeight: drawn
    implicitWidth: drawn

    Rectangle {
        anchors.fill: parent
        color: Colors.tile(root.tint)
        radius: Math.round(root.drawn * 0.28)
        visible: root.icon === ""
    }

    Symbol {
        anchors.centerIn: parent
        color: root.tint
        name: root.icon === "" ? root.symbol : ""
        size: Math.round(root.drawn / Metrics.growth * 0.5)
        visible: root.icon === ""
    }

    Image {
        anchors.fill: parent
        source: root.icon
        sourceSize.height: root.drawn
        sourceSize.width: root.drawn
        visible: root.icon !== ""
    }
}
