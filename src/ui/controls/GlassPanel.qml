import QtQuick
import Vellmoor.Theme

// Light glass: translucent white with a hairline, over a wide and very faint shadow.
Item {
    id: root

    property int radius: Metrics.panelRadius
    property color color: Colors.glass
    property int reach: 26
    default property alias contents: surface.data

    BorderImage {
        anchors.fill: parent
        anchors.margins: -(root.reach + 1)
        border.bottom: root.radius + root.reach + 1
        border.left: root.radius + root.reach + 1
        border.right: root.radius + root.reach + 1
        border.top: root.radius + root.reach + 1
        source: "image://shadow/" + root.radius + "," + root.reach + "," + Colors.shadow
    }

    Rectangle {
        id: surface

        anchors.fill: parent
        border.color: Colors.vmLine
        border.width: 1
        color: root.color
        radius: root.radius
    }
}
