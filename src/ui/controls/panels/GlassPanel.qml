import QtQuick
import Vellmoor.Controls
import Vellmoor.Theme

// Light glass: translucent white with a hairline, over a wide and very faint shadow.
Item {
    id: root

    property int radius: Metrics.panelRadius
    property color color: Colors.glass
    property int reach: 26
    default property alias contents: surface.data

    SoftShadow {
        color: Colors.shadow
        radius: root.radius
        reach: root.reach
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
